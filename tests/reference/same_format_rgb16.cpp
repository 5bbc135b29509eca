// 16-bit RGB: words of 5, 6 and 5 bits, resampled a channel at a time.
#include "reference/same_format_detail.h"

#include <array>

namespace reference::detail {

namespace {

struct Channel {
  int shift;
  int mask;
};
constexpr std::array<Channel, 3> kChannels{{{11, 31}, {5, 63}, {0, 31}}};

int wordAt(const uint8_t *bytes) {
  return bytes[0] | (bytes[1] << 8);
}

void store(uint8_t *to, int word) {
  to[0] = static_cast<uint8_t>(word & 0xFF);
  to[1] = static_cast<uint8_t>((word >> 8) & 0xFF);
}

template <typename Value>
int pack(const Value &value) {
  int word = 0;
  for (const Channel &channel : kChannels) {
    word |= (value(channel) & channel.mask) << channel.shift;
  }
  return word;
}

int channelSample(const Source &in, const Channel &channel, const Tap &x, const Tap &y) {
  const auto at = [&](int column, int line) {
    return (wordAt(in.sample(column, line)) >> channel.shift) & channel.mask;
  };
  return bilinear(at, x, y);
}

void copyOrTurn(const ConvertParams &p, const Target &out) {
  for (int y = 0; y < p.outHeight; ++y) {
    for (int x = 0; x < p.outWidth; ++x) {
      const uint8_t *from = p.inBuf[0] + static_cast<std::ptrdiff_t>(y) * p.inStride + std::ptrdiff_t{2} * x;
      store(quarterTurn(p) ? placeTurned(out, p.rotation, x, y, p.outWidth, p.outHeight) : out.sample(x, y),
            wordAt(from));
    }
  }
}

void resizePlain(const ConvertParams &p, const Source &in, const Target &out) {
  const auto xs = blockPositions(p.inWidth, p.outWidth);
  const auto ys = blockPositions(p.inHeight, p.outHeight);
  for (int y = 0; y < p.outHeight; ++y) {
    Tap line = ys[slot(y)];
    if (quarterTurn(p) && y % 2 != 0) {
      // Turned lines are made in pairs, and the second keeps the first one's weights.
      line.next = ys[slot(y - 1)].next;
      line.self = ys[slot(y - 1)].self;
    }
    for (int x = 0; x < p.outWidth; ++x) {
      const int word = pack([&](const Channel &channel) { return channelSample(in, channel, xs[slot(x)], line); });
      store(quarterTurn(p) ? placeTurned(out, p.rotation, x, y, p.outWidth, p.outHeight) : out.sample(x, y), word);
    }
  }
}

/// Pitches count whole pixels here: an odd stride loses its last byte.
void resizeFiltered(const ConvertParams &p, Source in, Target out) {
  in.pitch = (p.inStride >> 1) * 2;
  out.pitch = (p.outStride >> 1) * 2;
  const auto xs = filteredPositions(p.inWidth, p.outWidth, p.antiAlias, Axis::Horizontal);
  const auto ys = filteredPositions(p.inHeight, p.outHeight, p.antiAlias, Axis::Vertical);
  for (int y = 0; y < p.outHeight; ++y) {
    const FiveTaps &lines = ys[slot(y)];
    for (int x = 0; x < p.outWidth; ++x) {
      const FiveTaps &columns = xs[slot(x)];
      const int word = pack([&](const Channel &channel) {
        int sum = 0;
        for (std::size_t k = 0; k < 5; ++k) {
          // Only the line number is the tap's own; the vertical weights are the first tap's.
          sum += channelSample(in, channel, columns[k], {lines[k].at, lines[0].next, lines[0].self});
        }
        return sum / 5;
      });
      store(out.sample(x, y), word);
    }
  }
}

} // namespace

void convertRgb16(const ConvertParams &p) {
  const Source in{p.inBuf[0], p.inStride, p.inWidth, p.inHeight, 2};
  const Target out{p.outBuf[0], p.outStride, 2};
  if (p.isResize == 0) {
    copyOrTurn(p, out);
  } else if (p.antiAlias == 0) {
    resizePlain(p, in, out);
  } else {
    resizeFiltered(p, in, out);
  }
}

} // namespace reference::detail
