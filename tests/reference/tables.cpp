#include "reference/tables.h"

#include <array>
#include <cstddef>

namespace reference {
namespace {

constexpr int kTaps = 5;
constexpr int kBoxWords = 15;

struct Triple {
  int32_t index;
  int32_t next;
  int32_t self;
};

double ratio(int source, int positions) {
  return static_cast<double>(source) / static_cast<double>(positions);
}

/// Intermediates are stored so that none is fused with a later operation or kept more precisely.
float narrowedPosition(int i, double factor) {
  const volatile double product = static_cast<double>(i) * factor;
  const volatile auto p = static_cast<float>(product);
  return p;
}

/// Fraction of q in 1/1024, truncated toward zero; negative when q lies between -1 and 0.
int32_t fraction(float q, int32_t whole) {
  const volatile float rest = q - static_cast<float>(whole);
  return static_cast<int32_t>(rest * 1024.0F);
}

Triple tripleAt(float q, int source) {
  const auto s = static_cast<int32_t>(q);
  if (s >= source - 1) {
    return {source - 2, 512, 512};
  }
  const int32_t f = fraction(q, s);
  return {s, f, 1024 - f};
}

void append(Words &words, const Triple &t) {
  words.insert(words.end(), {t.index, t.next, t.self});
}

std::array<float, kTaps> tapPositions(float p, int quality, bool isX) {
  const float a = quality == 1 ? 1.4F : 1.6F;
  const float b = quality == 1 ? 0.9F : 1.1F;
  if (isX) {
    return {p, p - a, p + b, p + a, p - b};
  }
  return {p, p - b, p - a, p + b, p + a};
}

int lineOf(int j, int64_t step) {
  return static_cast<int>((j * step) >> 10);
}

} // namespace

int64_t stepOf(int source, int positions) {
  return static_cast<int64_t>(ratio(source, positions) * 1024.0);
}

Words nearest(int source, int positions) {
  Words words;
  const int64_t step = stepOf(source, positions);
  for (int i = 0; i < positions; ++i) {
    words.push_back(lineOf(i, step));
  }
  return words;
}

Words bilinear(int source, int positions) {
  Words words;
  const double factor = ratio(source, positions);
  for (int i = 0; i < positions; ++i) {
    append(words, tripleAt(narrowedPosition(i, factor), source));
  }
  return words;
}

Words filtered(int source, int positions, int quality, bool isX) {
  Words words;
  const double factor = ratio(source, positions);
  for (int i = 0; i < positions; ++i) {
    const float p = narrowedPosition(i, factor);
    const Triple first = tripleAt(p, source);
    for (const float q : tapPositions(p, quality, isX)) {
      const volatile float stored = q;
      const float position = stored;
      append(words, static_cast<int32_t>(position) < 0 ? first : tripleAt(position, source));
    }
  }
  return words;
}

int columnBoxStep(int source, int positions) {
  const double r = ratio(source, positions);
  return r >= 8.0 ? static_cast<int>(r * 0.25) : 1;
}

int lineBoxStep(int source, int positions, int columnStep) {
  const double r = ratio(source, positions);
  return r >= 8.0 ? static_cast<int>(r * 0.25) : columnStep;
}

Words box(int source, int positions, int sampleStep) {
  Words words;
  const int64_t step = stepOf(source, positions);
  const int width = static_cast<int>(ratio(source, positions));
  for (int i = 0; i < positions; ++i) {
    const int start = static_cast<int>(static_cast<int64_t>(i) * step / 1024) + 1;
    for (int j = 0; j < kBoxWords; ++j) {
      const int offset = j * sampleStep;
      const bool inside = start + offset <= source - 1 && offset < width;
      words.push_back(inside ? start + offset : -1);
    }
  }
  return words;
}

Words grouped(int source, int positions) {
  std::vector<Words> groups(static_cast<std::size_t>((source + 15) / 16));
  const volatile float factor = static_cast<float>(source) / static_cast<float>(positions);
  std::size_t current = 0;
  int limit = 15;
  for (int i = 0; i < positions; ++i) {
    const volatile float product = static_cast<float>(i) * factor;
    const float p = product;
    const auto s = static_cast<int32_t>(p);
    const int32_t f = fraction(p, s);
    const int32_t index = s < source - 1 ? s : source - 2;
    const bool closes = index >= limit;
    // Pairs stay together: an odd position ends the closing group, an even one opens the next.
    if (closes && i % 2 == 0) {
      ++current;
    }
    append(groups.at(current), {index, f, 1024 - f});
    if (closes && i % 2 != 0) {
      ++current;
    }
    limit += closes ? 16 : 0;
  }
  Words words;
  for (const Words &group : groups) {
    words.push_back(static_cast<int32_t>(group.size() / 3));
    words.insert(words.end(), group.begin(), group.end());
  }
  return words;
}

Words runLengthX(int source, int positions) {
  const Words samples = nearest(source, positions);
  Words words;
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const int32_t sample = samples[i];
    const int32_t before = i == 0 ? -1 : samples[i - 1];
    const bool isNew = sample != before;
    const bool isNewChroma = isNew && (sample % 2 == 0 || sample > before + 1);
    const uint32_t flags = (isNew ? 2U : 0U) | (isNewChroma ? 1U : 0U);
    words.push_back(static_cast<int32_t>(static_cast<uint32_t>(sample) << 16 | flags));
  }
  return words;
}

namespace {

/// Output lines next to one another that have the same source line.
struct Run {
  int source;
  int first;
  int length;
};

std::vector<Run> runsOf(const Words &lines) {
  std::vector<Run> runs;
  for (std::size_t j = 0; j < lines.size(); ++j) {
    if (runs.empty() || runs.back().source != lines[j]) {
      runs.push_back({lines[j], static_cast<int>(j), 0});
    }
    ++runs.back().length;
  }
  return runs;
}

} // namespace

std::vector<LineInstruction> lineInstructions(int source, int positions) {
  using Kind = LineInstruction::Kind;
  const std::vector<Run> runs = runsOf(nearest(source, positions));
  std::vector<LineInstruction> list;
  const auto repeat = [&](const Run &run) {
    if (run.length > 1) {
      list.push_back({Kind::Repeat, run.length - 1});
    }
  };
  // Runs go in twos. Two are listed if at least one output line lies behind the first line of the second; how often the
  // second is repeated is said only if another run follows.
  for (std::size_t i = 1; i < runs.size() && runs[i].first < positions - 1; i += 2) {
    const Run &upper = runs[i - 1];
    const Run &lower = runs[i];
    repeat(upper);
    if (upper.source % 2 == 0 && lower.source == upper.source + 1) {
      list.push_back({Kind::Pair, upper.source});
    } else {
      list.push_back({Kind::Line, upper.source});
      list.push_back({Kind::Line, lower.source});
    }
    if (i + 1 < runs.size()) {
      repeat(lower);
    }
  }
  list.insert(list.end(), 3, {Kind::Line, runs.back().source});
  return list;
}

Words runLengthY(int source, int positions) {
  Words words;
  for (const LineInstruction &instruction : lineInstructions(source, positions)) {
    switch (instruction.kind) {
    case LineInstruction::Kind::Repeat:
      words.push_back(-instruction.number);
      break;
    case LineInstruction::Kind::Line:
      words.push_back(instruction.number);
      break;
    case LineInstruction::Kind::Pair:
      words.push_back(instruction.number | 0x10000);
      break;
    }
  }
  return words;
}

} // namespace reference
