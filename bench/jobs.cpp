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
constexpr int32_t YUYV = COLOR_YUV422_YUYV;
constexpr int32_t UYVY = COLOR_YUV422_UYVY;
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

constexpr Job kJobs[] = {
    // Same size, upright, to RGB565.
    {"rgb565", "i420", I420, RGB565},
    {"rgb565", "i422", I422, RGB565},
    {"rgb565", "i444", I444, RGB565},
    {"rgb565", "i440", I440, RGB565},
    {"rgb565", "i411", I411, RGB565},
    {"rgb565", "quarter_height", QUARTER, RGB565},
    {"rgb565", "planar_rgb", PLANAR_RGB, RGB565},
    {"rgb565", "nv12", NV12, RGB565},
    {"rgb565", "yuyv", YUYV, RGB565},
    {"rgb565", "uyvy", UYVY, RGB565},
    {"rgb565", "rgb24", RGB24, RGB565},

    // To RGB24. Planar input other than 4:2:0 is read with half pitches whatever its planes hold.
    {"rgb24", "i420", I420, RGB24},
    {"rgb24", "i422", I422, RGB24},
    {"rgb24", "nv12", NV12, RGB24},
    {"rgb24", "yuyv", YUYV, RGB24},
    {"rgb24", "i420_flip", I420, RGB24, SAME, NONE, FLIP},
    {"rgb24", "yuyv_left", YUYV, RGB24, SAME, NONE, LEFT},
    {"rgb24", "i420_3:5", I420, RGB24, DOWN, NEAREST},
    // Enlarged RGB24 repeats lines in part only.
    {"rgb24", "i420_5:4", I420, RGB24, UP, NEAREST, UPRIGHT, 0, kAnyPicture},
    {"rgb24", "yuyv_3:5", YUYV, RGB24, DOWN, NEAREST},
    {"rgb24", "yuyv_5:4", YUYV, RGB24, UP, NEAREST},

    // Turned, to RGB565.
    {"turned", "i420_left", I420, RGB565, SAME, NONE, LEFT},
    {"turned", "i420_right", I420, RGB565, SAME, NONE, RIGHT},
    {"turned", "i420_half", I420, RGB565, SAME, NONE, HALF},
    {"turned", "i422_left", I422, RGB565, SAME, NONE, LEFT},
    {"turned", "i444_left", I444, RGB565, SAME, NONE, LEFT},
    {"turned", "i440_left", I440, RGB565, SAME, NONE, LEFT},
    {"turned", "i411_left", I411, RGB565, SAME, NONE, LEFT},
    {"turned", "quarter_height_left", QUARTER, RGB565, SAME, NONE, LEFT},
    {"turned", "planar_rgb_left", PLANAR_RGB, RGB565, SAME, NONE, LEFT},
    {"turned", "nv12_left", NV12, RGB565, SAME, NONE, LEFT},
    {"turned", "yuyv_left", YUYV, RGB565, SAME, NONE, LEFT},
    {"turned", "yuyv_half", YUYV, RGB565, SAME, NONE, HALF},
    {"turned", "rgb24_left", RGB24, RGB565, SAME, NONE, LEFT},

    // Flipped, to RGB565. Flipped 4:2:2 takes its chroma from the upper half of the planes.
    {"flipped", "i420", I420, RGB565, SAME, NONE, FLIP},
    {"flipped", "i422", I422, RGB565, SAME, NONE, FLIP, 0, kAnyPicture},
    {"flipped", "i444", I444, RGB565, SAME, NONE, FLIP},
    {"flipped", "planar_rgb", PLANAR_RGB, RGB565, SAME, NONE, FLIP},
    {"flipped", "nv12", NV12, RGB565, SAME, NONE, FLIP},

    // Resized to RGB565, ratios without routines of their own.
    {"general", "i420_5:4", I420, RGB565, UP, BILINEAR},
    {"general", "i420_3:5", I420, RGB565, DOWN, BILINEAR},
    {"general", "i420_5:4_left", I420, RGB565, UP, BILINEAR, LEFT},
    {"general", "i420_3:5_left", I420, RGB565, DOWN, BILINEAR, LEFT},
    {"general", "i420_3:5_half", I420, RGB565, DOWN, BILINEAR, HALF},
    {"general", "i422_5:4", I422, RGB565, UP, BILINEAR},
    {"general", "i444_5:4", I444, RGB565, UP, BILINEAR},
    {"general", "i444_5:4_left", I444, RGB565, UP, BILINEAR, LEFT},
    {"general", "i440_5:4", I440, RGB565, UP, BILINEAR},
    {"general", "i411_5:4", I411, RGB565, UP, BILINEAR},
    {"general", "quarter_height_5:4", QUARTER, RGB565, UP, BILINEAR},
    {"general", "planar_rgb_5:4", PLANAR_RGB, RGB565, UP, BILINEAR},
    {"general", "planar_rgb_5:4_left", PLANAR_RGB, RGB565, UP, BILINEAR, LEFT},
    {"general", "nv12_5:4", NV12, RGB565, UP, BILINEAR},
    {"general", "yuyv_5:4", YUYV, RGB565, UP, NEAREST},
    {"general", "yuyv_3:5", YUYV, RGB565, DOWN, NEAREST},
    {"general", "yuyv_5:4_left", YUYV, RGB565, UP, NEAREST, LEFT},
    {"general", "rgb24_5:4", RGB24, RGB565, UP, BILINEAR},
    {"general", "rgb24_5:4_left", RGB24, RGB565, UP, BILINEAR, LEFT},

    // Resized to RGB565, ratios with routines of their own.
    {"special", "i420_1:2", I420, RGB565, {1, 2}, NEAREST},
    {"special", "i420_1:4", I420, RGB565, {1, 4}, NEAREST},
    {"special", "i420_3:4", I420, RGB565, {3, 4}, BILINEAR},
    {"special", "i420_3:2", I420, RGB565, {3, 2}, BILINEAR},
    {"special", "i420_2:1", I420, RGB565, {2, 1}, BILINEAR},
    {"special", "i420_3:4_left", I420, RGB565, {3, 4}, BILINEAR, LEFT},
    {"special", "i420_2:1_left", I420, RGB565, {2, 1}, BILINEAR, LEFT},

    // Resized to RGB565 by five weighted taps, and by the mean of a box.
    {"filtered", "i420_3:5", I420, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"filtered", "i420_1:4_wide", I420, RGB565, {1, 4}, FILTERED, UPRIGHT, 2},
    {"filtered", "i444_3:5", I444, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"filtered", "planar_rgb_3:5", PLANAR_RGB, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"filtered", "nv12_3:5", NV12, RGB565, DOWN, FILTERED, UPRIGHT, 1},
    {"box", "i420_1:4", I420, RGB565, {1, 4}, BOX, UPRIGHT, 3},
    {"box", "i420_1:8", I420, RGB565, {1, 8}, BOX, UPRIGHT, 3},
    {"box", "i444_1:4", I444, RGB565, {1, 4}, BOX, UPRIGHT, 3},

    // YUV to YUV. Every second chroma line is taken, from 4:2:0 too.
    {"yuv", "i422_to_i420", I422, I420},
    {"yuv", "nv12_to_i420", NV12, I420, SAME, NONE, UPRIGHT, 0, kAnyPicture},
    {"yuv", "yuyv_to_i420", YUYV, I420},
    {"yuv", "i420_to_yv12", I420, COLOR_YVU420_PLANAR, SAME, NONE, UPRIGHT, 0, kAnyPicture},

    // Same format.
    {"same_i420", "copy", I420, I420},
    {"same_i420", "left", I420, I420, SAME, NONE, LEFT},
    {"same_i420", "half", I420, I420, SAME, NONE, HALF},
    {"same_i420", "bilinear_5:4", I420, I420, UP, BILINEAR},
    {"same_i420", "bilinear_3:5", I420, I420, DOWN, BILINEAR},
    {"same_i420", "nearest_3:5_left", I420, I420, DOWN, NEAREST, LEFT},
    {"same_i420", "filtered_3:5", I420, I420, DOWN, FILTERED, UPRIGHT, 1},
    {"same_nv12", "copy", NV12, NV12},
    {"same_nv12", "left", NV12, NV12, SAME, NONE, LEFT},
    {"same_nv12", "nearest_5:4", NV12, NV12, UP, NEAREST},
    {"same_nv12", "nearest_3:5_left", NV12, NV12, DOWN, NEAREST, LEFT},
    {"same_yuyv", "copy", YUYV, YUYV},
    {"same_yuyv", "left", YUYV, YUYV, SAME, NONE, LEFT},
    {"same_yuyv", "bilinear_5:4", YUYV, YUYV, UP, BILINEAR},
    {"same_yuyv", "nearest_3:5_left", YUYV, YUYV, DOWN, NEAREST, LEFT},
    {"same_yuyv", "filtered_3:5", YUYV, YUYV, DOWN, FILTERED, UPRIGHT, 1},
    {"same_rgb565", "copy", RGB565, RGB565},
    {"same_rgb565", "left", RGB565, RGB565, SAME, NONE, LEFT},
    {"same_rgb565", "bilinear_5:4", RGB565, RGB565, UP, BILINEAR},
    {"same_rgb565", "bilinear_5:4_left", RGB565, RGB565, UP, BILINEAR, LEFT},
    {"same_rgb565", "filtered_3:5", RGB565, RGB565, DOWN, FILTERED, UPRIGHT, 1},
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

std::span<const Job> jobs() {
  return kJobs;
}
std::span<const Job> setUps() {
  return kSetUps;
}

} // namespace bench
