// The activity page over a year of made-up days: from nothing to the page open with the 30-day
// chart drawn (a picture of the page is rendered, so the chart really paints).
#include "session/ActivityRecorder.h"
#include "settings/ActivityView.h"
#include "sim/ActivitySample.h"
#include "store/ActivityStore.h"

#include <QApplication>
#include <QChart>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace ostrel {
namespace {

void BM_ActivityPageOpensWith30DayChart(benchmark::State& state) {
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("activity.sqlite"));
    {
        ActivityStore store(path);
        ActivitySample::fill(store, QDateTime::currentDateTime(), ActivityStore::kKeptDays);
    }
    ActivityStore store(path);
    ActivityRecorder recorder(store);
    for (auto _ : state) {
        ActivityView view(recorder);
        view.resize(460, 640);
        view.setChartDays(30);
        const QPixmap picture = view.grab();
        benchmark::DoNotOptimize(picture.cacheKey());
    }
    state.counters["days"] = double(ActivityStore::kKeptDays);
}
BENCHMARK(BM_ActivityPageOpensWith30DayChart)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace ostrel

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
