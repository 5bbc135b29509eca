#include "picture/grid_rows.h"

#include "picture/wide_rows.h"

#include <cstring>

namespace zqp {
namespace {

constexpr int32_t kNoLine = -1;
constexpr uint8_t kMiddle = 128;

std::size_t countOf(int32_t count) {
  return static_cast<std::size_t>(count);
}

} // namespace

void GridRows::layOut(Arena &arena, int32_t outputs, int32_t samples, bool isWide) {
  isWide_ = isWide;
  const bool copiesBytes = plan_.way == Way::Middle || (plan_.way == Way::Bytes && (!plan_.keepsColumns || isWide));
  const bool needsLines = plan_.way == Way::Lerp && !isWide;
  for (int32_t c = 0; c < plan_.components; ++c) {
    byteRows_[c] = copiesBytes ? arena.take<uint8_t>(countOf(outputs)) : nullptr;
    wordRows_[c] = plan_.wantsWords ? arena.take<int16_t>(countOf(outputs)) : nullptr;
    for (WordLine &line : lines_) {
      line.row[c] = needsLines ? arena.take<int16_t>(countOf(outputs)) : nullptr;
    }
  }
  if (plan_.way == Way::Taps) {
    means_.layOut(arena, samples);
  }
  if (plan_.way == Way::Middle && arena.hasMemory()) {
    fillMiddle(outputs);
  }
}

void GridRows::fillMiddle(int32_t outputs) {
  for (int32_t c = 0; c < plan_.components; ++c) {
    std::memset(byteRows_[c], kMiddle, countOf(outputs));
    bytes_[c] = byteRows_[c];
    words_[c] = wordRows_[c];
    for (int32_t k = 0; plan_.wantsWords && k < outputs; ++k) {
      wordRows_[c][k] = kMiddle << kWordShift;
    }
  }
}

void GridRows::aim(const Part &part) {
  part_ = part;
  span_ = spanOf(plan_, part);
  bytesLine_ = kNoLine;
  wordsLine_ = kNoLine;
  lines_[0].line = kNoLine;
  lines_[1].line = kNoLine;
}

int32_t GridRows::lineOf(int32_t j) const {
  return plan_.lines.sampling() == Sampling::Same ? j : plan_.lines.nearest(j);
}

const uint8_t *const *GridRows::bytes(int32_t j) {
  if (plan_.way == Way::Middle) {
    return bytes_;
  }
  const int32_t line = lineOf(j);
  if (!isWide_ && plan_.keepsColumns) {
    input_.rows(plan_.isOfChroma, line, bytes_);
    for (int32_t c = 0; c < plan_.components; ++c) {
      bytes_[c] = bytes_[c] + part_.first;
    }
    return bytes_;
  }
  if (bytesLine_ != line) {
    bytesLine_ = line;
    pick(line);
  }
  return bytes_;
}

void GridRows::pick(int32_t line) {
  const uint8_t *rows[4];
  if (isWide_) {
    pickWide(plan_, input_, part_, line, byteRows_);
  } else {
    input_.rows(plan_.isOfChroma, line, rows);
  }
  for (int32_t c = 0; c < plan_.components; ++c) {
    if (!isWide_) {
      scale_.pick(rows[c], plan_.at + part_.first, part_.count, byteRows_[c]);
    }
    bytes_[c] = byteRows_[c];
  }
}

void GridRows::halves(int32_t j, const uint8_t *to[2]) {
  const uint8_t *rows[4];
  input_.rows(plan_.isOfChroma, lineOf(j), rows);
  to[0] = rows[0] + part_.first / 2;
  to[1] = rows[1] + part_.first / 2;
}

const int16_t *const *GridRows::words(int32_t j) {
  if (plan_.way != Way::Middle && wordsLine_ != j) {
    wordsLine_ = j;
    makeWords(j);
  }
  return words_;
}

void GridRows::makeWords(int32_t j) {
  for (int32_t c = 0; c < plan_.components; ++c) {
    words_[c] = wordRows_[c];
  }
  switch (plan_.way) {
  case Way::Lerp:
    isWide_ ? lerpWide(plan_, input_, part_, j, wordRows_) : lerp(j);
    break;
  case Way::Taps:
    isWide_ ? tapWide(plan_, means_, input_, part_, j, wordRows_) : tap(j);
    break;
  default:
    widen(bytes(j));
  }
}

void GridRows::widen(const uint8_t *const *rows) {
  for (int32_t c = 0; c < plan_.components; ++c) {
    scale_.widen(rows[c], part_.count, wordRows_[c]);
  }
}

const GridRows::WordLine &GridRows::wordLine(int32_t line) {
  WordLine &made = lines_[line & 1];
  if (made.line == line) {
    return made;
  }
  made.line = line;
  const uint8_t *rows[4];
  input_.rows(plan_.isOfChroma, line, rows);
  for (int32_t c = 0; c < plan_.components; ++c) {
    if (plan_.keepsColumns) {
      scale_.widen(rows[c] + part_.first, part_.count, made.row[c]);
    } else {
      scale_.lerpColumns(rows[c], plan_.lerp, part_.first, part_.count, made.row[c]);
    }
  }
  return made;
}

void GridRows::lerp(int32_t j) {
  const Lerp between = plan_.lines.sampling() == Sampling::Same ? Lerp{j, 0} : plan_.lines.lerp(j);
  const WordLine &upper = wordLine(between.at);
  if (between.next == 0) {
    for (int32_t c = 0; c < plan_.components; ++c) {
      words_[c] = upper.row[c];
    }
    return;
  }
  const WordLine &lower = wordLine(between.at + 1);
  for (int32_t c = 0; c < plan_.components; ++c) {
    scale_.lerpLines(upper.row[c], lower.row[c], between.next, part_.count, wordRows_[c]);
  }
}

void GridRows::tap(int32_t j) {
  means_.begin(j, span_);
  for (int32_t c = 0; c < plan_.components; ++c) {
    if (plan_.keepsColumns) {
      means_.component(c, wordRows_[c]);
    } else {
      scale_.tapColumns(means_.component(c), span_.first, plan_.taps, part_.first, part_.count, wordRows_[c]);
    }
  }
}

} // namespace zqp
