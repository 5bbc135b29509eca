#include <zqColorConversion.h>

int main(void) {
  const uint8_t pixel[12] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
  uint8_t out[8] = {0};
  ConvertContext *handle;
  ConvertParams p = {0};
  uint32_t code;
  p.inType = COLOR_RGB24;
  p.inWidth = p.outWidth = 4;
  p.inHeight = p.outHeight = 1;
  p.inStride = 12;
  p.inBuf[0] = pixel;
  p.outType = COLOR_RGB565;
  p.outStride = 8;
  p.outBuf[0] = out;
  p.rotation = ROTATION_NONE;
  code = zqCCInit(&handle);
  if (code != CC_OK) return 1;
  code = zqCCProcess(handle, &p);
  zqCCUninit(handle);
  return code == CC_OK && out[0] == 0x1F && out[1] == 0x00 && out[7] == 0xFF ? 0 : 1;
}
