// YUV4MPEG2 streams, whole, damaged and lying.
#include "error.h"
#include "workspace.h"
#include "y4m_reader.h"
#include "zqColorConversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <sstream>

using namespace zqconvert;
using workspace::bytes;

namespace {

std::string planeText(const Frame &frame, int index, int lineBytes, int lines, int stride) {
  const std::vector<uint8_t> &plane = frame.planes.at(static_cast<std::size_t>(index));
  std::string text;
  for (int line = 0; line < lines; ++line) {
    for (int x = 0; x < lineBytes; ++x) {
      text += static_cast<char>(plane.at(workspace::at(line, stride, x)));
    }
  }
  return text;
}

struct Kind {
  const char *tag;
  int type;
  int chromaWidth, chromaHeight; // of a 5 x 3 picture, rounded up as the stream has them
  int stride, chromaStride;
};

TEST(Y4mReader, EveryChromaKindOfAnOddPicture) {
  for (const Kind &kind :
       {Kind{" C420jpeg", 3, 3, 2, 6, 3}, Kind{" C420mpeg2", 3, 3, 2, 6, 3}, Kind{" C420paldv", 3, 3, 2, 6, 3},
        Kind{" C420", 3, 3, 2, 6, 3}, Kind{"", 3, 3, 2, 6, 3}, Kind{" C422", 1, 3, 3, 6, 3},
        Kind{" C444", 0, 5, 3, 5, 5}, Kind{" C440", 2, 5, 2, 5, 5}, Kind{" C411", 4, 2, 3, 8, 2}}) {
    const std::size_t chroma = workspace::at(kind.chromaWidth, kind.chromaHeight);
    const std::string y = bytes(15, 1);
    const std::string u = bytes(chroma, 2);
    const std::string v = bytes(chroma, 3);
    std::string text = "YUV4MPEG2 W5 H3 F24000:1001 It A10:11";
    text.append(kind.tag).append(" XCOLORRANGE=FULL\nFRAME\n").append(y).append(u).append(v);
    // The second frame has the planes in another order.
    std::string second = v;
    second.append(u).append(y);
    text.append("FRAME Ix Xanything\n").append(second);
    std::istringstream stream(text);
    Y4mReader reader(stream, "test");
    EXPECT_EQ(reader.info().type, kind.type) << kind.tag;
    EXPECT_EQ(reader.info().width, 5);
    EXPECT_EQ(reader.info().height, 3);
    EXPECT_EQ(reader.info().rate, "24000:1001");
    EXPECT_EQ(reader.bytesPerFrame(), 6U + 15U + 2U * chroma);
    Frame frame;
    ASSERT_TRUE(reader.next(frame));
    EXPECT_EQ(frame.type, kind.type);
    EXPECT_EQ(frame.stride, kind.stride) << kind.tag;
    EXPECT_EQ(planeText(frame, 0, 5, 3, kind.stride), y) << kind.tag;
    EXPECT_EQ(planeText(frame, 1, kind.chromaWidth, kind.chromaHeight, kind.chromaStride), u) << kind.tag;
    EXPECT_EQ(planeText(frame, 2, kind.chromaWidth, kind.chromaHeight, kind.chromaStride), v) << kind.tag;
    // What filters may touch behind the last sample is that sample.
    EXPECT_EQ(frame.planes[0].at(static_cast<std::size_t>(kind.stride) - 1), frame.planes[0].at(4)) << kind.tag;
    ASSERT_TRUE(reader.next(frame));
    EXPECT_EQ(planeText(frame, 0, 5, 3, kind.stride), second.substr(0, 15)) << kind.tag;
    EXPECT_FALSE(reader.next(frame));
  }
}

TEST(Y4mReader, DamagedHeadersAreRefused) {
  const std::string good = "YUV4MPEG2 W4 H4 F25:1 C420jpeg\n";
  std::istringstream fine(good);
  EXPECT_NO_THROW(Y4mReader(fine, "fine"));
  for (const std::string &header : {std::string(),
                                    std::string("YUV4MPEG2"),
                                    std::string("YUV4MPEG2 W4 H4"),
                                    std::string("YUV4MPEG2\n"),
                                    std::string("YUV4MPEG W4 H4\n"),
                                    std::string("YUV4MPEG2W4 H4\n"),
                                    std::string("YUV4MPEG2 W4\n"),
                                    std::string("YUV4MPEG2 H4\n"),
                                    std::string("YUV4MPEG2 W4 W4 H4\n"),
                                    std::string("YUV4MPEG2 W4 H4 H5\n"),
                                    std::string("YUV4MPEG2 W H4\n"),
                                    std::string("YUV4MPEG2 W4a H4\n"),
                                    std::string("YUV4MPEG2 W-4 H4\n"),
                                    std::string("YUV4MPEG2 W+4 H4\n"),
                                    std::string("YUV4MPEG2 W0 H4\n"),
                                    std::string("YUV4MPEG2 W4 H0\n"),
                                    std::string("YUV4MPEG2 W4.5 H4\n"),
                                    std::string("YUV4MPEG2 W65536 H4\n"),
                                    std::string("YUV4MPEG2 W65535 H65535\n"),
                                    std::string("YUV4MPEG2 W4294967300 H4\n"),
                                    std::string("YUV4MPEG2 W99999999999999999999 H4\n"),
                                    std::string("YUV4MPEG2 W4 H4 F25\n"),
                                    std::string("YUV4MPEG2 W4 H4 F25:\n"),
                                    std::string("YUV4MPEG2 W4 H4 F:1\n"),
                                    std::string("YUV4MPEG2 W4 H4 C420p10\n"),
                                    std::string("YUV4MPEG2 W4 H4 C422p16\n"),
                                    std::string("YUV4MPEG2 W4 H4 C444alpha\n"),
                                    std::string("YUV4MPEG2 W4 H4 Cmono\n"),
                                    std::string("YUV4MPEG2 W4 H4 C\n"),
                                    std::string("YUV4MPEG2 W1 H4 C420\n"),
                                    std::string("YUV4MPEG2 W4 H1 C440\n"),
                                    std::string("YUV4MPEG2 W3 H4 C411\n"),
                                    "YUV4MPEG2 W4 H4 X" + std::string(5000, 'a') + "\n",
                                    std::string("\x89PNG\r\n\x1a\n", 8),
                                    bytes(3000, 5)}) {
    std::istringstream stream(header);
    try {
      Y4mReader reader(stream, "clip.y4m");
      ADD_FAILURE() << "taken: " << header;
    } catch (const Error &error) {
      EXPECT_THAT(error.what(), testing::StartsWith("clip.y4m: ")) << header;
      EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
    }
  }
}

TEST(Y4mReader, MessagesShowNoControlBytes) {
  std::istringstream stream("YUV4MPEG2 W4 H4 C\x1b[31mred\n");
  try {
    Y4mReader reader(stream, "x");
    FAIL();
  } catch (const Error &error) {
    EXPECT_EQ(std::string(error.what()).find('\x1b'), std::string::npos);
  }
}

// Copied as text, every line feed among the samples has a carriage return too: the picture would be rubbish.
TEST(Y4mReader, StreamsThatWereTreatedAsTextAreRefusedWithTheReason) {
  const auto message = [](const std::string &text) -> std::string {
    std::istringstream stream(text);
    try {
      Y4mReader reader(stream, "clip.y4m");
      Frame frame;
      reader.next(frame);
    } catch (const Error &error) {
      return error.what();
    }
    return {};
  };
  const std::string samples = bytes(24, 1);
  EXPECT_EQ(message("YUV4MPEG2 W4 H4\nFRAME\n" + samples), "");
  for (const char *header : {"YUV4MPEG2 W4 H4\r\nFRAME\r\n", "YUV4MPEG2 W4 H4 C420jpeg\r\nFRAME\n",
                             "YUV4MPEG2 W4 H4\nFRAME\r\n", "YUV4MPEG2 W4 H4\nFRAME Ip\r\n"}) {
    EXPECT_THAT(message(header + samples), testing::HasSubstr("CR LF")) << header;
  }
  // Samples where a frame should begin are no such line.
  EXPECT_THAT(message("YUV4MPEG2 W4 H4\nxyz\r\n" + samples), testing::HasSubstr("no FRAME line"));
}

TEST(Y4mReader, EveryTruncationIsNoticed) {
  const std::string whole = workspace::y4m420(6, 4, 2);
  const std::size_t header = whole.find('\n') + 1;
  const std::size_t frame = 6 + 36;
  for (std::size_t cut = header; cut <= whole.size(); ++cut) {
    std::istringstream stream(whole.substr(0, cut));
    Y4mReader reader(stream, "cut");
    Frame read;
    std::size_t frames = 0;
    bool refused = false;
    try {
      while (reader.next(read)) {
        ++frames;
      }
    } catch (const Error &) {
      refused = true;
    }
    EXPECT_EQ(frames, (cut - header) / frame) << cut;
    EXPECT_EQ(refused, (cut - header) % frame != 0) << cut;
  }
}

TEST(Y4mReader, FramesWithoutTheirMarkAreRefused) {
  for (const char *mark : {"FRAM\n", "FRAMES\n", "frame\n", "\n", "YUV4MPEG2 W4 H4\n"}) {
    std::istringstream stream("YUV4MPEG2 W4 H4\n" + std::string(mark) + bytes(24, 1));
    Y4mReader reader(stream, "x");
    Frame frame;
    EXPECT_THROW(reader.next(frame), Error) << mark;
  }
}

TEST(Y4mReader, HugeSizesCostNoMemoryBeforeTheirBytesArrive) {
  std::istringstream stream("YUV4MPEG2 W16384 H16384 C444\nFRAME\n" + bytes(1000, 1));
  Y4mReader reader(stream, "liar");
  Frame frame;
  EXPECT_THROW(reader.next(frame), Error);
  for (const std::vector<uint8_t> &plane : frame.planes) {
    EXPECT_LE(plane.capacity(), std::size_t{4} << 20);
  }
}

// Whatever stands in a stream, the reader says Error or gives frames of the size it announced.
TEST(Y4mReader, MutatedStreamsNeverCrash) {
  const std::string whole = workspace::y4m420(8, 6, 3);
  int refused = 0;
  for (unsigned seed = 1; seed < 3000; ++seed) {
    std::string mutated = whole;
    const std::string dice = bytes(6, seed);
    for (std::size_t i = 0; i < 6; i += 2) {
      const auto where = static_cast<unsigned char>(dice[i]) % 60U;
      mutated[where] = dice[i + 1];
    }
    std::istringstream stream(mutated);
    try {
      Y4mReader reader(stream, "fuzz");
      Frame frame;
      while (reader.next(frame)) {
        ASSERT_EQ(frame.width, reader.info().width);
        ASSERT_GE(frame.planes[0].size(), frame.shape(0).bytes());
        ASSERT_GE(frame.planes[1].size(), frame.shape(1).bytes());
        ASSERT_GE(frame.planes[2].size(), frame.shape(2).bytes());
      }
    } catch (const Error &) {
      ++refused;
    }
  }
  EXPECT_GT(refused, 1000);
  EXPECT_LT(refused, 2999);
}

} // namespace
