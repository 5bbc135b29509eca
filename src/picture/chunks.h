// How many columns are made at once.
#pragma once

#include "picture/converter.h"

namespace zqp {

/// Sets chunks and their spans. All else has been decided, and the tables of the grids are there.
void chooseChunks(ZqpConverter &converter);

} // namespace zqp
