/*
 * The few declarations of qemu's plugin interface (version 1) that the plugins here need. Debian ships the emulators
 * with plugin support but without the header.
 */
#ifndef ZQCC_QEMU_PLUGIN_INTERFACE_H
#define ZQCC_QEMU_PLUGIN_INTERFACE_H

#include <stddef.h>
#include <stdint.h>

struct qemu_info_t;
struct qemu_plugin_tb;
struct qemu_plugin_insn;
enum { QEMU_PLUGIN_INLINE_ADD_U64 = 0 };
enum { QEMU_PLUGIN_CB_NO_REGS = 0 };
enum { QEMU_PLUGIN_MEM_RW = 3 };

size_t qemu_plugin_tb_n_insns(const struct qemu_plugin_tb *block);
struct qemu_plugin_insn *qemu_plugin_tb_get_insn(const struct qemu_plugin_tb *block, size_t index);
uint64_t qemu_plugin_insn_vaddr(const struct qemu_plugin_insn *instruction);
const char *qemu_plugin_insn_symbol(const struct qemu_plugin_insn *instruction);
unsigned qemu_plugin_mem_size_shift(uint32_t access);

void qemu_plugin_register_vcpu_tb_trans_cb(uint64_t id, void (*callback)(uint64_t, struct qemu_plugin_tb *));
void qemu_plugin_register_vcpu_insn_exec_inline(struct qemu_plugin_insn *instruction, int operation, void *counter,
                                                uint64_t amount);
void qemu_plugin_register_vcpu_mem_cb(struct qemu_plugin_insn *instruction,
                                      void (*callback)(unsigned, uint32_t, uint64_t, void *), int flags, int kinds,
                                      void *data);
void qemu_plugin_register_atexit_cb(uint64_t id, void (*callback)(uint64_t, void *), void *data);

#define EXPORTED __attribute__((visibility("default")))
EXPORTED extern int qemu_plugin_version;
EXPORTED int qemu_plugin_install(uint64_t id, const struct qemu_info_t *info, int argc, char **argv);

#endif
