// Set-up: prepares a context for the frames of one description.
#pragma once

#include "frame/context.h"

#include <cstdint>

namespace zqcc {

/// Makes the tables and scratch planes that frames of `params` need, releasing those of an earlier set-up. Plane
/// pointers are not read. On CC_ERR_ARGUMENT the context is as it was; on CC_ERR_NO_MEMORY it has been destroyed.
/// A description that no routine serves succeeds and makes nothing: its frames get their code.
uint32_t setUp(ConvertContext *context, const ConvertParams &params);

} // namespace zqcc
