/* The file that a plugin writes when the program ends: its name is the plugin's only argument, "out=FILE". */
#pragma once

#include <stdio.h>
#include <string.h>

static char reportName[4096];

/* False, with a message, for anything but one argument of that form. */
static int takeReportName(const char *plugin, int argc, char **argv) {
  if (argc != 1 || strncmp(argv[0], "out=", 4) != 0 || strlen(argv[0] + 4) >= sizeof reportName) {
    fprintf(stderr, "usage: -plugin %s.so,out=FILE\n", plugin);
    return 0;
  }
  strcpy(reportName, argv[0] + 4);
  return 1;
}

/* Null, with a message, if the file cannot be written. */
static FILE *openReport(void) {
  FILE *file = fopen(reportName, "w");
  if (file == NULL)
    perror(reportName);
  return file;
}
