// The rules by which set-up and dispatch answer, written down once more apart from the library.
#pragma once

#include "zqColorConversion.h"

namespace reference {

/// What PARAM_CONVERT_DESC returns for a description.
uint32_t setupCode(const ConvertParams &setup);

/// What zqCCProcess returns for a frame after a successful PARAM_CONVERT_DESC with `setup`.
uint32_t resultCode(const ConvertParams &setup, const ConvertParams &frame);

/// True when the frame's route scales: it then needs the tables of a set-up that agrees with it.
bool scales(const ConvertParams &frame);

} // namespace reference
