// Files that appear whole or not at all.
#include "error.h"
#include "output.h"
#include "temporary.h"
#include "workspace.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <optional>

using namespace zqconvert;
using testing::ElementsAre;
using testing::IsEmpty;
namespace fs = std::filesystem;

namespace {

const StreamInfo kInfo{COLOR_RGB565, 2, 2, "25:1", "420jpeg"};
Frame frame() {
  return workspace::noiseFrame(COLOR_RGB565, 2, 2, 1);
}
std::string frameText() {
  const Frame picture = frame();
  return {picture.planes[0].begin(), picture.planes[0].end()};
}

TEST(Output, FilesAppearWithCommitOnly) {
  const workspace::Folder folder;
  {
    Output output(folder.path("a.raw"), Format::Raw, kInfo);
    output.write(frame(), 1);
    EXPECT_FALSE(fs::exists(folder.path("a.raw")));
    output.write(frame(), 2);
    output.commit();
    EXPECT_THAT(folder.names(), ElementsAre("a.raw"));
  }
  EXPECT_EQ(workspace::readFile(folder.path("a.raw")), frameText() + frameText());
}

TEST(Output, WithoutCommitNothingIsLeftAndOldFilesStay) {
  const workspace::Folder folder;
  const std::string old = folder.file("a.raw", "old");
  {
    Output output(old, Format::Raw, kInfo);
    output.write(frame(), 1);
    EXPECT_EQ(folder.names().size(), 2U);
  }
  EXPECT_THAT(folder.names(), ElementsAre("a.raw"));
  EXPECT_EQ(workspace::readFile(old), "old");
}

TEST(Output, NumberedFilesAppearTogether) {
  const workspace::Folder folder;
  {
    Output dropped(folder.path("x-%03d.raw"), Format::Raw, kInfo);
    dropped.write(frame(), 1);
    dropped.write(frame(), 2);
  }
  EXPECT_THAT(folder.names(), IsEmpty());
  Output output(folder.path("x-%03d.raw"), Format::Raw, kInfo);
  output.write(frame(), 9);
  output.write(frame(), 10);
  EXPECT_FALSE(fs::exists(folder.path("x-009.raw")));
  output.commit();
  EXPECT_THAT(folder.names(), ElementsAre("x-009.raw", "x-010.raw"));
  EXPECT_EQ(workspace::readFile(folder.path("x-010.raw")), frameText());
}

TEST(Output, NumberedStreamsEachHaveTheirHeader) {
  const workspace::Folder folder;
  Output output(folder.path("%d.y4m"), Format::Y4m, {COLOR_YUV420_PLANAR, 2, 2, "25:1", "420jpeg"});
  output.write(workspace::noiseFrame(COLOR_YUV420_PLANAR, 2, 2, 1), 1);
  output.write(workspace::noiseFrame(COLOR_YUV420_PLANAR, 2, 2, 2), 2);
  output.commit();
  for (const char *name : {"1.y4m", "2.y4m"}) {
    EXPECT_THAT(workspace::readFile(folder.path(name)), testing::StartsWith("YUV4MPEG2 W2 H2 ")) << name;
  }
}

TEST(Output, OnePictureFileTakesNoSecondFrame) {
  const workspace::Folder folder;
  {
    Output output(folder.path("a.png"), Format::Png, kInfo);
    output.write(frame(), 1);
    EXPECT_THROW(output.write(frame(), 2), Error);
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Output, LinksKeepPointing) {
  const workspace::Folder folder;
  const std::string target = folder.file("target.raw", "old");
  fs::create_symlink(target, folder.path("link.raw"));
  Output output(folder.path("link.raw"), Format::Raw, kInfo);
  output.write(frame(), 1);
  output.commit();
  EXPECT_TRUE(fs::is_symlink(folder.path("link.raw")));
  EXPECT_EQ(workspace::readFile(target), frameText());
}

TEST(Output, AReplacedFilePassesItsPermissionsOn) {
  const workspace::Folder folder;
  for (const auto mode : {fs::perms{0600}, fs::perms{0640}, fs::perms{0755}, fs::perms{0444}}) {
    const std::string old = folder.file("a.raw", "old");
    fs::permissions(old, mode);
    Output output(old, Format::Raw, kInfo);
    output.write(frame(), 1);
    // Nor is the file open to others while it grows.
    for (const std::string &name : folder.names()) {
      EXPECT_EQ(fs::status(folder.path(name)).permissions(), mode) << name;
    }
    output.commit();
    EXPECT_EQ(fs::status(old).permissions(), mode);
    EXPECT_EQ(workspace::readFile(old), frameText());
    fs::remove(old);
  }
}

TEST(Output, NewFilesHaveThePermissionsThatEveryNewFileHas) {
  const workspace::Folder folder;
  Output output(folder.path("a.raw"), Format::Raw, kInfo);
  output.write(frame(), 1);
  output.commit();
  EXPECT_EQ(fs::status(folder.path("a.raw")).permissions(), fs::status(folder.file("b", "")).permissions());
}

// What a signal handler does when it must end the program.
TEST(Temporaries, AllThatAreKnownAreRemovedAndNoOthers) {
  const workspace::Folder folder;
  const std::vector<std::string> names{"1", "2", "3", "4"};
  // Short names lie in the objects themselves, so that one that is still in the list is seen and not just undefined.
  const fs::path before = fs::current_path();
  fs::current_path(folder.path(""));
  std::array<std::optional<TemporaryName>, 4> known;
  for (std::size_t i = 0; i < known.size(); ++i) {
    known.at(i).emplace(names[i]);
  }
  // One is forgotten after the other: from the middle of the list, from beside it, from both ends.
  std::vector<std::string> forgotten;
  for (const std::size_t gone : {1U, 2U, 0U, 3U}) {
    known.at(gone).reset();
    forgotten.push_back(names[gone]);
    for (const std::string &name : names) {
      static_cast<void>(folder.file(name, ""));
    }
    removeTemporaries();
    EXPECT_THAT(folder.names(), testing::UnorderedElementsAreArray(forgotten));
  }
  fs::current_path(before);
}

TEST(Output, PendingFilesAreKnownUntilTheyAreInPlace) {
  const workspace::Folder folder;
  Output placed(folder.path("a.raw"), Format::Raw, kInfo);
  placed.write(frame(), 1);
  placed.commit();
  Output pending(folder.path("b-%d.raw"), Format::Raw, kInfo);
  pending.write(frame(), 1);
  pending.write(frame(), 2);
  EXPECT_EQ(folder.names().size(), 3U);
  removeTemporaries();
  EXPECT_THAT(folder.names(), ElementsAre("a.raw"));
}

TEST(Output, DevicesAreWrittenNotReplaced) {
  Output output("/dev/null", Format::Raw, kInfo);
  output.write(frame(), 1);
  output.commit();
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
}

TEST(Output, AFullDiskIsNoticed) {
  if (!fs::is_character_file("/dev/full")) {
    GTEST_SKIP() << "no /dev/full here";
  }
  const StreamInfo large{COLOR_RGB565, 256, 256, "25:1", "420jpeg"};
  Output output("/dev/full", Format::Raw, large);
  EXPECT_THROW(
      {
        output.write(workspace::noiseFrame(COLOR_RGB565, 256, 256, 1), 1);
        output.commit();
      },
      Error);
}

TEST(Output, PlacesThatCannotBeWritten) {
  const workspace::Folder folder;
  const Frame picture = frame();
  Output directory(folder.path(""), Format::Raw, kInfo);
  EXPECT_THROW(directory.write(picture, 1), Error);
  Output missing(folder.path("no/such/place.raw"), Format::Raw, kInfo);
  EXPECT_THROW(missing.write(picture, 1), Error);
  EXPECT_THROW(Output(folder.path("a.png"), Format::Png, {COLOR_YUV420_PLANAR, 2, 2, "25:1", "420jpeg"}), Error);
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(NamePattern, NumbersAndPercentSigns) {
  EXPECT_EQ(NamePattern("out-%04d.png").name(7), "out-0007.png");
  EXPECT_EQ(NamePattern("out-%4d.png").name(7), "out-0007.png");
  EXPECT_EQ(NamePattern("out-%04d.png").name(123456), "out-123456.png");
  EXPECT_EQ(NamePattern("%d").name(12), "12");
  EXPECT_EQ(NamePattern("50%.png").name(3), "50%.png");
  EXPECT_FALSE(NamePattern("50%.png").numbered());
  EXPECT_EQ(NamePattern("%s%n.png").name(3), "%s%n.png");
  EXPECT_EQ(NamePattern("100%-%02d.png").name(3), "100%-03.png");
  EXPECT_EQ(NamePattern("50%%.png").name(3), "50%.png");
  EXPECT_EQ(NamePattern("100%%-%02d%%.png").name(3), "100%-03%.png");
  EXPECT_EQ(NamePattern("%%d.png").name(3), "%d.png");
  EXPECT_FALSE(NamePattern("%%d.png").numbered());
  EXPECT_EQ(NamePattern("%%%d.png").name(3), "%3.png");
  EXPECT_EQ(NamePattern("50%").name(3), "50%");
  EXPECT_THROW(NamePattern("%d-%d.png"), Error);
  EXPECT_THROW(NamePattern("%099999999999d.png"), Error);
}

} // namespace
