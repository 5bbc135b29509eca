// Conversion records as the fuzzers draw them.
#pragma once

#include "base/levels.h"
#include "fuzz/script.h"
#include "zqColorConversion.h"

#include <cstdint>

namespace fuzz {

/// The level of vector code that an input runs at: its first byte. On a machine that lacks it, the next lower one runs.
zqcc::Level readLevel(Script &script);
void writeLevel(ScriptWriter &writer, zqcc::Level level);

/// A record without planes. Mostly codes that exist and small sizes; strides are mostly tight or a little more.
ConvertParams readRecord(Script &script);
/// Moves a record's sizes or strides to a limit, or so that a product of them lies beside one.
void moveToLimit(Script &script, ConvertParams &record);
/// The script of a record with modes that exist, its strides included.
void writeRecord(ScriptWriter &writer, const ConvertParams &record);
/// The same with tight strides plus 0..31 bytes.
void writeRecord(ScriptWriter &writer, const ConvertParams &record, int inExtra, int outExtra);

/// Draws one field anew.
void changeRecord(Script &script, ConvertParams &record);
/// Draws the two strides anew.
void readStrides(Script &script, ConvertParams &record);
void writeStrides(ScriptWriter &writer, int inExtra, int outExtra);

/// Converters of semi-planar input find the split chroma in planes that set-up made; how large those are beyond what
/// set-up asked for is the library's own affair.
bool isSemiPlanarConversion(const ConvertParams &record);
/// A conversion of semi-planar input whose split chroma is larger than the planes that set-up has to make: it must be
/// refused.
bool exceedsSplitPlanes(const ConvertParams &setup, const ConvertParams &record);
/// Scaling quarter turns of these types turn the planes first.
bool turnsPlanes(const ConvertParams &record);
/// The stride is shorter than a line. The library reads no byte outside such planes, but what a picture made of them
/// would be, nobody says.
bool inputLinesOverlap(const ConvertParams &record);
/// More bytes than anything here is given, few enough that such figures can be added up.
constexpr int64_t bounded(int64_t bytes) {
  return bytes < int64_t{1} << 50 ? bytes : int64_t{1} << 50;
}
/// Pixels of the output; many more than its bytes where the stride is short.
int64_t pixelsOf(const ConvertParams &record);
/// Whether the slow models make the picture as well.
bool isComparedInTime(const ConvertParams &record);
/// What set-up has to allocate: it surely succeeds, surely fails, or nobody can say.
enum class SetUpMemory { Enough, TooLittle, Unclear };
SetUpMemory setUpMemory(const ConvertParams &record);

inline constexpr int64_t kLargest = int64_t{1} << 20;        ///< of all heap blocks of a frame, and of its pixels
inline constexpr int64_t kMostPages = int64_t{1} << 14;      ///< under the lines of a frame that is converted
inline constexpr int64_t kLargestCompared = 40000;           ///< pixels of a picture that the slow models make as well
inline constexpr int64_t kMostThinPixels = 140000;           ///< the same for pictures of a few lines or columns
inline constexpr int64_t kLargestSetUp = int64_t{16} << 20;  ///< of what set-up allocates
inline constexpr int64_t kLargestMalloc = int64_t{32} << 20; ///< where the memory ends (see limited_malloc.cpp)

} // namespace fuzz
