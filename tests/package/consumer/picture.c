#include <zqPicture.h>

int main(void) {
  uint8_t pixel[12] = {255, 0, 0, 0, 255, 0, 0, 0, 255, 255, 255, 255};
  uint8_t word[8] = {0};
  ZqpConversion conversion = {sizeof(ZqpConversion)};
  ZqpPicture in = {sizeof(ZqpPicture)};
  ZqpPicture out = {sizeof(ZqpPicture)};
  ZqpConverter *converter;
  int32_t error;
  if (zqpConversionInit(&conversion) != ZQP_OK) return 1;
  conversion.inFormat = ZQP_RGB24;
  conversion.outFormat = ZQP_RGB565;
  conversion.inWidth = conversion.outWidth = 4;
  conversion.inHeight = conversion.outHeight = 1;
  if (zqpPictureLayOut(&in, ZQP_RGB24, 4, 1, 1, pixel, sizeof pixel) != ZQP_OK) return 2;
  if (zqpPictureLayOut(&out, ZQP_RGB565, 4, 1, 1, word, sizeof word) != ZQP_OK) return 3;
  if (zqpConverterMake(&conversion, &converter) != ZQP_OK) return 4;
  error = zqpConvert(converter, &in, &out);
  zqpConverterFree(converter);
  return error == ZQP_OK && word[0] == 0x00 && word[1] == 0xF8 && word[4] == 0x1F && word[7] == 0xFF ? 0 : 5;
}
