#include "jobs.h"

namespace bench {
namespace {

constexpr int32_t I420 = COLOR_YUV420_PLANAR;
constexpr int32_t I422 = COLOR_YUV422_PLANAR;
constexpr int32_t I444 = COLOR_YUV444_PLANAR;
constexpr int32_t I440 = COLOR_YUV440_PLANAR;
constexpr int32_t I411 = COLOR_YUV411_PLANAR;
constexpr int32_t QUARTER = COLOR_YUV_QUARTER_HEIGHT;
constexpr int32_t PLANAR_RGB = COLOR_RGB888_PLANAR;
constexpr int32_t NV12 = COLOR_YUV420_PACK;
constexpr int32_t NV21 = COLOR_YUV420_PACK2;
constexpr int32_t YUYV = COLOR_YUV422_YUYV;
constexpr int32_t UYVY = COLOR_YUV422_UYVY;
constexpr int32_t YVYU = COLOR_YUV422_YVYU;
constexpr int32_t VYUY = COLOR_YUV422_VYUY;
constexpr int32_t YUYV2 = COLOR_YUV422_YUYV2;
constexpr int32_t RGB565 = COLOR_RGB565;
constexpr int32_t RGB24 = COLOR_RGB24;

constexpr uint32_t UPRIGHT = ROTATION_NONE;
constexpr uint32_t LEFT = ROTATION_90_LEFT;
constexpr uint32_t RIGHT = ROTATION_90_RIGHT;
constexpr uint32_t HALF = ROTATION_180;
constexpr uint32_t FLIP = ROTATION_FLIP_V;

constexpr Sampling NONE = Sampling::None;
constexpr Sampling NEAREST = Sampling::Nearest;
constexpr Sampling BILINEAR = Sampling::Bilinear;
constexpr Sampling FILTERED = Sampling::Filtered;
constexpr Sampling BOX = Sampling::Box;

constexpr Scale SAME = {1, 1};
// 5/4 and 3/5 belong to none of the ratios that have routines of their own.
constexpr Scale UP = {5, 4};
constexpr Scale DOWN = {3, 5};

// Jobs at sizes of their own.
constexpr Size kOnlyHd[] = {kHd};
constexpr Size kOnlyFullHd[] = {kFullHd};
constexpr Size kSmallAndFullHd[] = {kSmall, kFullHd};
constexpr Size kThreeSizes[] = {kSmall, kHd, kFullHd};
constexpr Size kOnlyTiny[] = {kTinySize};

constexpr Job at(Job job, std::span<const Size> sizes) {
  job.sizes = sizes;
  return job;
}
constexpr Job to(Job job, const Size &output, std::span<const Size> sizes) {
  job.fixedOutput = output;
  return at(job, sizes);
}

constexpr Group kGroups[] = {
    {"planar", "planar 4:2:0, 4:2:2, semi-planar to RGB565", 1.5, 2.5},
    {"packed", "packed 4:2:2 to RGB565", 1.3, 2},
    {"layouts", "4:4:4 and the other layouts to RGB565", 1, 1.5},
    {"planar_rgb", "planar RGB to RGB565", 1.8, 3},
    {"from_rgb24", "RGB24 to RGB565", 1.2, 2},
    {"planar_to_rgb24", "to RGB24, planar and semi-planar", 1.2, 2},
    {"packed_to_rgb24", "to RGB24, packed", 1, 2},
    {"quarter_turn", "turned left and right", 1.7, 3},
    {"half_turn", "half turn", 1.6, 3},
    {"flip", "flip", 1.5, 3},
    {"call", "16x16 call", 1, 3},
    {"bilinear", "4:2:0 bilinear to RGB565", 1.6, 3},
    {"bilinear_left", "4:2:0 bilinear to RGB565, turned left", 2, 4},
    {"half", "4:2:0 to RGB565, half the size", 1.5, 3},
    {"three_quarters", "4:2:0 to RGB565, three quarters", 1.5, 3},
    {"three_halves", "4:2:0 to RGB565, three halves", 1.5, 3},
    {"double", "4:2:0 to RGB565, double the size", 1.5, 3},
    {"resized_layouts", "4:4:4, planar RGB, RGB24 and packed 4:2:2, resized to RGB565", 1.3, 2},
    {"filtered", "4:2:0 to RGB565 by five taps", 1.1, 2},
    {"box", "4:2:0 to RGB565 by the mean of a box", 2, 4},
    {"resized_rgb24", "resized to RGB24", 1, 2},
    {"more_resizing", "resized to RGB565, all else"},
    {"same_i420_bilinear", "planar 4:2:0 kept, bilinear", 1.3, 3},
    {"same_i420_turned", "planar 4:2:0 kept, turned", 1, 1.5},
    {"same_nv12_turned", "semi-planar kept, turned", 1, 1.5},
    {"same_rgb565_bilinear", "RGB565 kept, bilinear", 2, 4},
    {"same_rgb565_turned", "RGB565 kept, turned", 1.5, 2},
    {"same_rgb565_both", "RGB565 kept, bilinear and turned left", 2, 4},
    {"same_yuyv_bilinear", "packed 4:2:2 kept, bilinear", 2, 4},
    {"same_yuyv_turned", "packed 4:2:2 kept, turned", 3, 5},
    {"same_filtered", "planar 4:2:0, packed 4:2:2, RGB565 kept, by five taps", 1, 2},
    {"yuyv_to_i420", "packed 4:2:2 to planar 4:2:0", 1, 1.3},
    {"nv12_to_i420", "semi-planar to planar 4:2:0", 1, 1.3},
    {"copies", "copies", 0.95, 1},
    {"more_same", "type kept or YUV to YUV, all else"},
    {"resizing_call", "16x16 call that resizes"},
    {"setup", "set-up at 1920x1080"},
};

constexpr Job kJobs[] = {
    // Same size, upright, to RGB565.
    {"planar", "i420", I420, RGB565},
    {"planar", "i422", I422, RGB565},
    {"planar", "nv12", NV12, RGB565},
    {"planar", "nv21", NV21, RGB565},
    {"packed", "yuyv", YUYV, RGB565},
    {"packed", "uyvy", UYVY, RGB565},
    {"packed", "yvyu", YVYU, RGB565},
    {"packed", "vyuy", VYUY, RGB565},
    {"packed", "yuyv2", YUYV2, RGB565},
    {"layouts", "i444", I444, RGB565},
    {"layouts", "i440", I440, RGB565},
    {"layouts", "i411", I411, RGB565},
    {"layouts", "quarter_height", QUARTER, RGB565},
    {"planar_rgb", "planar_rgb", PLANAR_RGB, RGB565},
    {"from_rgb24", "rgb24", RGB24, RGB565},

    // Same size, to RGB24. Planar input other than 4:2:0 is read with half pitches whatever its planes hold.
    {"planar_to_rgb24", "i420", I420, RGB24},
    {"planar_to_rgb24", "i422", I422, RGB24},
    {"planar_to_rgb24", "nv12", NV12, RGB24},
    {"planar_to_rgb24", "i420_flip", I420, RGB24, SAME, NONE, FLIP},
    {"packed_to_rgb24", "yuyv", YUYV, RGB24},
    {"packed_to_rgb24", "uyvy", UYVY, RGB24},
    {"packed_to_rgb24", "yuyv_left", YUYV, RGB24, SAME, NONE, LEFT},
    {"packed_to_rgb24", "yuyv_right", YUYV, RGB24, SAME, NONE, RIGHT},
    {"packed_to_rgb24", "yuyv_half", YUYV, RGB24, SAME, NONE, HALF},

    // Turned, to RGB565.
    {"quarter_turn", "i420_left", I420, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "i420_right", I420, RGB565, SAME, NONE, RIGHT},
    {"quarter_turn", "i422_left", I422, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "i422_right", I422, RGB565, SAME, NONE, RIGHT},
    {"quarter_turn", "nv12_left", NV12, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "nv12_right", NV12, RGB565, SAME, NONE, RIGHT},
    {"quarter_turn", "yuyv_left", YUYV, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "yuyv_right", YUYV, RGB565, SAME, NONE, RIGHT},
    {"quarter_turn", "i444_left", I444, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "i440_left", I440, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "i411_left", I411, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "quarter_height_left", QUARTER, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "planar_rgb_left", PLANAR_RGB, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "rgb24_left", RGB24, RGB565, SAME, NONE, LEFT},
    {"quarter_turn", "rgb24_right", RGB24, RGB565, SAME, NONE, RIGHT},
    {"half_turn", "i420_half", I420, RGB565, SAME, NONE, HALF},
    {"half_turn", "i422_half", I422, RGB565, SAME, NONE, HALF},
    {"half_turn", "nv12_half", NV12, RGB565, SAME, NONE, HALF},
    {"half_turn", "yuyv_half", YUYV, RGB565, SAME, NONE, HALF},
    {"half_turn", "i444_half", I444, RGB565, SAME, NONE, HALF},

    // Flipped, to RGB565. Flipped 4:2:2 takes its chroma from the upper half of the planes.
    {"flip", "i420_flip", I420, RGB565, SAME, NONE, FLIP},
    {"flip", "i422_flip", I422, RGB565, SAME, NONE, FLIP, 0, kAnyPicture},
    {"flip", "nv12_flip", NV12, RGB565, SAME, NONE, FLIP},
    {"flip", "i444_flip", I444, RGB565, SAME, NONE, FLIP},
    {"flip", "planar_rgb_flip", PLANAR_RGB, RGB565, SAME, NONE, FLIP},

    // Planar 4:2:0 resized to RGB565: any ratio, then those that have routines of their own.
    to({"bilinear", "i420_to_854x480", I420, RGB565, SAME, BILINEAR}, {854, 480}, kOnlyHd),
    to({"bilinear", "i420_to_800x480", I420, RGB565, SAME, BILINEAR}, {800, 480}, kSmallAndFullHd),
    to({"bilinear_left", "i420_to_800x480", I420, RGB565, SAME, BILINEAR, LEFT}, {800, 480}, kOnlyHd),
    {"half", "i420", I420, RGB565, {1, 2}, NEAREST},
    {"three_quarters", "i420", I420, RGB565, {3, 4}, BILINEAR},
    {"three_halves", "i420", I420, RGB565, {3, 2}, BILINEAR},
    {"double", "i420", I420, RGB565, {2, 1}, BILINEAR},

    // The other layouts resized to RGB565.
    {"resized_layouts", "i444_5:4", I444, RGB565, UP, BILINEAR},
    {"resized_layouts", "i444_3:5", I444, RGB565, DOWN, BILINEAR},
    {"resized_layouts", "planar_rgb_5:4", PLANAR_RGB, RGB565, UP, BILINEAR},
    {"resized_layouts", "planar_rgb_3:5", PLANAR_RGB, RGB565, DOWN, BILINEAR},
    {"resized_layouts", "rgb24_5:4", RGB24, RGB565, UP, BILINEAR},
    {"resized_layouts", "rgb24_3:5", RGB24, RGB565, DOWN, BILINEAR},
    {"resized_layouts", "yuyv_5:4", YUYV, RGB565, UP, NEAREST},
    {"resized_layouts", "yuyv_3:5", YUYV, RGB565, DOWN, NEAREST},

    // By five weighted taps, whose weights quality 2 spreads further, and by the mean of a box.
    to({"filtered", "i420_to_800x480", I420, RGB565, SAME, FILTERED, UPRIGHT, 1}, {800, 480}, kOnlyFullHd),
    to({"filtered", "i420_to_800x480_wide", I420, RGB565, SAME, FILTERED, UPRIGHT, 2}, {800, 480}, kOnlyFullHd),
    {"filtered", "i420_3:5", I420, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"filtered", "i420_3:5_wide", I420, RGB565, DOWN, FILTERED, UPRIGHT, 2},
    to({"box", "i420_to_320x180", I420, RGB565, SAME, BOX, UPRIGHT, 3}, {320, 180}, kOnlyFullHd),
    {"box", "i420_1:4", I420, RGB565, {1, 4}, BOX, UPRIGHT, 3},
    {"box", "i420_1:8", I420, RGB565, {1, 8}, BOX, UPRIGHT, 3},

    // Resized to RGB24.
    {"resized_rgb24", "i420_3:5", I420, RGB24, DOWN, NEAREST},
    // Enlarged RGB24 repeats lines in part only.
    {"resized_rgb24", "i420_5:4", I420, RGB24, UP, NEAREST, UPRIGHT, 0, kAnyPicture},
    {"resized_rgb24", "yuyv_3:5", YUYV, RGB24, DOWN, NEAREST},
    {"resized_rgb24", "yuyv_5:4", YUYV, RGB24, UP, NEAREST},

    // What else resizes to RGB565.
    {"more_resizing", "i420_5:4", I420, RGB565, UP, BILINEAR},
    {"more_resizing", "i420_3:5", I420, RGB565, DOWN, BILINEAR},
    {"more_resizing", "i420_5:4_left", I420, RGB565, UP, BILINEAR, LEFT},
    {"more_resizing", "i420_3:5_left", I420, RGB565, DOWN, BILINEAR, LEFT},
    {"more_resizing", "i420_3:5_half", I420, RGB565, DOWN, BILINEAR, HALF},
    {"more_resizing", "i420_1:4", I420, RGB565, {1, 4}, NEAREST},
    {"more_resizing", "i420_3:4_left", I420, RGB565, {3, 4}, BILINEAR, LEFT},
    {"more_resizing", "i420_2:1_left", I420, RGB565, {2, 1}, BILINEAR, LEFT},
    {"more_resizing", "i422_5:4", I422, RGB565, UP, BILINEAR},
    {"more_resizing", "i440_5:4", I440, RGB565, UP, BILINEAR},
    {"more_resizing", "i411_5:4", I411, RGB565, UP, BILINEAR},
    {"more_resizing", "quarter_height_5:4", QUARTER, RGB565, UP, BILINEAR},
    {"more_resizing", "nv12_5:4", NV12, RGB565, UP, BILINEAR},
    {"more_resizing", "i444_5:4_left", I444, RGB565, UP, BILINEAR, LEFT},
    {"more_resizing", "planar_rgb_5:4_left", PLANAR_RGB, RGB565, UP, BILINEAR, LEFT},
    {"more_resizing", "rgb24_5:4_left", RGB24, RGB565, UP, BILINEAR, LEFT},
    {"more_resizing", "yuyv_5:4_left", YUYV, RGB565, UP, NEAREST, LEFT},
    {"more_resizing", "i444_filtered_3:5", I444, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"more_resizing", "planar_rgb_filtered_3:5", PLANAR_RGB, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"more_resizing", "nv12_filtered_3:5", NV12, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"more_resizing", "i420_filtered_1:4_wide", I420, RGB565, {1, 4}, FILTERED, UPRIGHT, 2},
    {"more_resizing", "i444_box_1:4", I444, RGB565, {1, 4}, BOX, UPRIGHT, 3},

    // Same format, turned or resized or both.
    to({"same_i420_bilinear", "to_640x360", I420, I420, SAME, BILINEAR}, {640, 360}, kOnlyHd),
    to({"same_i420_bilinear", "to_854x480", I420, I420, SAME, BILINEAR}, {854, 480}, kOnlyHd),
    at({"same_i420_turned", "left", I420, I420, SAME, NONE, LEFT}, kThreeSizes),
    at({"same_i420_turned", "right", I420, I420, SAME, NONE, RIGHT}, kThreeSizes),
    at({"same_i420_turned", "half", I420, I420, SAME, NONE, HALF}, kThreeSizes),
    at({"same_nv12_turned", "left", NV12, NV12, SAME, NONE, LEFT}, kThreeSizes),
    at({"same_nv12_turned", "right", NV12, NV12, SAME, NONE, RIGHT}, kThreeSizes),
    to({"same_rgb565_bilinear", "to_800x480", RGB565, RGB565, SAME, BILINEAR}, {800, 480}, kOnlyHd),
    at({"same_rgb565_turned", "left", RGB565, RGB565, SAME, NONE, LEFT}, kThreeSizes),
    at({"same_rgb565_turned", "right", RGB565, RGB565, SAME, NONE, RIGHT}, kThreeSizes),
    to({"same_rgb565_both", "to_800x480_left", RGB565, RGB565, SAME, BILINEAR, LEFT}, {800, 480}, kOnlyHd),
    {"same_yuyv_bilinear", "yuyv_5:4", YUYV, YUYV, UP, BILINEAR},
    {"same_yuyv_bilinear", "uyvy_5:4", UYVY, UYVY, UP, BILINEAR},
    at({"same_yuyv_turned", "left", YUYV, YUYV, SAME, NONE, LEFT}, kOnlyHd),
    at({"same_yuyv_turned", "right", YUYV, YUYV, SAME, NONE, RIGHT}, kOnlyHd),
    {"same_filtered", "i420_3:5", I420, I420, DOWN, FILTERED, UPRIGHT, 1},
    {"same_filtered", "yuyv_3:5", YUYV, YUYV, DOWN, FILTERED, UPRIGHT, 1},
    {"same_filtered", "rgb565_3:5", RGB565, RGB565, DOWN, FILTERED, UPRIGHT, 1},

    // YUV to YUV. Every second chroma line is taken, from 4:2:0 too.
    at({"yuyv_to_i420", "yuyv", YUYV, I420}, kThreeSizes),
    at({"nv12_to_i420", "nv12", NV12, I420, SAME, NONE, UPRIGHT, 0, kAnyPicture}, kThreeSizes),
    at({"copies", "i420", I420, I420}, kThreeSizes),
    at({"copies", "nv12", NV12, NV12}, kThreeSizes),
    at({"copies", "yuyv", YUYV, YUYV}, kThreeSizes),
    at({"copies", "rgb565", RGB565, RGB565}, kThreeSizes),

    {"more_same", "i422_to_i420", I422, I420},
    {"more_same", "i420_to_yv12", I420, COLOR_YVU420_PLANAR, SAME, NONE, UPRIGHT, 0, kAnyPicture},
    {"more_same", "i420_bilinear_5:4", I420, I420, UP, BILINEAR},
    {"more_same", "i420_bilinear_3:5", I420, I420, DOWN, BILINEAR},
    {"more_same", "i420_nearest_3:5_left", I420, I420, DOWN, NEAREST, LEFT},
    {"more_same", "nv12_nearest_5:4", NV12, NV12, UP, NEAREST},
    {"more_same", "nv12_nearest_3:5_left", NV12, NV12, DOWN, NEAREST, LEFT},
    {"more_same", "yuyv_nearest_3:5_left", YUYV, YUYV, DOWN, NEAREST, LEFT},
    {"more_same", "rgb565_bilinear_5:4", RGB565, RGB565, UP, BILINEAR},
    {"more_same", "rgb565_bilinear_5:4_left", RGB565, RGB565, UP, BILINEAR, LEFT},
};

constexpr Job kCalls[] = {
    at({"call", "i420", I420, RGB565}, kOnlyTiny),
    at({"call", "nv12", NV12, RGB565}, kOnlyTiny),
    at({"call", "yuyv", YUYV, RGB565}, kOnlyTiny),
    at({"resizing_call", "i420_5:4", I420, RGB565, UP, BILINEAR}, kOnlyTiny),
};

constexpr Job kSetUps[] = {
    {"setup", "nothing", I420, RGB565},
    {"setup", "nearest", YUYV, RGB565, DOWN, NEAREST},
    {"setup", "bilinear", I420, I420, DOWN, BILINEAR},
    {"setup", "filtered", I420, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"setup", "filtered_wide", I420, RGB565, DOWN, FILTERED, UPRIGHT, 2},
    {"setup", "box", I420, RGB565, DOWN, BOX, UPRIGHT, 3},
    {"setup", "grouped", I420, RGB565, DOWN, BILINEAR},
    {"setup", "grouped_up", I420, RGB565, UP, BILINEAR},
    {"setup", "run_length", I420, RGB24, DOWN, NEAREST},
    {"setup", "split_chroma", NV12, RGB565},
    {"setup", "turned_planes", I444, RGB565, DOWN, BILINEAR, LEFT},
};

} // namespace

std::span<const Group> groups() {
  return kGroups;
}
std::span<const Job> jobs() {
  return kJobs;
}
std::span<const Job> calls() {
  return kCalls;
}
std::span<const Job> setUps() {
  return kSetUps;
}

} // namespace bench
