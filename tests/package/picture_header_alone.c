#include "zqPicture.h"

/* A C file that includes nothing else and uses every kind of name the header declares. */
int32_t zqp_header_alone(ZqpConversion *conversion, const ZqpPicture *in, const ZqpPicture *out);
int32_t zqp_header_alone(ZqpConversion *conversion, const ZqpPicture *in, const ZqpPicture *out) {
  ZqpConverter *converter = NULL;
  int32_t error;
  conversion->recordSize = sizeof *conversion;
  error = zqpConversionInit(conversion);
  conversion->inFormat = ZQP_NV12;
  conversion->crop.width = ZQP_MOST_PIXELS;
  conversion->inColours.matrix = ZQP_BT709;
  if (error == ZQP_OK)
    error = zqpConverterMake(conversion, &converter);
  if (error == ZQP_OK)
    error = zqpConvert(converter, in, out);
  zqpConverterFree(converter);
  return error;
}
