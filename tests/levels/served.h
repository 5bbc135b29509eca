// Which level of vector code serves a conversion: found out by converting a picture, with spies in every stage.
#pragma once

#include "base/levels.h"
#include "containment/cells.h"
#include "levels/spies.h"

#include <string>
#include <vector>

namespace levels {

struct Served {
  std::vector<Calls> calls; ///< of stages, while one picture was converted
  bool whole = false;       ///< stages made every pixel; portable code made none

  /// The levels whose stages were called.
  [[nodiscard]] zqcc::LevelSet levels() const;
};

/// The modes that stages make every pixel of: at the picture's own size to RGB, upright and turned, turns that keep the
/// type, and packed to planar 4:2:0; resized those whose columns are planned for it. Pictures that are resized to their
/// own size are resized all the same.
std::vector<containment::Mode> servedConversions();

/// A picture of whole 16 x 16 blocks and whole vectors of every level, so that no edge is left to portable code, and
/// one whose right and bottom edges cut blocks.
inline constexpr containment::Sizes kWholeBlocks{128, 64, 128, 64};
inline constexpr containment::Sizes kCutBlocks{142, 78, 142, 78};

/// Reductions that have stages of their own.
inline constexpr containment::Sizes kQuarter{512, 128, 128, 32};
inline constexpr containment::Sizes kEighth{1024, 128, 128, 16};

/// A picture that does not stay in the cache while it is turned.
inline constexpr containment::Sizes kLarge{448, 256, 448, 256};

/// Boxes of two, six, and every second of ten columns.
inline constexpr containment::Sizes kHalf{256, 64, 128, 32};
inline constexpr containment::Sizes kSixth{768, 96, 128, 16};
inline constexpr containment::Sizes kTenth{1280, 80, 128, 8};

/// What serves a conversion with the levels that may run now.
Served servedBy(const containment::Mode &mode, const containment::Sizes &sizes = kWholeBlocks);

/// "3 30 left": the types and the turn.
std::string nameOf(const containment::Mode &mode);

} // namespace levels
