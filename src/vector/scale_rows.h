// Stages that make rows of 8-bit samples of another width and height. Bilinear rows are made in two steps, so that a
// source line is interpolated along the line once and mixed with its neighbour for as many output lines as need it:
//
//     FILL_ROW    line of samples                     -> row of numbers, times 1024
//     MIX_ROWS    rows of two neighbouring lines      -> row of samples
//     PICK_ROW    line of samples                     -> row of samples, nearest ones
//
// Groups are those of the plan, 64 outputs each: whole groups are written, also where the last one is cut short.
//
// Lines are best taken from end to end, or at least a thousand outputs at a time: memory is read ahead along a line,
// and chunks of 512 outputs down the picture take a sixth to a third longer.
#pragma once

#include "vector/column_plan.h"
#include "vector/stages.h"

#include <cstdint>

namespace zqcc {

/// Interpolates a line along itself for groups [firstGroup, firstGroup + groups) of the plan. `line` is its first
/// sample; no byte outside the line is read. Writes groups * 64 numbers to `row`, in an order and a form of the level's
/// own: only the MIX_ROWS of the same level knows them. Rows do best at multiples of 64 bytes.
using FillRow = void (*)(const uint8_t *line, const TapPlan &plan, int32_t firstGroup, int32_t groups, int32_t *row);
extern const PerLevel<FillRow> FILL_ROW;

/// The same of 16-bit pixels, whose components go to a row each: red, green, blue, in bytes of which they are the top
/// bits. Truncated means of such bytes have those of the components at their top. The plan is one of words, with parts.
using FillWordRows = void (*)(const uint8_t *line, const TapPlan &plan, int32_t firstGroup, int32_t groups,
                              int32_t *const rows[3]);
extern const PerLevel<FillWordRows> FILL_WORD_ROWS;

/// Mixes two filled rows: (top * 1024 + (bottom - top) * next) >> 20 with 0 <= next < 1024. Writes groups * 64 samples
/// to `to` in their order. With next 0 `bottom` is not read.
using MixRows = void (*)(const int32_t *top, const int32_t *bottom, int32_t next, int32_t groups, uint8_t *to);
extern const PerLevel<MixRows> MIX_ROWS;

/// Copies the nearest sample for every output of groups [firstGroup, firstGroup + groups). Writes groups * 64 samples.
/// No byte outside the line is read.
using PickRow = void (*)(const uint8_t *line, const PickPlan &plan, int32_t firstGroup, int32_t groups, uint8_t *to);
extern const PerLevel<PickRow> PICK_ROW;

/// B, G, R bytes, three a pixel, into a row each: red to y, green to u, blue to v. SourceLine::v is the first byte, y
/// and u are not looked at. Any number of pixels from kLeastPixels on; nothing behind the last one is read or written.
extern const PerLevel<FetchRows> RGB24_ROWS;

/// The same of 16-bit pixels, low byte first. A component is its bits at the top of a byte, zeros below them: a mean of
/// such bytes has the mean of the components at its top, truncated as if they had been mixed themselves.
extern const PerLevel<FetchRows> RGB565_ROWS;

} // namespace zqcc
