// Poll-to-answer latency through the whole host side: a virtual desk's keypad poll leaves as a
// notification, is cut into a frame, classified, answered and written back through the facade
// to the desk. Virtual time drives the desk; the latency itself is wall-clock time.
#include "core/ManualScheduler.h"
#include "protocol/BluetoothResultHandle.h"
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "transport/RBBluetoothManager.h"

#include <QCoreApplication>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <vector>

namespace ostrel {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr std::uint8_t kPollType = 0x11;

double percentile(std::vector<double> samples, double fraction) {
    std::sort(samples.begin(), samples.end());
    const auto index = static_cast<std::size_t>(fraction * static_cast<double>(samples.size() - 1));
    return samples[index];
}

void BM_PollToAnswerThroughFacade(benchmark::State& state) {
    ManualScheduler scheduler;
    Scheduler* previousScheduler = Scheduler::setInstance(&scheduler);
    auto* central = new VirtualCentral;
    auto previousTool =
        BluetoothTool::replaceShareInstance(std::make_unique<BluetoothTool>(central));
    auto previousHandle =
        BluetoothResultHandle::replaceSharedInstance(std::make_unique<BluetoothResultHandle>());
    auto previousFacade =
        RBBluetoothManager::replaceSharedInstance(std::make_unique<RBBluetoothManager>());

    VirtualDesk desk;
    Clock::time_point pollSent;
    std::vector<double> latencies; // microseconds
    // Connected before the central's own connection, so it stamps the poll first.
    QObject::connect(&desk, &VirtualDesk::notified, [&](const Bytes& value) {
        if (value.size() > 2 && value[2] == kPollType)
            pollSent = Clock::now();
    });
    central->addDesk(&desk);
    bool awaitingAnswer = false;
    central->setWriteObserver([&](const GattPath&, const Bytes&) {
        if (!awaitingAnswer)
            return;
        awaitingAnswer = false;
        latencies.push_back(
            std::chrono::duration<double, std::micro>(Clock::now() - pollSent).count());
    });

    RBBluetoothManager& facade = RBBluetoothManager::sharedInstance();
    facade.connectDeviceWithPeripheralName(
        desk.name(), nullptr, [](const std::optional<Bytes>& frame, const OptionalError&) {
            if (frame)
                BluetoothResultHandle::sharedInstance().handleTableData(*frame);
        });
    scheduler.advance(2s); // found, connected, subscribed, GATT known
    // Alternate keys so the desk keeps moving and reporting between its limits.
    int iteration = 0;
    for (auto _ : state) {
        BluetoothResultHandle::sharedInstance().setCurrentCommandType((iteration++ / 200) % 2 + 1);
        awaitingAnswer = true;
        scheduler.advance(desk.config().pollPeriod);
    }
    if (!latencies.empty()) {
        state.counters["median_us"] = percentile(latencies, 0.5);
        state.counters["p99_us"] = percentile(latencies, 0.99);
        state.counters["answered"] =
            static_cast<double>(latencies.size()) / static_cast<double>(state.iterations());
    }

    RBBluetoothManager::replaceSharedInstance(std::move(previousFacade));
    BluetoothTool::replaceShareInstance(std::move(previousTool));
    BluetoothResultHandle::replaceSharedInstance(std::move(previousHandle));
    Scheduler::setInstance(previousScheduler);
}
BENCHMARK(BM_PollToAnswerThroughFacade)->Iterations(20000);

} // namespace
} // namespace ostrel

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
