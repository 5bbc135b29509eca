/*
 * A plugin for qemu's user-mode emulators: counts the guest instructions of a program and says which of them ran how
 * often. On exit it writes one line "address count" for every instruction to the file named by its argument.
 */
#include "plugin_report.h"
#include "qemu_plugin_interface.h"

#include <inttypes.h>
#include <stdio.h>
#include <stdlib.h>

int qemu_plugin_version = 1;

/* Open addressing by address; never grown, since a counter must not move once code refers to it. */
enum { SLOTS = 1 << 18 };
typedef struct Counter {
  uint64_t address, count;
} Counter;
static Counter *counters;

static Counter *counterOf(uint64_t address) {
  size_t slot = (size_t)((address >> 1) * UINT64_C(0x9E3779B97F4A7C15) >> 46);
  size_t tried;
  for (tried = 0; tried < SLOTS; ++tried, slot = (slot + 1) % SLOTS) {
    if (counters[slot].address == 0)
      counters[slot].address = address;
    if (counters[slot].address == address)
      return &counters[slot];
  }
  fputs("count_instructions: too many different instructions\n", stderr);
  exit(1);
}

/* A block that is translated twice counts on in the same counters. */
static void onTranslation(uint64_t id, struct qemu_plugin_tb *block) {
  const size_t count = qemu_plugin_tb_n_insns(block);
  size_t i;
  (void)id;
  for (i = 0; i < count; ++i) {
    struct qemu_plugin_insn *instruction = qemu_plugin_tb_get_insn(block, i);
    Counter *counter = counterOf(qemu_plugin_insn_vaddr(instruction));
    qemu_plugin_register_vcpu_insn_exec_inline(instruction, QEMU_PLUGIN_INLINE_ADD_U64, &counter->count, 1);
  }
}

static void onExit(uint64_t id, void *data) {
  FILE *file = openReport();
  size_t slot;
  (void)id;
  (void)data;
  if (file == NULL)
    return;
  for (slot = 0; slot < SLOTS; ++slot) {
    if (counters[slot].count != 0)
      fprintf(file, "%" PRIx64 " %" PRIu64 "\n", counters[slot].address, counters[slot].count);
  }
  fclose(file);
}

int qemu_plugin_install(uint64_t id, const struct qemu_info_t *info, int argc, char **argv) {
  (void)info;
  if (!takeReportName("count_instructions", argc, argv))
    return 1;
  counters = calloc(SLOTS, sizeof *counters);
  if (counters == NULL)
    return 1;
  qemu_plugin_register_vcpu_tb_trans_cb(id, onTranslation);
  qemu_plugin_register_atexit_cb(id, onExit, NULL);
  return 0;
}
