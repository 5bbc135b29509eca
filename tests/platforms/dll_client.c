/* A host as the library is meant for: finds the DLL at run time, asks it for every function by name, converts a picture
 * whose result is known, and lets go of it. */
#include "zqColorConversion.h"

#include <stdio.h>
#include <string.h>
#include <windows.h>

enum { SIDE = 16 };

static FARPROC find(HMODULE library, const char *name) {
  FARPROC function = GetProcAddress(library, name);
  if (function == NULL)
    printf("FAILED: no %s\n", name);
  return function;
}

static const char *const kNames[13] = {"zqCCInit",
                                       "zqCCSetParameter",
                                       "zqCCProcess",
                                       "zqCCUninit",
                                       "zqColorConvert",
                                       "zqScaleFrame",
                                       "zqScaleCroppedFrame",
                                       "zqRotateFrame",
                                       "zqRotateCroppedFrame",
                                       "zqYUV420PlanartoRGB16Rotate",
                                       "zqYUV422PacktoRGB16Rotate",
                                       "zqYUV420PacktoRGB16Rotate",
                                       "zqYUV420Pack2toRGB16Rotate"};

/* GetProcAddress has one type for all functions; a copy changes it without a cast between function types. */
#define ASSIGN(pointer, function) memcpy(&(pointer), &(function), sizeof(pointer))

int main(void) {
  static uint8_t luma[SIDE * SIDE], chroma[SIDE * SIDE / 4];
  static uint16_t picture[SIDE * SIDE];
  uint32_t (*init)(ConvertContext **);
  uint32_t (*set)(ConvertContext *, uint32_t, void *);
  uint32_t (*process)(ConvertContext *, ConvertParams *);
  uint32_t (*uninit)(ConvertContext *);
  FARPROC functions[13];
  ConvertContext *handle;
  ConvertParams frame;
  HMODULE library = LoadLibraryA("zqColorConversion.dll");
  uint32_t code;
  int i;

  if (library == NULL) {
    printf("FAILED: zqColorConversion.dll cannot be loaded, error %lu\n", (unsigned long)GetLastError());
    return 1;
  }
  for (i = 0; i < 13; ++i) {
    functions[i] = find(library, kNames[i]);
    if (functions[i] == NULL)
      return 1;
  }
  ASSIGN(init, functions[0]);
  ASSIGN(set, functions[1]);
  ASSIGN(process, functions[2]);
  ASSIGN(uninit, functions[3]);

  /* Video black in the left half, video white in the right one, without colour. */
  for (i = 0; i < SIDE * SIDE; ++i)
    luma[i] = i % SIDE < SIDE / 2 ? 16 : 235;
  memset(chroma, 128, sizeof chroma);
  memset(&frame, 0, sizeof frame);
  frame.inType = COLOR_YUV420_PLANAR;
  frame.inWidth = frame.outWidth = frame.inHeight = frame.outHeight = frame.inStride = SIDE;
  frame.inBuf[0] = luma;
  frame.inBuf[1] = frame.inBuf[2] = chroma;
  frame.outType = COLOR_RGB565;
  frame.outStride = 2 * SIDE;
  frame.outBuf[0] = (uint8_t *)picture;
  frame.rotation = ROTATION_NONE;
  memset(picture, 0x5A, sizeof picture);

  code = init(&handle);
  if (code == CC_OK)
    code = set(handle, PARAM_CONVERT_DESC, &frame);
  if (code == CC_OK)
    code = process(handle, &frame);
  if (code == CC_OK)
    code = uninit(handle);
  if (code != CC_OK) {
    printf("FAILED: code %08lX\n", (unsigned long)code);
    return 1;
  }
  for (i = 0; i < SIDE * SIDE; ++i) {
    const uint16_t expected = i % SIDE < SIDE / 2 ? 0x0000 : 0xFFFF;
    if (picture[i] != expected) {
      printf("FAILED: pixel %d is %04X, not %04X\n", i, picture[i], expected);
      return 1;
    }
  }
  FreeLibrary(library);
  puts("13 functions found, picture converted");
  return 0;
}
