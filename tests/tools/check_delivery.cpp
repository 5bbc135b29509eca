// What arrives of a clip: all of its frames, those that are whole, or none; under the names that raw files have.
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using testing::ElementsAre;
using workspace::expectRefusal;
using workspace::Folder;
using workspace::Outcome;
using workspace::y4m420;

namespace {

/// A clip of `whole` frames and all but the last byte of another one.
std::string cutClip(int whole) {
  std::string stream = y4m420(32, 16, whole + 1);
  stream.pop_back();
  return stream;
}

TEST(Delivery, WholeFramesOfACutClipAreDelivered) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", cutClip(2));
  const std::string uncut = folder.file("uncut.y4m", y4m420(32, 16, 2));
  EXPECT_EQ(workspace::classic({uncut, folder.path("want.raw")}).status, 0);
  expectRefusal(workspace::classic({clip, folder.path("got.raw")}), "ends in the middle of frame 3");
  EXPECT_TRUE(workspace::readFile(folder.path("got.raw")) == workspace::readFile(folder.path("want.raw")));
  expectRefusal(workspace::classic({clip, folder.path("f%d.png")}), "ends in the middle of frame 3");
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "f1.png", "f2.png", "got.raw", "uncut.y4m", "want.raw"));

  const Outcome piped = workspace::classic({clip, "-"});
  EXPECT_EQ(piped.status, 2);
  EXPECT_TRUE(piped.out == workspace::readFile(folder.path("want.raw")));
  // The header of a frame may be cut as well.
  const std::string header = folder.file("header.y4m", y4m420(32, 16, 1) + "FRA");
  expectRefusal(workspace::classic({header, folder.path("one.png")}), "ends in the header of frame 2");
  EXPECT_TRUE(std::filesystem::exists(folder.path("one.png")));
}

TEST(Delivery, OfACutClipOnlyWhatWasAskedForIsDelivered) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", cutClip(2));
  expectRefusal(workspace::classic({"--frames", "2:", clip, folder.path("f%d.png")}), "ends in the middle of frame 3");
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "f2.png"));
  expectRefusal(workspace::classic({"--frames", "3:", clip, folder.path("g%d.png")}), "ends in the middle of frame 3");
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "f2.png"));
  EXPECT_EQ(workspace::classic({"--frames", ":2", clip, folder.path("h%d.png")}).status, 0);
}

TEST(Delivery, DamageInsideAClipAndClipsWithoutAWholeFrameLeaveNothingBehind) {
  const Folder folder;
  const std::string old = folder.file("old.raw", "precious");
  const std::string damaged = folder.file("a.y4m", y4m420(32, 16, 1) + "FROM" + y4m420(32, 16, 1));
  const std::string cut = folder.file("b.y4m", cutClip(0));
  for (const char *name : {"new.raw", "new.y4m", "new-%d.png", "new-%d.bmp", "old.raw"}) {
    expectRefusal(workspace::classic({damaged, folder.path(name)}), "frame 2");
    expectRefusal(workspace::classic({cut, folder.path(name)}), "frame 1");
    EXPECT_THAT(folder.names(), ElementsAre("a.y4m", "b.y4m", "old.raw")) << name;
  }
  EXPECT_EQ(workspace::readFile(old), "precious");
}

TEST(Delivery, RawFilesAreCalledByWhatTheyHold) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(32, 16, 1));
  for (const auto &[name, bytes] : {std::pair{"a.raw", 1024U},
                                    {"a.rgb565", 1024U},
                                    {"a.bgr24", 1536U},
                                    {"a.yuv", 768U},
                                    {"a.i420", 768U},
                                    {"a", 1024U}}) {
    const Outcome outcome = workspace::classic({clip, folder.path(name)});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(workspace::readFile(folder.path(name)).size(), bytes) << name;
  }
  EXPECT_EQ(workspace::classic({"--to", "rgb565", clip, folder.path("b.yuv")}).status, 0);
  EXPECT_EQ(workspace::readFile(folder.path("b.yuv")).size(), 1024U);
  const std::vector<std::string> raw{"--size", "32x16", "--type", "nv12", clip, folder.path("c.yuv")};
  EXPECT_EQ(workspace::classic(raw).status, 2); // a .y4m is no raw file, whatever it is to become
  const std::string nv12 = folder.file("in.nv12", workspace::bytes(768, 1));
  EXPECT_EQ(workspace::classic({"--size", "32x16", "--type", "nv12", nv12, folder.path("c.yuv")}).status, 0);
  EXPECT_TRUE(workspace::readFile(folder.path("c.yuv")) == workspace::readFile(nv12));
}

} // namespace
