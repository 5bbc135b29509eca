#include "picture/guarded_case.h"

#include "picture/levels.h"

#include <algorithm>
#include <cstring>

namespace picture {

namespace {

using reference::Lie;
using reference::OwnPicture;
using support::Against;
using support::GuardedPages;

constexpr std::size_t kRoomBytes = std::size_t{1} << 20;

/// Nothing before or behind the planes: guards are there.
Lie anyLie(Random &random) {
  Lie lie;
  lie.padding = between(random, 0, 1) * between(random, 1, 70);
  lie.isBottomUp = between(random, 0, 2) == 0;
  return lie;
}

using Room = std::unique_ptr<GuardedPages>[3];

/// A view of the picture's planes in pages.
ZqpPicture viewIn(OwnPicture &picture, const Room &room) {
  ZqpPicture view = picture.view();
  for (std::size_t p = 0; p < picture.memory().size(); ++p) {
    view.planes[p].data = room[p]->data();
  }
  return view;
}

void placeIn(const Room &room, const OwnPicture &picture, Against against, std::size_t distance) {
  for (std::size_t p = 0; p < picture.memory().size(); ++p) {
    const std::vector<uint8_t> &bytes = picture.memory()[p];
    room[p]->place(bytes.size(), against, distance);
    std::memcpy(room[p]->write(), bytes.data(), bytes.size());
  }
}

std::string nameOf(const support::Fault &fault, const Room &in, const Room &out) {
  const char *kinds[] = {"reads", "writes", "touches"};
  std::string text = kinds[static_cast<int>(fault.kind)];
  for (const Room *room : {&in, &out}) {
    for (const std::unique_ptr<GuardedPages> &pages : *room) {
      if (pages->covers(fault.address)) {
        const auto place = static_cast<std::ptrdiff_t>(fault.address - reinterpret_cast<std::uintptr_t>(pages->data()));
        return text + (room == &in ? " input" : " output") + " at byte " + std::to_string(place) + " of a plane of " +
               std::to_string(pages->size());
      }
    }
  }
  return text + " memory that is no plane's";
}

} // namespace

GuardedRoom::GuardedRoom() {
  for (int p = 0; p < 3; ++p) {
    in[p] = std::make_unique<GuardedPages>(kRoomBytes, GuardedPages::Access::ReadOnly);
    out[p] = std::make_unique<GuardedPages>(kRoomBytes, GuardedPages::Access::ReadWrite);
  }
}

GuardedCase::GuardedCase(GuardedRoom &room, const ZqpConversion &c, Random &random)
    : room_(room), conversion_(c), converter_(makeConverter(c)),
      in_(c.inFormat, c.inWidth, c.inHeight, anyLie(random), static_cast<uint32_t>(random())),
      blank_(c.outFormat, c.outWidth, c.outHeight, anyLie(random), static_cast<uint32_t>(random())), expected_(blank_),
      distance_(static_cast<std::size_t>(between(random, 0, 2) == 0 ? between(random, 1, 63) : 0)),
      bandLines_(between(random, 0, 1) == 0 ? 0 : between(random, 1, 9)) {}

void GuardedCase::place(Against against) {
  placeIn(room_.in, in_, against, distance_);
  placeIn(room_.out, blank_, against, distance_);
}

int32_t GuardedCase::convert(const ZqpPicture &in, const ZqpPicture &out) const {
  if (bandLines_ == 0) {
    return zqpConvert(converter_.get(), &in, &out);
  }
  int32_t error = ZQP_OK;
  for (int line = 0; line < out.height && error == ZQP_OK; line += bandLines_) {
    error = zqpConvertLines(converter_.get(), &in, &out, line, std::min(bandLines_, out.height - line));
  }
  return error;
}

std::string GuardedCase::damage() const {
  for (std::size_t p = 0; p < expected_.memory().size(); ++p) {
    if (const auto place = room_.out[p]->damage()) {
      return "writes byte " + std::to_string(*place) + " of output plane " + std::to_string(p);
    }
    const std::vector<uint8_t> &wanted = expected_.memory()[p];
    if (std::memcmp(room_.out[p]->data(), wanted.data(), wanted.size()) != 0) {
      return "makes another picture than in ordinary memory, plane " + std::to_string(p);
    }
  }
  return {};
}

std::string GuardedCase::runAtLevel(Against against) {
  place(against);
  const ZqpPicture in = viewIn(in_, room_.in);
  const ZqpPicture out = viewIn(blank_, room_.out);
  int32_t error = ZQP_OK;
  if (const auto fault = support::catchFault([&] { error = convert(in, out); })) {
    return nameOf(*fault, room_.in, room_.out);
  }
  return error == ZQP_OK ? damage() : zqpErrorText(error);
}

std::string GuardedCase::run() {
  if (!converter_) {
    return "is refused";
  }
  {
    const AtLevel portable(zqcc::setOf(zqcc::LEVEL_PORTABLE));
    const ZqpPicture in = in_.view();
    const ZqpPicture out = expected_.view();
    if (const int32_t error = zqpConvert(converter_.get(), &in, &out); error != ZQP_OK) {
      return zqpErrorText(error);
    }
  }
  for (const zqcc::LevelSet levels : levelsHere()) {
    const AtLevel level(levels);
    for (const Against against : {Against::End, Against::Start}) {
      const std::string report = runAtLevel(against);
      if (!report.empty()) {
        return describe(conversion_) + " at levels " + std::to_string(levels) +
               (against == Against::End ? ", pages behind: " : ", pages in front: ") + report;
      }
    }
  }
  return {};
}

} // namespace picture
