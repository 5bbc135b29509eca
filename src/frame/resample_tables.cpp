#include "frame/resample_tables.h"

namespace zqcc {
namespace {

constexpr std::size_t kSpare = 4;
constexpr int kTaps = static_cast<int>(kFilterTaps);

double factorOf(const Axis &axis) {
  return static_cast<double>(axis.source) / static_cast<double>(axis.positions);
}

int32_t fractionOf(float position, int32_t whole) {
  return static_cast<int32_t>((position - static_cast<float>(whole)) * static_cast<float>(kWholeWeight));
}

/// Truncated towards zero. A single-precision position near the end of the largest lines rounds up to 2^31.
int32_t wholeOf(float position) {
  constexpr float kBeyond = 2147483648.0F;
  return position < kBeyond ? static_cast<int32_t>(position) : INT32_MAX;
}

/// Source position of output i: a double product, narrowed.
float positionOf(int32_t i, double factor) {
  return static_cast<float>(static_cast<double>(i) * factor);
}

void writeTap(int32_t *tap, int32_t index, int32_t next) {
  tap[0] = index;
  tap[1] = next;
  tap[2] = kWholeWeight - next;
}

/// At the end of the line the last two samples count equally. A position between -1 and 0 truncates to 0 and has a
/// negative weight.
void writeBilinear(int32_t *tap, float position, int32_t source) {
  const int32_t index = wholeOf(position);
  if (index < source - 1) {
    writeTap(tap, index, fractionOf(position, index));
  } else {
    writeTap(tap, source - 2, kWholeWeight / 2);
  }
}

} // namespace

uint64_t tableWords(TableFormat format, const Axis &axis, uint32_t antiAlias) {
  constexpr auto kOneTap = static_cast<uint64_t>(kTapWords);
  constexpr auto kFifteenWords = static_cast<uint64_t>(kBoxWords); // of five taps or of a box
  static_assert(kBoxWords == kEntryWords<kFilterTaps>);
  const auto n = static_cast<uint64_t>(axis.positions);
  switch (format) {
  case TableFormat::Nearest:
  case TableFormat::RunLength:
    return (antiAlias != 0 ? kFifteenWords : kOneTap) * n + kSpare;
  case TableFormat::Bilinear:
    return kOneTap * n + kSpare;
  case TableFormat::Filtered:
  case TableFormat::Box:
    return kFifteenWords * n + kSpare;
  case TableFormat::Grouped:
    return kOneTap * n + static_cast<uint64_t>(axis.source / kGroupSpan) + 2;
  case TableFormat::None:
    break;
  }
  return 0;
}

int64_t stepOf(const Axis &axis) {
  return static_cast<int64_t>(factorOf(axis) * kWholeWeight);
}

void buildNearest(int32_t *table, const Axis &axis) {
  const int64_t step = stepOf(axis);
  for (int32_t i = 0; i < axis.positions; ++i) {
    table[i] = static_cast<int32_t>((i * step) >> kWeightBits);
  }
  for (std::size_t k = 0; k < kSpare; ++k) {
    table[static_cast<std::size_t>(axis.positions) + k] = 255;
  }
}

void buildBilinear(int32_t *table, const Axis &axis) {
  const double factor = factorOf(axis);
  for (int32_t i = 0; i < axis.positions; ++i, table += kTapWords) {
    writeBilinear(table, positionOf(i, factor), axis.source);
  }
}

void buildFiltered(int32_t *table, const Axis &axis, Direction direction, uint32_t antiAlias) {
  const float wide = antiAlias == 1 ? 1.4F : 1.6F;
  const float narrow = antiAlias == 1 ? 0.9F : 1.1F;
  const float columns[kTaps] = {0.0F, -wide, narrow, wide, -narrow};
  const float lines[kTaps] = {0.0F, -narrow, -wide, narrow, wide};
  const float *offsets = direction == Direction::Horizontal ? columns : lines;
  const double factor = factorOf(axis);
  for (int32_t i = 0; i < axis.positions; ++i, table += kEntryWords<kFilterTaps>) {
    const float p = positionOf(i, factor);
    for (int t = 0; t < kTaps; ++t) {
      const float q = p + offsets[t];
      writeBilinear(table + t * kTapWords, wholeOf(q) < 0 ? p : q, axis.source);
    }
  }
}

int32_t boxSpacing(const Axis &axis) {
  const double factor = factorOf(axis);
  return factor >= 8.0 ? static_cast<int32_t>(factor * 0.25) : 1;
}

void buildBox(int32_t *table, const Axis &axis, int32_t spacing) {
  const int64_t step = stepOf(axis);
  const auto reach = static_cast<int64_t>(factorOf(axis));
  for (int32_t i = 0; i < axis.positions; ++i, table += kBoxWords) {
    const int64_t start = i * step / kWholeWeight + 1;
    for (int64_t j = 0; j < kBoxWords; ++j) {
      const int64_t index = start + j * spacing;
      const bool inside = index <= axis.source - 1 && j * spacing < reach;
      table[j] = inside ? static_cast<int32_t>(index) : -1;
    }
  }
}

void buildGrouped(int32_t *table, const Axis &axis) {
  const float factor = static_cast<float>(axis.source) / static_cast<float>(axis.positions);
  int32_t groupsLeft = (axis.source + kGroupSpan - 1) / kGroupSpan - 1;
  int32_t limit = kGroupSpan - 1;
  int32_t *count = table;
  int32_t *tap = table + 1;
  const auto openGroup = [&] {
    count = tap++;
    *count = 0;
    limit += kGroupSpan;
    --groupsLeft;
  };
  *count = 0;
  for (int32_t i = 0; i < axis.positions; ++i) {
    const float p = static_cast<float>(i) * factor;
    const int32_t whole = wholeOf(p);
    const int32_t index = whole < axis.source - 1 ? whole : axis.source - 2;
    // Groups close behind an odd output, so that the outputs stay in pairs.
    const bool closes = groupsLeft > 0 && index >= limit;
    if (closes && i % 2 == 0) {
      openGroup();
    }
    writeTap(tap, index, fractionOf(p, whole));
    tap += kTapWords;
    ++*count;
    if (closes && i % 2 != 0) {
      openGroup();
    }
  }
  while (groupsLeft > 0) {
    openGroup();
  }
}

void buildRunLengthColumns(int32_t *table, const Axis &axis) {
  const int64_t step = stepOf(axis);
  int64_t previous = -1;
  for (int32_t i = 0; i < axis.positions; ++i) {
    const int64_t index = (i * step) >> kWeightBits;
    uint32_t flags = 0;
    if (index != previous) {
      // Another chroma sample comes with an even column or a jump over one.
      flags = index - previous > 1 || index % 2 == 0 ? kNewPixel | kNewChroma : kNewPixel;
    }
    table[i] = static_cast<int32_t>(static_cast<uint32_t>(index) << kRunColumnShift | flags);
    previous = index;
  }
}

void buildRunLengthLines(int32_t *table, const Axis &axis) {
  const int64_t step = stepOf(axis);
  const int64_t n = axis.positions;
  const auto line = [step](int64_t j) { return static_cast<int32_t>((j * step) >> kWeightBits); };
  int64_t j = 0;
  for (;;) {
    const int32_t s = line(j);
    int32_t t = line(j + 1);
    j += 2;
    int32_t leading = 0;
    if (t == s) {
      do {
        t = line(j);
        ++leading;
        ++j;
      } while (t == s);
    }
    if (j >= n) {
      break;
    }
    if (leading > 0) {
      *table++ = -leading;
    }
    if (t - s < 2 && s % 2 == 0) {
      *table++ = s | kLinePair;
    } else {
      *table++ = s;
      *table++ = t;
    }
    int32_t trailing = 0;
    while (j < n && line(j) == t) {
      ++j;
      ++trailing;
    }
    if (j >= n) {
      break;
    }
    if (trailing > 0) {
      *table++ = -trailing;
    }
  }
  for (int k = 0; k < 3; ++k) {
    *table++ = line(n - 1);
  }
}

} // namespace zqcc
