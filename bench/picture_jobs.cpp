// What zqPicture is measured at.
#include "jobs.h"

namespace bench {
namespace {

constexpr int32_t I420 = COLOR_YUV420_PLANAR;
constexpr int32_t NV12 = COLOR_YUV420_PACK;
constexpr int32_t YUYV = COLOR_YUV422_YUYV;
constexpr int32_t RGB565 = COLOR_RGB565;
constexpr int32_t BGR24 = COLOR_RGB24;

constexpr Scale kSame = {1, 1};
constexpr Size kPanel = {800, 480};
constexpr Size kOnlyHd[] = {kHd};
constexpr Size kOnlyFullHd[] = {kFullHd};

/// Everybody means the same picture here: what differs is rounding, most of all to five and six bits.
constexpr double kClose = 6;

constexpr Job same(const char *name, int32_t from, int32_t to, uint32_t rotation = ROTATION_NONE) {
  return {"zqpicture", name, from, to, kSame, Sampling::None, rotation, 0, kClose, kOnlyHd};
}
constexpr Job toPanel(const char *name, Sampling sampling, uint32_t rotation) {
  return {"zqpicture", name, NV12, RGB565, kSame, sampling, rotation, 0, kClose, kOnlyFullHd, kPanel};
}
constexpr Job ofBoth(const char *name, int32_t from) {
  return {"zqpicture_first", name, from, RGB565};
}

constexpr Group kGroups[] = {
    {"zqpicture", "best peer", 1.1, 2, .8},
    {"zqpicture_first", "the first library, to RGB565", 1},
};

constexpr Job kJobs[] = {
    same("nv12_to_rgb565", NV12, RGB565),
    same("nv12_to_bgra", NV12, kBgra),
    same("nv12_to_bgr24", NV12, BGR24),
    same("i420_to_rgb565", I420, RGB565),
    same("i420_to_bgra", I420, kBgra),
    same("i420_to_bgr24", I420, BGR24),
    same("yuyv_to_bgra", YUYV, kBgra),
    same("bgra_to_i420", kBgra, I420),
    same("bgra_to_nv12", kBgra, NV12),
    same("nv12_to_i420", NV12, I420),
    same("i420_to_bgra_left", I420, kBgra, ROTATION_90_LEFT),
    toPanel("nv12_to_800x480_bilinear", Sampling::Bilinear, ROTATION_NONE),
    toPanel("nv12_to_800x480_area", Sampling::Box, ROTATION_NONE),
    toPanel("nv12_to_800x480_bilinear_left", Sampling::Bilinear, ROTATION_90_LEFT),
    toPanel("nv12_to_800x480_area_left", Sampling::Box, ROTATION_90_LEFT),
};

constexpr Job kJobsOfBoth[] = {ofBoth("nv12", NV12), ofBoth("i420", I420)};

} // namespace

std::span<const Group> pictureGroups() {
  return kGroups;
}
std::span<const Job> pictureJobs() {
  return kJobs;
}
std::span<const Job> pictureJobsOfBoth() {
  return kJobsOfBoth;
}

} // namespace bench
