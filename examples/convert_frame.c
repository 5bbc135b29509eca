/* Converts one planar 4:2:0 picture to RGB565, a quarter turn to the left. */
#include <stdio.h>
#include <stdlib.h>
#include <zqColorConversion.h>

int main(void) {
  enum { WIDTH = 320, HEIGHT = 240 };
  static uint8_t y[WIDTH * HEIGHT], u[WIDTH * HEIGHT / 4], v[WIDTH * HEIGHT / 4];
  static uint8_t turned[WIDTH * HEIGHT * 2]; /* HEIGHT pixels wide, WIDTH lines high */

  for (int i = 0; i < WIDTH * HEIGHT; ++i) y[i] = (uint8_t)(i % WIDTH);
  for (int i = 0; i < WIDTH * HEIGHT / 4; ++i) u[i] = v[i] = 128;

  ConvertParams frame = {0};
  frame.inType = COLOR_YUV420_PLANAR;
  frame.inWidth = frame.outWidth = WIDTH;
  frame.inHeight = frame.outHeight = HEIGHT;
  frame.inStride = WIDTH;
  frame.inBuf[0] = y;
  frame.inBuf[1] = u;
  frame.inBuf[2] = v;
  frame.outType = COLOR_RGB565;
  frame.outStride = HEIGHT * 2;
  frame.outBuf[0] = turned;
  frame.rotation = ROTATION_90_LEFT;

  ConvertContext *handle;
  uint32_t code = zqCCInit(&handle);
  if (code == CC_OK) code = zqCCSetParameter(handle, PARAM_CONVERT_DESC, &frame);
  if (code == CC_OK) code = zqCCProcess(handle, &frame); /* again for every further frame */
  if (code != CC_OK) {
    fprintf(stderr, "conversion failed: 0x%08X\n", (unsigned)code);
    return EXIT_FAILURE;
  }
  zqCCUninit(handle);
  printf("first pixel of the last line: 0x%02X%02X\n", turned[(WIDTH - 1) * HEIGHT * 2 + 1],
         turned[(WIDTH - 1) * HEIGHT * 2]);
  return EXIT_SUCCESS;
}
