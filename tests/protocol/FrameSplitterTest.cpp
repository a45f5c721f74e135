#include "protocol/FrameSplitter.h"

#include "ProtocolTestSupport.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace ostrel {
namespace {

using test::hexBytes;

struct Collector {
    std::vector<Bytes> frames;
    void feed(FrameSplitter& splitter, const Bytes& chunk) {
        splitter.append(chunk, [this](const Bytes& frame) { frames.push_back(frame); });
    }
};

// Frames whose bytes after the head hold no 0x9B, so no false head can hide inside them.
std::vector<Bytes> randomFrames(std::mt19937& random, int count) {
    std::vector<Bytes> frames;
    while (static_cast<int>(frames.size()) < count) {
        Bytes payload(random() % 40);
        for (auto& byte : payload)
            byte = static_cast<std::uint8_t>(random() % 0x9B);
        Bytes frame = test::deskFrame(static_cast<std::uint8_t>(random() % 0x9B), payload);
        if (std::find(frame.begin() + 1, frame.end(), 0x9B) == frame.end())
            frames.push_back(frame);
    }
    return frames;
}

TEST(FrameSplitterTest, StreamCutAnywhereYieldsExactlyItsFrames) {
    std::mt19937 random(42);
    for (int round = 0; round < 200; ++round) {
        const std::vector<Bytes> frames = randomFrames(random, 1 + static_cast<int>(random() % 8));
        Bytes stream;
        for (const Bytes& frame : frames) {
            // Stray bytes between frames are dropped.
            for (auto stray = random() % 3; stray > 0; --stray)
                stream.push_back(static_cast<std::uint8_t>(random() % 0x9B));
            stream.insert(stream.end(), frame.begin(), frame.end());
        }
        FrameSplitter splitter;
        Collector out;
        for (std::size_t at = 0; at < stream.size();) {
            const std::size_t size = std::min<std::size_t>(1 + random() % 25, stream.size() - at);
            out.feed(splitter, Bytes(stream.begin() + static_cast<std::ptrdiff_t>(at),
                                     stream.begin() + static_cast<std::ptrdiff_t>(at + size)));
            at += size;
        }
        ASSERT_EQ(out.frames, frames) << "round " << round;
        EXPECT_EQ(splitter.bufferedSize(), 0u);
    }
}

// Garbage full of heads whose frames are already ruled out (the byte at their foot is wrong).
Bytes decoyGarbage(std::size_t triples) {
    Bytes garbage;
    for (std::size_t i = 0; i < triples; ++i)
        garbage.insert(garbage.end(), {0x9B, 0x01, 0x55});
    return garbage;
}

// clear() drops a frame in progress; a full buffer drops garbage but keeps one.
TEST(FrameSplitterTest, ClearDropsAFrameInProgressAndOverflowOnlyGarbage) {
    FrameSplitter splitter(300);
    Collector out;
    out.feed(splitter, hexBytes("9B 03"));
    EXPECT_EQ(splitter.bufferedSize(), 2u);
    splitter.clear();
    out.feed(splitter, hexBytes("11 00 9D")); // would have completed the dropped frame
    EXPECT_TRUE(out.frames.empty());

    for (int i = 0; i < 50; ++i) {
        out.feed(splitter, decoyGarbage(40));
        ASSERT_LE(splitter.bufferedSize(), 300u);
    }
    splitter.clear();

    const Bytes frame = test::deskFrame(0x12, Bytes(200, 0x06));
    out.feed(splitter, decoyGarbage(80));
    out.feed(splitter, Bytes(frame.begin(), frame.begin() + 150));
    EXPECT_EQ(splitter.bufferedSize(), 150u);
    out.feed(splitter, Bytes(frame.begin() + 150, frame.end()));
    ASSERT_EQ(out.frames.size(), 1u);
    EXPECT_EQ(out.frames[0], frame);
}

} // namespace
} // namespace ostrel
