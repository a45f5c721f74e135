#include "ProtocolFuzzer.h"
#include "ProtocolTestSupport.h"

#include <gtest/gtest.h>
#include <random>

namespace ostrel {
namespace {

// The fuzz entry point over deterministic inputs: pure noise, and streams of well-formed frames
// of every desk type mixed with noise. A broken invariant traps and fails the test.
TEST(ProtocolFuzzReplayTest, RandomStreamsKeepEveryInvariant) {
    std::mt19937 random(7);
    const auto byte = [&random] { return static_cast<std::uint8_t>(random()); };
    const std::uint8_t types[] = {0x11, 0x12, 0x82, 0x9F, 0x02};
    std::size_t accepted = 0;
    for (int round = 0; round < 3000; ++round) {
        Bytes input{byte(), byte()};
        if (round % 2 == 0) {
            for (auto n = random() % 600; n > 0; --n)
                input.push_back(byte());
        } else {
            for (auto frames = random() % 12; frames > 0; --frames) {
                for (auto noise = random() % 4; noise > 0; --noise)
                    input.push_back(byte());
                Bytes payload(random() % 16);
                for (auto& b : payload)
                    b = byte();
                const Bytes frame = test::deskFrame(types[random() % 5], payload);
                input.insert(input.end(), frame.begin(), frame.end());
            }
        }
        accepted += fuzz::runProtocolInput(input.data(), input.size());
    }
    EXPECT_GT(accepted, 3000u) << "the streams must reach the classifier";
}

} // namespace
} // namespace ostrel
