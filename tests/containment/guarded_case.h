// One conversion in memory that ends where the planes end: made by the library on buffers against unmapped pages,
// first with the pages behind the planes, then with the pages in front, and compared with the reference model.
#pragma once

#include "containment/cells.h"
#include "containment/plane_report.h"
#include "reference/direct_case.h"
#include "support/guarded_pages.h"
#include "support/picture.h"
#include "zqColorConversion.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace containment {

struct GuardedCase {
  Mode mode;
  Sizes sizes{};
  int inPadding = 0; ///< bytes that a line of the first plane is longer than the tight one; -2 cuts a packed line of
                     ///< odd width behind its lone pixel
  int outPadding = 0;
  support::Fill fill = support::Fill::Noise;
  uint32_t seed = 1;
  reference::MatrixChoice matrix{};

  [[nodiscard]] std::string describe() const;
};

struct Outcome {
  uint32_t code = CC_OK; ///< what the rules say the answer must be
  std::string report;    ///< empty when the library did exactly that, twice; else what went wrong
};

/// What a self-test does behind the library's back, after each conversion, to one of the planes.
using Sabotage =
    std::function<void(const std::vector<PlaneInMemory> &inputs, const std::vector<PlaneInMemory> &outputs)>;

/// The guarded pages of three input and three output planes, used again for every case.
class Bench {
public:
  explicit Bench(std::size_t bytesPerPlane);
  Outcome run(const GuardedCase &c);
  void sabotage(Sabotage how) { sabotage_ = std::move(how); }

private:
  using Bytes = std::vector<uint8_t>;
  void placeInputs(const GuardedCase &c, ConvertParams &params, support::Against against);
  void makeExpected(const GuardedCase &c, const ConvertParams &params, uint32_t code);
  /// The model's picture on the planes given.
  static std::array<Bytes, 3> modelled(ConvertParams p, const GuardedCase &c, uint32_t code,
                                       std::array<Bytes, 3> planes);
  void placeOutputs(ConvertParams &params, support::Against against);
  std::string convertAndCompare(const GuardedCase &c, ConvertParams &params, uint32_t code);
  [[nodiscard]] std::string faultReport(const support::Fault &fault) const;

  std::array<std::unique_ptr<support::GuardedPages>, 3> in_;
  std::array<std::unique_ptr<support::GuardedPages>, 3> out_;
  std::vector<PlaneInMemory> inputs_;
  std::vector<PlaneInMemory> outputs_;
  std::array<Bytes, 3> expected_;
  std::array<Bytes, 3> ground_;
  Sabotage sabotage_;
};

} // namespace containment
