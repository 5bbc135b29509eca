// Sequences of calls on two handles: set-ups, frames that match them and frames that do not, matrices. Every answer is
// compared with the rules, every accepted picture with the reference models or, if they are too slow for it or do not
// define it, with the portable level's; and planes end where the heap block ends. The first byte chooses the level of
// vector code.
#include "containment/expectation.h"
#include "fuzz/frame_memory.h"
#include "fuzz/records.h"
#include "fuzz/script.h"
#include "reference/direct_case.h"
#include "reference/result_code.h"
#include "support/levels.h"
#include "support/picture.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using fuzz::fail;
using fuzz::Script;

class Session {
public:
  explicit Session(Script script) : script_(script) { const reference::DitherRestorer firstDither; }
  Session(const Session &) = delete;
  Session &operator=(const Session &) = delete;
  ~Session() {
    for (Slot &slot : slots_) {
      zqCCUninit(slot.handle);
    }
  }

  void run() {
    for (int step = 0; step < 24 && !script_.done(); ++step) {
      const uint8_t op = script_.byte();
      Slot &slot = slots_[op >> 7];
      if (op % 13 == 12) {
        rare(op / 13, slot);
      } else {
        one(op % 13, slot);
      }
    }
  }

private:
  struct Slot {
    ConvertContext *handle = nullptr;
    ConvertParams setup{}; ///< what the last set-up that succeeded was given
  };

  void one(int op, Slot &slot) {
    switch (op) {
    case 0:
      restart(slot);
      break;
    case 1:
    case 2:
      prepare(slot, fuzz::readRecord(script_));
      break;
    case 3:
    case 4:
    case 5:
      convertAsPrepared(slot);
      break;
    case 6:
    case 7:
      convertChanged(slot);
      break;
    case 8:
      convert(slot, fuzz::readRecord(script_));
      break;
    case 9:
      selectMatrix(slot);
      break;
    case 10:
      selectCustom(slot);
      break;
    case 11:
      convert(slot, slot.setup, script_.byte() % 6);
      break;
    default:
      break;
    }
  }

  /// The two that have come in among the others.
  void rare(int op, Slot &slot) {
    if (op % 2 == 0) {
      misuse(slot);
    } else {
      goToLimit(slot);
    }
  }

  void restart(Slot &slot) {
    zqCCUninit(slot.handle);
    if (zqCCInit(&slot.handle) != CC_OK) {
      fail("zqCCInit fails", slot.setup);
    }
    slot.setup = {};
    colour_.matrix = reference::MatrixChoice{}.colour().matrix;
  }

  void prepare(Slot &slot, ConvertParams record) {
    uint32_t expected = reference::setupCode(record);
    if (support::isSemiPlanar(record.inType) && (record.inStride < 0 || record.inHeight < 0)) {
      expected = CC_ERR_ARGUMENT;
    }
    expected = slot.handle == nullptr ? CC_ERR_ARGUMENT : expected;
    const fuzz::SetUpMemory memory = fuzz::setUpMemory(record);
    if (expected == CC_OK && memory == fuzz::SetUpMemory::Unclear) {
      return;
    }
    if (expected == CC_OK && memory == fuzz::SetUpMemory::TooLittle) {
      expected = CC_ERR_NO_MEMORY;
    }
    const ConvertParams before = record;
    if (zqCCSetParameter(slot.handle, PARAM_CONVERT_DESC, &record) != expected) {
      fail("unexpected code of a set-up", record);
    }
    if (std::memcmp(&before, &record, sizeof before) != 0) {
      fail("set-up changes the record", before);
    }
    slot.setup = expected == CC_OK ? record : slot.setup;
    if (expected == CC_ERR_NO_MEMORY) {
      slot = {}; // the handle has gone with the memory
    }
  }

  /// A record at a limit, or the one of the set-up moved there; converted with or without a set-up of its own.
  void goToLimit(Slot &slot) {
    const uint8_t choice = script_.byte();
    ConvertParams record = choice % 2 == 0 ? fuzz::readRecord(script_) : slot.setup;
    for (int moves = choice / 4 % 3; moves >= 0; --moves) {
      fuzz::moveToLimit(script_, record);
    }
    if (choice / 2 % 2 == 0) {
      prepare(slot, record);
    }
    convert(slot, record);
  }

  void convertAsPrepared(Slot &slot) {
    ConvertParams record = slot.setup;
    fuzz::readStrides(script_, record);
    convert(slot, record);
  }

  void convertChanged(Slot &slot) {
    ConvertParams record = slot.setup;
    fuzz::changeRecord(script_, record);
    convert(slot, record);
  }

  /// How much is known about a frame's answer beforehand.
  struct Forecast {
    uint32_t code = CC_OK;
    bool certain = true;
  };
  /// Without resizing the input's size is that of the output fields.
  static bool hasNegativeSize(const ConvertParams &p) {
    const bool output = p.outWidth < 0 || p.outHeight < 0;
    return output || (p.isResize != 0 && (p.inWidth < 0 || p.inHeight < 0));
  }

  static Forecast forecast(const Slot &slot, const ConvertParams &p) {
    if (slot.handle == nullptr) {
      return {CC_ERR_ARGUMENT, true};
    }
    const uint32_t code = reference::resultCode(slot.setup, p);
    const bool empty = p.outWidth == 0 || p.outHeight == 0;
    if (!empty && !hasNegativeSize(p) && fuzz::exceedsSplitPlanes(slot.setup, p)) {
      return {code == CC_OK ? CC_ERR_ARGUMENT : code, true};
    }
    return {code, !fuzz::isSemiPlanarConversion(p)};
  }

  /// Planes are given to the rules as being there; nothing is read through them.
  static void pretendPlanes(ConvertParams &p) {
    static uint8_t somewhere = 0;
    std::fill(std::begin(p.inBuf), std::end(p.inBuf), &somewhere);
    std::fill(std::begin(p.outBuf), std::end(p.outBuf), &somewhere);
  }

  static constexpr int kAllPlanes = -1;

  /// The planes of the input are 0, 1, 2, those of the output 3, 4, 5.
  static void takeAway(ConvertParams &p, int plane) {
    if (plane >= 3) {
      p.outBuf[plane - 3] = nullptr;
    } else if (plane >= 0) {
      p.inBuf[plane] = nullptr;
    }
  }

  void convert(Slot &slot, ConvertParams p, int missing = kAllPlanes) {
    pretendPlanes(p);
    takeAway(p, missing);
    const Forecast expected = forecast(slot, p);
    const bool negative = !expected.certain && hasNegativeSize(p);
    const bool mayRun = (expected.code == CC_OK || !expected.certain) && !negative;
    fuzz::FrameBytes bytes;
    if (mayRun) {
      bytes = fuzz::bytesOf(p);
      if (!fuzz::canBeTried(p, bytes)) {
        return;
      }
    }
    fuzz::FrameMemory memory(bytes, 7);
    memory.attach(p);
    takeAway(p, missing);
    const ConvertParams before = p;
    fuzz::announce(p);
    const uint32_t code = zqCCProcess(slot.handle, &p);
    if (expected.certain && code != expected.code) {
      fail("unexpected code of a frame", before);
    }
    checkRecord(before, p, code);
    if (code != CC_OK || negative) {
      if (!memory.untouched()) {
        fail("a refused frame writes", before);
      }
      return;
    }
    comparePictures(slot, memory, before);
  }

  static void checkRecord(ConvertParams before, const ConvertParams &after, uint32_t code) {
    const bool exchanges = (before.inType == 12 || before.inType == 13) && before.inType != before.outType;
    if (exchanges && code == CC_OK) {
      std::swap(before.inBuf[1], before.inBuf[2]);
    }
    if (std::memcmp(&before, &after, sizeof before) != 0) {
      fail("the record is not what it should be afterwards", after);
    }
  }

  void comparePictures(const Slot &slot, fuzz::FrameMemory &memory, ConvertParams p) {
    const bool sameSize = p.isResize != 0 || (p.inWidth == p.outWidth && p.inHeight == p.outHeight);
    const bool empty = p.outWidth == 0 || p.outHeight == 0;
    memory.attach(p, true);
    if (!sameSize || empty || !fuzz::isComparedInTime(p) || !fuzz::linesAreApart(p) || fuzz::inputLinesOverlap(p)) {
      compareWithPortable(slot, memory, p);
      return;
    }
    containment::convertByReference(p, colour_);
    if (!memory.agrees()) {
      fail("a picture differs from the reference", p);
    }
  }

  static void compareWithPortable(const Slot &slot, const fuzz::FrameMemory &memory, ConvertParams p) {
    const support::LevelsForced portable(zqcc::LEVEL_PORTABLE);
    if (zqCCProcess(slot.handle, &p) != CC_OK) {
      fail("the portable level refuses a picture", p);
    }
    if (!memory.agrees()) {
      fail("a picture differs from the portable level's", p);
    }
  }

  void selectMatrix(Slot &slot) {
    const uint8_t index = script_.byte() % 6;
    const uint32_t expected = slot.handle == nullptr || index > 3 ? CC_ERR_ARGUMENT : CC_OK;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface takes the index in the pointer's place
    void *value = reinterpret_cast<void *>(std::uintptr_t{index});
    if (zqCCSetParameter(slot.handle, PARAM_COLOR_MATRIX, value) != expected) {
      fail("unexpected code of a matrix", slot.setup);
    }
    if (expected == CC_OK) {
      // The custom entry and the red and blue dither words are the same storage.
      colour_.matrix = index == 3 ? colour_.redBlueDither : reference::MatrixChoice::entryOf(index).colour().matrix;
    }
  }

  void selectCustom(Slot &slot) {
    std::array<double, 4> values{};
    for (double &value : values) {
      value = script_.real();
    }
    const auto choice = reference::MatrixChoice::customOf(values);
    const uint32_t code = choice.select(slot.handle);
    if (code != (slot.handle == nullptr ? CC_ERR_ARGUMENT : CC_OK)) {
      fail("unexpected code of a custom matrix", slot.setup);
    }
    if (code == CC_OK) {
      colour_ = choice.colour();
    }
  }

  void misuse(Slot &slot) {
    const uint32_t id = script_.word();
    const bool known = id >= PARAM_CONVERT_DESC && id <= PARAM_CUSTOM_MATRIX;
    if (slot.handle != nullptr && !known && zqCCSetParameter(slot.handle, id, nullptr) != CC_ERR_PARAM_ID) {
      fail("an unknown identifier is taken", slot.setup);
    }
    if (zqCCSetParameter(slot.handle, PARAM_CONVERT_DESC, nullptr) != CC_ERR_ARGUMENT ||
        zqCCSetParameter(slot.handle, PARAM_CUSTOM_MATRIX, nullptr) != CC_ERR_ARGUMENT ||
        zqCCProcess(slot.handle, nullptr) != CC_ERR_ARGUMENT || zqCCProcess(nullptr, &slot.setup) != CC_ERR_ARGUMENT ||
        zqCCInit(nullptr) != CC_ERR_ARGUMENT || zqCCUninit(nullptr) != CC_ERR_ARGUMENT) {
      fail("a null pointer is taken", slot.setup);
    }
  }

  Script script_;
  std::array<Slot, 2> slots_;
  reference::Colour colour_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *bytes, size_t count) {
  Script script(bytes, count);
  const support::LevelsForced level(fuzz::readLevel(script));
  Session(script).run();
  return 0;
}
