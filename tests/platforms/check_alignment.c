/*
 * A plugin for qemu's user-mode emulators: watches every access to memory that the library's own code makes and reports
 * those that are not at a multiple of their size. The emulator carries such accesses out; the processors that the
 * library serves read rotated words instead. With an access reported, or none seen at all, the run counts as failed:
 * the file named by the argument then says "failed", otherwise "aligned" and the number of accesses.
 */
#include "plugin_report.h"
#include "qemu_plugin_interface.h"

#include <inttypes.h>
#include <stdio.h>
#include <string.h>

int qemu_plugin_version = 1;

enum { SHOWN = 20 };
static uint64_t accesses, unaligned;

static void onAccess(unsigned cpu, uint32_t access, uint64_t address, void *instruction) {
  const uint64_t size = UINT64_C(1) << qemu_plugin_mem_size_shift(access);
  (void)cpu;
  ++accesses;
  if ((address & (size - 1)) != 0 && ++unaligned <= SHOWN) {
    fprintf(stderr, "unaligned: %u bytes at %" PRIx64 ", instruction at %" PRIx64 "\n", (unsigned)size, address,
            (uint64_t)(uintptr_t)instruction);
  }
}

/* The library's functions are those of its namespace and its exports. */
static int isOurs(const char *symbol) {
  return symbol != NULL && (strstr(symbol, "4zqcc") != NULL || strncmp(symbol, "zq", 2) == 0);
}

static void onTranslation(uint64_t id, struct qemu_plugin_tb *block) {
  const size_t count = qemu_plugin_tb_n_insns(block);
  size_t i;
  (void)id;
  for (i = 0; i < count; ++i) {
    struct qemu_plugin_insn *instruction = qemu_plugin_tb_get_insn(block, i);
    if (isOurs(qemu_plugin_insn_symbol(instruction))) {
      qemu_plugin_register_vcpu_mem_cb(instruction, onAccess, QEMU_PLUGIN_CB_NO_REGS, QEMU_PLUGIN_MEM_RW,
                                       (void *)(uintptr_t)qemu_plugin_insn_vaddr(instruction));
    }
  }
}

static void onExit(uint64_t id, void *data) {
  FILE *file = openReport();
  (void)id;
  (void)data;
  if (file == NULL)
    return;
  if (accesses == 0 || unaligned != 0)
    fprintf(file, "failed: %" PRIu64 " of %" PRIu64 " accesses are not aligned\n", unaligned, accesses);
  else
    fprintf(file, "aligned: all of %" PRIu64 " accesses\n", accesses);
  fclose(file);
}

int qemu_plugin_install(uint64_t id, const struct qemu_info_t *info, int argc, char **argv) {
  (void)info;
  if (!takeReportName("check_alignment", argc, argv))
    return 1;
  qemu_plugin_register_vcpu_tb_trans_cb(id, onTranslation);
  qemu_plugin_register_atexit_cb(id, onExit, NULL);
  return 0;
}
