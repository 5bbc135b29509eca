// Planes of many GiB: address space with hardly any memory behind it. There is a room for every plane of a frame and of
// the picture expected. Between the rooms lie gaps of 4 GiB that nobody may touch.
#pragma once

#include <cstddef>
#include <cstdint>

namespace fuzz {

/// Rooms of the input's planes are full of noise and can only be read; what lies 2^31 or 2^32 bytes away is always
/// something else. The others are zero where nothing was written.
enum class Room { Input = 0, Output = 3, Expected = 6 };
inline constexpr int64_t kRoomBytes = int64_t{1} << 35;
/// Smaller planes are heap blocks.
inline constexpr int64_t kLargestBlock = int64_t{1} << 20;

/// Lines of a plane.
struct Lines {
  int64_t bytes = 0; ///< of a line
  int64_t count = 0;
  int64_t stride = 0;
};

/// The bytes of one plane: a heap block of exactly that size, or, if there are many, the end of a room (of every second
/// one the beginning), so that the byte beyond cannot be touched.
class PlaneMemory {
public:
  PlaneMemory() = default;
  /// At most kRoomBytes; there is one for each room and plane at a time.
  PlaneMemory(Room room, int plane, int64_t bytes);
  PlaneMemory(PlaneMemory &&other) noexcept;
  PlaneMemory &operator=(PlaneMemory &&other) noexcept;
  PlaneMemory(const PlaneMemory &) = delete;
  PlaneMemory &operator=(const PlaneMemory &) = delete;
  ~PlaneMemory();

  [[nodiscard]] uint8_t *data() const { return at_; }
  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(bytes_); }
  [[nodiscard]] bool isBlock() const { return bytes_ <= kLargestBlock; }
  /// Blocks only: what they hold at first.
  void fill(uint8_t value);
  void fillWithNoise(uint32_t seed);

  /// Whether both hold the same bytes. Of rooms the lines, which begin at `from`, are compared, and some bytes around
  /// them.
  [[nodiscard]] bool equals(const PlaneMemory &other, int64_t from, const Lines &lines) const;
  /// Whether all bytes have a value; of rooms, whether those around the lines are zero.
  [[nodiscard]] bool holdsOnly(uint8_t value, int64_t from, const Lines &lines) const;

private:
  uint8_t *at_ = nullptr;
  int64_t bytes_ = 0;
};

/// Pages that lie under the lines: an upper bound of what converting them touches.
int64_t pagesOf(const Lines &lines);

} // namespace fuzz
