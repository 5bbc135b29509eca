/*
 * usage: step_instructions PROGRAM ARGUMENT...
 * Lets the processor itself execute a stretch of a program one instruction at a time and prints how many there were:
 * for instructions that no emulator knows. The stretch lies between the second and the third SIGCONT that the program
 * sends to itself, which does nothing where nobody is watching.
 */
#include <inttypes.h>
#include <signal.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

static int fail(const char *what) {
  perror(what);
  return 2;
}

int main(int argc, char **argv) {
  uint64_t steps = 0;
  int marks = 0, status = 0;
  pid_t child;
  if (argc < 2) {
    fputs("usage: step_instructions PROGRAM ARGUMENT...\n", stderr);
    return 2;
  }
  child = fork();
  if (child < 0)
    return fail("fork");
  if (child == 0) {
    if (ptrace(PTRACE_TRACEME, 0, NULL, NULL) == 0)
      execv(argv[1], argv + 1);
    _exit(fail(argv[1]));
  }
  while (waitpid(child, &status, 0) == child && WIFSTOPPED(status) && marks < 3) {
    const int number = WSTOPSIG(status);
    if (number == SIGCONT)
      ++marks;
    else if (number != SIGTRAP)
      break;
    else if (marks == 2)
      ++steps;
    if (ptrace(marks == 2 ? PTRACE_SINGLESTEP : PTRACE_CONT, child, NULL, NULL) != 0)
      return fail("ptrace");
  }
  if (marks < 3) {
    fputs("step_instructions: the program ends before its third mark\n", stderr);
    (void)kill(child, SIGKILL);
    return 1;
  }
  printf("%" PRIu64 "\n", steps);
  (void)kill(child, SIGKILL);
  return 0;
}
