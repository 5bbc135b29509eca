// The handle interface.
#include "frame/context.h"
#include "frame/dispatch.h"
#include "frame/setup.h"
#include "tables/color_matrix.h"
#include "zqColorConversion.h"

namespace {

uint32_t setMatrix(ConvertContext &context, std::uintptr_t index) {
  if (index >= zqcc::kMatrixCount) {
    return CC_ERR_ARGUMENT;
  }
  zqcc::selectMatrix(static_cast<uint32_t>(index));
  context.matrix = zqcc::currentMatrix();
  return CC_OK;
}

} // namespace

uint32_t zqCCInit(ConvertContext **handle) {
  if (handle == nullptr) {
    return CC_ERR_ARGUMENT;
  }
  *handle = zqcc::createContext();
  if (*handle == nullptr) {
    return CC_ERR_NO_MEMORY;
  }
  zqcc::selectMatrix(MATRIX_BT601);
  return CC_OK;
}

uint32_t zqCCSetParameter(ConvertContext *handle, uint32_t id, void *value) {
  if (handle == nullptr) {
    return CC_ERR_ARGUMENT;
  }
  switch (id) {
  case PARAM_CONVERT_DESC:
    return value != nullptr ? zqcc::setUp(handle, *static_cast<const ConvertParams *>(value)) : CC_ERR_ARGUMENT;
  case PARAM_COLOR_MATRIX:
    return setMatrix(*handle, reinterpret_cast<std::uintptr_t>(value));
  case PARAM_CUSTOM_MATRIX:
    if (value == nullptr) {
      return CC_ERR_ARGUMENT;
    }
    zqcc::selectCustomMatrix(static_cast<const double *>(value));
    return CC_OK;
  default:
    return CC_ERR_PARAM_ID;
  }
}

uint32_t zqCCProcess(ConvertContext *handle, ConvertParams *params) {
  if (handle == nullptr || params == nullptr) {
    return CC_ERR_ARGUMENT;
  }
  return zqcc::dispatchFrame(*handle, *params);
}

uint32_t zqCCUninit(ConvertContext *handle) {
  if (handle == nullptr) {
    return CC_ERR_ARGUMENT;
  }
  zqcc::destroyContext(handle);
  return CC_OK;
}
