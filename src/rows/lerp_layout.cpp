#include "rows/lerp_layout.h"

#include <cstring>

namespace zqp {
namespace {

constexpr int32_t kWhole = 32768;
constexpr uint8_t kNoByte = 0x80;
constexpr int32_t kHalfGroup = kColumnGroup / 2;
constexpr int32_t kByteWeight = 256; ///< weights that are multiples of it can be given as factors of a byte

int32_t smaller(int32_t a, int32_t b) {
  return a < b ? a : b;
}
int32_t larger(int32_t a, int32_t b) {
  return a > b ? a : b;
}

/// An output's samples, the nearer one first. `weight` is that of the farther one.
struct Pair {
  int32_t near;
  int32_t far;
  int32_t weight;
};

/// What stands for outputs behind the last one repeats it.
struct Outputs {
  const Lerp *columns;
  int32_t count;
  int32_t samples;

  Pair operator()(int32_t i) const {
    const Lerp &lerp = columns[smaller(i, count - 1)];
    if (lerp.next == 0) {
      return {lerp.at, lerp.at, 0};
    }
    return lerp.next <= kWhole / 2 ? Pair{lerp.at, lerp.at + 1, lerp.next}
                                   : Pair{lerp.at + 1, lerp.at, kWhole - lerp.next};
  }
};

/// Samples first to last.
struct Span {
  int32_t first;
  int32_t last;
};

Span spanOf(const Outputs &outputs, int32_t first, int32_t count) {
  Span span = {outputs.samples, 0};
  for (int32_t i = first; i < first + count; ++i) {
    const Pair pair = outputs(i);
    span.first = smaller(span.first, smaller(pair.near, pair.far));
    span.last = larger(span.last, larger(pair.near, pair.far));
  }
  return span;
}

/// How windows are placed.
struct Kind {
  int32_t parts;
  bool withinReach;
};

/// Places the windows of half a group; false if they do not serve its outputs. Counts from the half's base.
bool placeHalf(const Outputs &outputs, int32_t first, Kind kind, int32_t base, int32_t (&window)[2][kLerpBlocks / 2]) {
  const int32_t neighbours = kLerpBlock / kind.parts;
  for (int32_t part = 0; part < kind.parts; ++part) {
    for (int32_t block = 0; block < kLerpBlocks / 2; ++block) {
      const Span span = spanOf(outputs, first + block * kLerpBlock + part * neighbours, neighbours);
      const int32_t from = span.first - base;
      window[part][block] = kind.withinReach ? smaller(from & ~3, lerpReach(kind.parts) - kLerpWindow)
                                             : smaller(from, outputs.samples - kLerpWindow - base);
      if (span.last - base >= window[part][block] + kLerpWindow) {
        return false;
      }
    }
  }
  return true;
}

/// Places the windows of a group; false if they do not serve its outputs.
bool placeGroup(const Outputs &outputs, int32_t first, Kind kind, LerpTables &tables, int32_t &base) {
  int32_t bases[2] = {};
  for (int32_t half = 0; half < 2; ++half) {
    const int32_t output = first + half * kHalfGroup;
    const int32_t wanted = spanOf(outputs, output, kHalfGroup).first;
    bases[half] = smaller(wanted, outputs.samples - (kind.withinReach ? lerpReach(kind.parts) : kLerpWindow));
    int32_t window[2][kLerpBlocks / 2] = {};
    if (bases[half] < 0 || !placeHalf(outputs, output, kind, bases[half], window)) {
      return false;
    }
    for (int32_t part = 0; part < 2; ++part) {
      for (int32_t block = 0; block < kLerpBlocks / 2; ++block) {
        tables.window[part][half * kLerpBlocks / 2 + block] = window[part][block] + bases[half] - bases[0];
      }
      for (int32_t lane = 0; lane < 16; ++lane) {
        tables.lane[half][part][lane] = static_cast<uint32_t>(window[part][lane / 4] / 4 + lane % 4);
      }
    }
  }
  base = bases[0];
  tables.half = bases[1] - bases[0];
  return true;
}

void enterBytes(const Outputs &outputs, int32_t first, Kind kind, int32_t base, LerpTables &tables) {
  const int32_t neighbours = kLerpBlock / kind.parts;
  std::memset(tables.mask, kNoByte, sizeof tables.mask);
  for (int32_t i = 0; i < kColumnGroup; ++i) {
    const Pair pair = outputs(first + i);
    const int32_t part = i % kLerpBlock / neighbours;
    const int32_t from = base + tables.window[part][i / kLerpBlock];
    tables.mask[part][2 * i] = static_cast<uint8_t>(pair.near - from);
    tables.mask[part][2 * i + 1] = static_cast<uint8_t>(pair.far - from);
  }
}

void enterWeights(const Outputs &outputs, int32_t first, bool byteWeights, LerpTables &tables) {
  for (int32_t i = 0; i < kColumnGroup; ++i) {
    const int32_t weight = outputs(first + i).weight;
    tables.weight[i] = static_cast<int16_t>(-2 * weight);
    if (byteWeights) {
      // Of a sample that counts alone both bytes are the same one: 128 would be no signed byte.
      const int32_t far = weight == 0 ? 64 : weight / kByteWeight;
      const int8_t factors[2] = {static_cast<int8_t>(128 - far), static_cast<int8_t>(far)};
      std::memcpy(tables.weight + i, factors, sizeof factors);
    }
  }
}

/// The first kind of windows that serve all outputs; no parts if none does.
Kind kindFor(const Outputs &outputs) {
  constexpr Kind kKinds[] = {{1, true}, {2, true}, {1, false}, {2, false}};
  LerpTables tables;
  int32_t base = 0;
  for (const Kind kind : kKinds) {
    int32_t output = 0;
    while (output < outputs.count && placeGroup(outputs, output, kind, tables, base)) {
      output += kColumnGroup;
    }
    if (output >= outputs.count) {
      return kind;
    }
  }
  return {0, false};
}

bool allAreByteWeights(const Lerp *columns, int32_t outputs) {
  for (int32_t i = 0; i < outputs; ++i) {
    if (columns[i].next % kByteWeight != 0) {
      return false;
    }
  }
  return true;
}

} // namespace

size_t lerpLayoutBytes(int32_t outputs) {
  return sizeof(LerpLayout) + static_cast<size_t>(columnGroups(outputs)) * (sizeof(LerpTables) + sizeof(LerpPlace));
}

void layOutLerp(const Lerp *columns, int32_t outputs, int32_t samples, uint8_t *layout) {
  const Outputs all = {columns, outputs, samples};
  const Kind kind = kindFor(all);
  auto &head = *reinterpret_cast<LerpLayout *>(layout);
  head = {kind.parts, allAreByteWeights(columns, outputs), kind.withinReach};
  if (kind.parts == 0) {
    return;
  }
  auto *const tables = reinterpret_cast<LerpTables *>(layout + sizeof(LerpLayout));
  auto *const places = reinterpret_cast<LerpPlace *>(tables + columnGroups(outputs));
  int32_t last = -1;
  for (int32_t g = 0; g < columnGroups(outputs); ++g) {
    LerpTables &own = tables[last + 1];
    std::memset(&own, 0, sizeof own);
    const int32_t first = g * kColumnGroup;
    placeGroup(all, first, kind, own, places[g].base);
    enterBytes(all, first, kind, places[g].base, own);
    enterWeights(all, first, head.byteWeights, own);
    // At most ratios that recur within a group, groups differ in nothing but where they lie.
    last += last < 0 || std::memcmp(&own, &tables[last], sizeof own) != 0 ? 1 : 0;
    places[g].tables = last;
  }
}

} // namespace zqp
