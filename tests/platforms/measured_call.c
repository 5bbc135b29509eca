/*
 * usage: measured_call CASE FRAMES
 * Sets one conversion up and runs it FRAMES times. The difference in executed instructions between two numbers of
 * frames is what the additional frames cost, free of start-up and set-up.
 */
#include "zqColorConversion.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

typedef struct Case {
  const char *name;
  int32_t inType, inWidth, inHeight, outWidth, outHeight;
  uint32_t rotation;
} Case;

static const Case kCases[] = {
    {"same", COLOR_YUV420_PLANAR, 320, 240, 320, 240, ROTATION_NONE},
    {"left", COLOR_YUV420_PLANAR, 320, 240, 320, 240, ROTATION_90_LEFT},
    {"scaled", COLOR_YUV420_PLANAR, 320, 240, 480, 360, ROTATION_NONE},
    {"general", COLOR_YUV420_PLANAR, 320, 240, 472, 356, ROTATION_NONE},
    {"packed", COLOR_YUV422_UYVY, 320, 240, 320, 240, ROTATION_NONE},
    {"right", COLOR_YUV420_PLANAR, 320, 240, 320, 240, ROTATION_90_RIGHT},
    {"half", COLOR_YUV420_PLANAR, 320, 240, 320, 240, ROTATION_180},
    {"general-left", COLOR_YUV420_PLANAR, 320, 240, 472, 356, ROTATION_90_LEFT},
    {"three-quarters", COLOR_YUV420_PLANAR, 320, 240, 240, 180, ROTATION_NONE},
    {"double", COLOR_YUV420_PLANAR, 320, 240, 640, 480, ROTATION_NONE},
    {"half-size", COLOR_YUV420_PLANAR, 320, 240, 160, 120, ROTATION_NONE},
    {"packed-scaled", COLOR_YUV422_UYVY, 320, 240, 472, 356, ROTATION_NONE},
};

/* Noise: whatever depends on the value of a sample meets all values. */
static uint8_t *noise(size_t bytes) {
  uint8_t *block = malloc(bytes);
  uint32_t state = 12345;
  size_t i;
  if (block == NULL)
    exit(2);
  for (i = 0; i < bytes; ++i) {
    state = state * 1664525u + 1013904223u;
    block[i] = (uint8_t)(state >> 24);
  }
  return block;
}

static int run(const Case *job, int frames) {
  const size_t pixels = (size_t)job->inWidth * (size_t)job->inHeight;
  uint8_t *input = noise(pixels * 2);
  uint8_t *output = malloc((size_t)job->outWidth * (size_t)job->outHeight * 2);
  const int packed = job->inType == COLOR_YUV422_UYVY;
  const int turned = job->rotation == ROTATION_90_LEFT || job->rotation == ROTATION_90_RIGHT;
  ConvertContext *handle = NULL;
  ConvertParams params;
  uint32_t code;

  memset(&params, 0, sizeof params);
  params.inType = job->inType;
  params.inWidth = job->inWidth;
  params.inHeight = job->inHeight;
  params.inStride = packed ? job->inWidth * 2 : job->inWidth;
  params.inBuf[0] = input;
  params.inBuf[1] = input + pixels;
  params.inBuf[2] = input + pixels + pixels / 4;
  params.outType = COLOR_RGB565;
  params.outWidth = job->outWidth;
  params.outHeight = job->outHeight;
  params.outStride = 2 * (turned ? job->outHeight : job->outWidth);
  params.outBuf[0] = output;
  params.isResize = job->inWidth != job->outWidth;
  params.rotation = job->rotation;

  if (output == NULL || zqCCInit(&handle) != CC_OK || zqCCSetParameter(handle, PARAM_CONVERT_DESC, &params) != CC_OK)
    return 2;
  code = CC_OK;
  while (code == CC_OK && frames-- > 0)
    code = zqCCProcess(handle, &params);
  (void)zqCCUninit(handle);
  free(input);
  free(output);
  return code == CC_OK ? 0 : 2;
}

int main(int argc, char **argv) {
  size_t i;
  for (i = 0; argc == 3 && i < sizeof kCases / sizeof *kCases; ++i) {
    if (strcmp(argv[1], kCases[i].name) == 0)
      return run(&kCases[i], atoi(argv[2]));
  }
  fputs("usage: measured_call CASE FRAMES\n", stderr);
  return 2;
}
