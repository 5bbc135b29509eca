/* What check_alignment must notice: a word read at an odd address by a function that counts as the library's own. */
#include <stdint.h>
#include <stdio.h>

uint32_t zqReadUnaligned(const volatile uint32_t *word);

__attribute__((noinline)) uint32_t zqReadUnaligned(const volatile uint32_t *word) {
  return *word;
}

int main(void) {
  static uint8_t bytes[8] = {1, 2, 3, 4, 5, 6, 7, 8};
  printf("%08lx\n", (unsigned long)zqReadUnaligned((const volatile uint32_t *)(uintptr_t)(bytes + 1)));
  return 0;
}
