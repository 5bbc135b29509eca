// The one way the library gets and releases memory.
#pragma once

#include <cstddef>

namespace zqcc {

inline constexpr std::size_t kAlignment = 64;

/// A block of `size` bytes whose address is a multiple of `alignment` (a power of two up to 128), or of nothing when
/// `alignment` is 0. Null when the runtime has no memory or the size cannot be expressed. Release with aligned_free64.
void *aligned_alloc64(std::size_t size, std::size_t alignment = kAlignment);

/// Releases a block of aligned_alloc64; null is ignored.
void aligned_free64(void *block);

} // namespace zqcc
