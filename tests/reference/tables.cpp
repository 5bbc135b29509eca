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

int lineOf(int j, int32_t step) {
  return static_cast<int>((static_cast<int64_t>(j) * step) >> 10);
}

} // namespace

int32_t stepOf(int source, int positions) {
  return static_cast<int32_t>(ratio(source, positions) * 1024.0);
}

Words nearest(int source, int positions) {
  Words words;
  const int32_t step = stepOf(source, positions);
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
  const int32_t step = stepOf(source, positions);
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
  Words words;
  const int32_t step = stepOf(source, positions);
  int previous = -1;
  for (int i = 0; i < positions; ++i) {
    const int s = lineOf(i, step);
    int flags = 0;
    if (s != previous) {
      flags = s - previous > 1 || s % 2 == 0 ? 3 : 2;
    }
    words.push_back(s * 65536 + flags);
    previous = s;
  }
  return words;
}

Words runLengthY(int source, int positions) {
  Words words;
  const int32_t step = stepOf(source, positions);
  const int n = positions;
  int j = 0;
  while (true) {
    const int s = lineOf(j, step);
    int t = lineOf(j + 1, step);
    j += 2;
    int lead = 0;
    while (t == s) {
      t = lineOf(j, step);
      ++lead;
      ++j;
    }
    if (j >= n) {
      break;
    }
    if (lead > 0) {
      words.push_back(-lead);
    }
    if (t - s < 2 && s % 2 == 0) {
      words.push_back(s + 0x10000);
    } else {
      words.insert(words.end(), {s, t});
    }
    int repeats = 0;
    while (j < n && lineOf(j, step) == t) {
      ++j;
      ++repeats;
    }
    if (j >= n) {
      break;
    }
    if (repeats > 0) {
      words.push_back(-repeats);
    }
  }
  words.insert(words.end(), 3, lineOf(n - 1, step));
  return words;
}

} // namespace reference
