#include "zqColorConversion.h"

/* A C file that includes nothing else and uses every kind of name the header declares. */
uint32_t zqcc_header_alone(ConvertContext *handle, ConvertParams *params);
uint32_t zqcc_header_alone(ConvertContext *handle, ConvertParams *params) {
  params->inType = COLOR_YUV420_PLANAR;
  params->rotation = ROTATION_NONE;
  return zqCCProcess(handle, params) == CC_OK ? CC_OK : CC_ERR_ARGUMENT;
}
