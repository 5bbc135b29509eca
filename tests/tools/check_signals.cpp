// Signals end the program wherever it waits, and nothing half done stays behind.
#include "workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using workspace::Folder;
using workspace::Outcome;
using workspace::Process;
using workspace::within10Seconds;
using workspace::y4m420;

namespace {

constexpr std::array kSignals{SIGINT, SIGTERM, SIGHUP};

void expectEndedBy(int number, Process &process) {
  process.kill(number);
  const Outcome outcome = process.wait();
  EXPECT_EQ(outcome.status, 128 + number);
  EXPECT_EQ(outcome.err, "zqconvert: interrupted\n");
}

/// A program that has written its first frame to a temporary file and waits for the second one.
class WaitingProgram : public testing::Test {
protected:
  void start(const Process::Setup &setup = {}) {
    stream_ = y4m420(32, 16, 2);
    const std::size_t second = stream_.rfind("FRAME\n");
    process_.emplace(std::vector<std::string>{"--classic", "-", folder_.path("out.raw")}, setup);
    process_->feed(stream_.substr(0, second));
    rest_ = stream_.substr(second);
    ASSERT_TRUE(within10Seconds([this] { return !folder_.names().empty() && process_->sleeps(); }));
    ASSERT_THAT(folder_.names(), ElementsAre(StartsWith(".zqconvert-")));
  }
  Folder folder_;
  std::string stream_, rest_;
  std::optional<Process> process_;
};

TEST_F(WaitingProgram, OneSignalEndsItThoughItsInputStallsAndLeavesNothing) {
  for (const int number : kSignals) {
    start();
    expectEndedBy(number, *process_);
    EXPECT_THAT(folder_.names(), IsEmpty());
  }
}

TEST_F(WaitingProgram, AFrameThatStallsHalfWayIsNoHindrance) {
  for (const int number : kSignals) {
    start();
    process_->feed(rest_.substr(0, rest_.size() / 2));
    expectEndedBy(number, *process_);
    EXPECT_THAT(folder_.names(), IsEmpty());
  }
}

TEST_F(WaitingProgram, HangUpsThatAreSwitchedOffStayIgnored) {
  start({.ignoreHangUp = true});
  process_->kill(SIGHUP);
  process_->feed(rest_);
  process_->closeInput();
  EXPECT_EQ(process_->wait().status, 0);
  EXPECT_THAT(folder_.names(), ElementsAre("out.raw"));
}

TEST(Signals, EndItBeforeTheFirstByteArrives) {
  const Folder folder;
  for (const int number : kSignals) {
    Process process({"--classic", "-", folder.path("out.png")}, {});
    ASSERT_TRUE(within10Seconds([&] { return process.sleeps(); }));
    expectEndedBy(number, process);
  }
  EXPECT_THAT(folder.names(), IsEmpty());
}

TEST(Signals, EndItWhileANamedPipeHasNoOtherEnd) {
  const Folder folder;
  const std::string pipe = folder.path("pipe.y4m");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const std::string clip = folder.file("clip.y4m", y4m420(32, 16, 1));
  for (const int number : kSignals) {
    for (const std::vector<std::string> &ends : {std::vector<std::string>{"--classic", pipe, folder.path("out.raw")},
                                                 std::vector<std::string>{"--classic", clip, pipe}}) {
      Process process(ends, {});
      ASSERT_TRUE(within10Seconds([&] { return process.sleeps(); }));
      expectEndedBy(number, process);
    }
  }
  EXPECT_THAT(folder.names(), ElementsAre("clip.y4m", "pipe.y4m"));
}

TEST(Signals, EndItWhileNobodyTakesWhatItWrites) {
  const Folder folder;
  const std::string clip = folder.file("clip.y4m", y4m420(256, 256, 2));
  for (const int number : kSignals) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    Process process({"--classic", clip, "-"}, {.output = ends[1]});
    int waiting = 0;
    ASSERT_TRUE(within10Seconds([&] { return ioctl(ends[0], FIONREAD, &waiting) == 0 && waiting > 4096; }));
    ASSERT_TRUE(within10Seconds([&] { return process.sleeps(); }));
    expectEndedBy(number, process);
    close(ends[0]);
    close(ends[1]);
  }
}

// All of them are renamed once the first one stands in its place, however soon the signal comes.
TEST(Signals, NumberedFilesArriveTogetherOrNotAtAll) {
  constexpr int kFrames = 1500;
  for (const int number : kSignals) {
    const Folder clips;
    const Folder folder;
    Process process({"--classic", clips.file("clip.y4m", y4m420(2, 2, kFrames)), folder.path("%d.raw")}, {});
    ASSERT_TRUE(within10Seconds([&] { return folder.names().size() == kFrames; }));
    const std::string first = folder.path("1.raw");
    for (int looks = 0; looks < 10000000 && !std::filesystem::exists(first); ++looks) {
    }
    process.kill(number);
    // The work may be over before the signal comes, but the program not yet.
    EXPECT_THAT(process.wait().status, testing::AnyOf(0, 128 + number));
    EXPECT_EQ(folder.names().size(), static_cast<std::size_t>(kFrames));
    EXPECT_TRUE(std::filesystem::exists(folder.path(std::to_string(kFrames) + ".raw")));
  }
}

} // namespace
