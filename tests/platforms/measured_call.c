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
  int32_t inType, inWidth, inHeight, outType, outWidth, outHeight;
  uint32_t rotation, quality;
} Case;

static const Case kCases[] = {
    {"same", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 320, 240, ROTATION_NONE, 0},
    {"left", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 320, 240, ROTATION_90_LEFT, 0},
    {"scaled", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 480, 360, ROTATION_NONE, 0},
    {"general", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 472, 356, ROTATION_NONE, 0},
    {"packed", COLOR_YUV422_UYVY, 320, 240, COLOR_RGB565, 320, 240, ROTATION_NONE, 0},
    {"right", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 320, 240, ROTATION_90_RIGHT, 0},
    {"half", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 320, 240, ROTATION_180, 0},
    {"general-left", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 472, 356, ROTATION_90_LEFT, 0},
    {"three-quarters", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 240, 180, ROTATION_NONE, 0},
    {"double", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 640, 480, ROTATION_NONE, 0},
    {"half-size", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 160, 120, ROTATION_NONE, 0},
    {"packed-scaled", COLOR_YUV422_UYVY, 320, 240, COLOR_RGB565, 472, 356, ROTATION_NONE, 0},
    {"filtered", COLOR_YUV420_PLANAR, 320, 240, COLOR_RGB565, 192, 144, ROTATION_NONE, 1},
    {"box", COLOR_YUV420_PLANAR, 640, 480, COLOR_RGB565, 160, 120, ROTATION_NONE, 3},
    {"box-far", COLOR_YUV420_PLANAR, 640, 480, COLOR_RGB565, 80, 60, ROTATION_NONE, 3},
    {"filtered-planes", COLOR_YUV420_PLANAR, 320, 240, COLOR_YUV420_PLANAR, 192, 144, ROTATION_NONE, 1},
    {"filtered-packed", COLOR_YUV422_UYVY, 320, 240, COLOR_YUV422_UYVY, 192, 144, ROTATION_NONE, 1},
    {"filtered-rgb16", COLOR_RGB565, 320, 240, COLOR_RGB565, 192, 144, ROTATION_NONE, 1},
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

/* Tight planes of a picture, in a block of two bytes a pixel; returns the stride of its first plane. */
static int32_t describePlanes(int32_t type, int32_t width, int32_t height, uint8_t *block, uint8_t **planes) {
  const size_t pixels = (size_t)width * (size_t)height;
  planes[0] = block;
  planes[1] = block + pixels;
  planes[2] = block + pixels + pixels / 4;
  return type == COLOR_YUV420_PLANAR ? width : width * 2;
}

static int run(const Case *job, int frames) {
  uint8_t *input = noise((size_t)job->inWidth * (size_t)job->inHeight * 2);
  uint8_t *output = malloc((size_t)job->outWidth * (size_t)job->outHeight * 2);
  uint8_t *planes[3];
  size_t i;
  const int turned = job->rotation == ROTATION_90_LEFT || job->rotation == ROTATION_90_RIGHT;
  ConvertContext *handle = NULL;
  ConvertParams params;
  uint32_t code;

  memset(&params, 0, sizeof params);
  params.inType = job->inType;
  params.inWidth = job->inWidth;
  params.inHeight = job->inHeight;
  params.inStride = describePlanes(job->inType, job->inWidth, job->inHeight, input, planes);
  for (i = 0; i < 3; ++i)
    params.inBuf[i] = planes[i];
  params.outType = job->outType;
  params.outWidth = job->outWidth;
  params.outHeight = job->outHeight;
  params.outStride = describePlanes(job->outType, turned ? job->outHeight : job->outWidth,
                                    turned ? job->outWidth : job->outHeight, output, params.outBuf);
  params.isResize = job->inWidth != job->outWidth;
  params.rotation = job->rotation;
  params.antiAlias = job->quality;

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
