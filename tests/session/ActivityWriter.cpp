// Stands at a desk in virtual time, one virtual second per step, as fast as it can, printing the
// virtual milliseconds after each step; the kill test ends it with SIGKILL at some moment.
#include "core/ManualScheduler.h"
#include "session/ActivityRecorder.h"
#include "store/ActivityStore.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    if (argc != 2)
        return 2;
    ostrel::ManualScheduler scheduler;
    ostrel::Scheduler::setInstance(&scheduler);
    ostrel::ActivityStore store(QString::fromLocal8Bit(argv[1]));
    ostrel::ActivityRecorder recorder(store);
    recorder.setDesk(QStringLiteral("Desk"));
    recorder.setHeight(1100);
    for (;;) {
        scheduler.advance(std::chrono::seconds(1));
        std::printf("%lld\n", static_cast<long long>(scheduler.now().count()));
        std::fflush(stdout);
    }
}
