#include "ProtocolTestSupport.h"
#include "protocol/BluetoothResultHandle.h"
#include "protocol/FrameSplitter.h"

#include <benchmark/benchmark.h>
#include <vector>

namespace ostrel {
namespace {

using test::deskFrame;

// What a moving desk shows: heights with and without a decimal point, and now and then a word.
std::vector<Bytes> displayFrames() {
    const std::uint8_t digits[] = {0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};
    std::vector<Bytes> frames;
    for (int tenths = 600; tenths < 1000; tenths += 7)
        frames.push_back(deskFrame(
            0x12, {digits[tenths / 100], static_cast<std::uint8_t>(digits[tenths / 10 % 10] | 0x80),
                   digits[tenths % 10]}));
    for (int cm = 100; cm <= 120; ++cm)
        frames.push_back(deskFrame(0x12, {0x06, digits[cm / 10 % 10], digits[cm % 10]}));
    frames.push_back(deskFrame(0x12, {0x79, 0x06, 0x3F}));
    frames.push_back(deskFrame(0x12, {0x38, 0x3F, 0x39}));
    frames.push_back(deskFrame(0x12, {0x31, 0x3F, 0x73}));
    return frames;
}

void BM_ClassifyDisplayFrames(benchmark::State& state) {
    BluetoothResultHandle handle;
    int lastHeight = 0;
    handle.bluetoothResultHandle_HeightChange = [&](int height) { lastHeight = height; };
    handle.bluetoothResultHandle_ChildLock = [](bool lock) { benchmark::DoNotOptimize(lock); };
    const std::vector<Bytes> frames = displayFrames();
    std::size_t next = 0;
    for (auto _ : state) {
        handle.handleTableData(frames[next]);
        next = next + 1 == frames.size() ? 0 : next + 1;
    }
    benchmark::DoNotOptimize(lastHeight);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_ClassifyDisplayFrames);

// A keypad poll arriving as one notification until its answer reaches the writer.
void BM_PollToAnswer(benchmark::State& state) {
    BluetoothResultHandle handle;
    std::size_t written = 0;
    handle.setWriter([&](const Bytes& answer) { written += answer.size(); });
    handle.setCurrentCommandType(1);
    FrameSplitter splitter;
    const Bytes poll = deskFrame(0x11, {0x00});
    const auto onFrame = [&](const Bytes& frame) { handle.handleTableData(frame); };
    for (auto _ : state)
        splitter.append(poll, onFrame);
    if (written != static_cast<std::size_t>(state.iterations()) * 8)
        state.SkipWithError("a poll went unanswered");
}
BENCHMARK(BM_PollToAnswer);

} // namespace
} // namespace ostrel

BENCHMARK_MAIN();
