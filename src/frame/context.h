// The object behind a handle.
#pragma once

#include "tables/color_matrix.h"
#include "zqColorConversion.h"

#include <cstddef>
#include <cstdint>

/// Owns every buffer that it points to. `params` is the description of the last set-up (turned, where the planes are
/// turned before the conversion) and says what the tables and scratch planes were made for.
struct ConvertContext {
  int32_t *xTable;
  int32_t *yTable;
  uint8_t *uvBuf[2];
  uint8_t *rotBuf[3];
  uint8_t *auxBuf; ///< always null: nothing needs it, but the record's layout has a place for one more buffer
  const zqcc::ColorMatrix *matrix; ///< last selected through this handle; recorded only
  ConvertParams params;
};

static_assert(sizeof(void *) != 4 || sizeof(ConvertParams) == 68, "17 words where pointers have 32 bits");
static_assert(sizeof(void *) != 4 || sizeof(ConvertContext) == 104, "26 words where pointers have 32 bits");

namespace zqcc {

/// A zeroed context, or null.
ConvertContext *createContext();

/// Frees what set-up allocated and nulls the pointers.
void releaseBuffers(ConvertContext &context);

/// Frees the buffers and the context; null is ignored.
void destroyContext(ConvertContext *context);

} // namespace zqcc
