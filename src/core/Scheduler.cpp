#include "Scheduler.h"

#include "QtScheduler.h"

namespace ostrel {

namespace {
Scheduler* g_installed = nullptr;
}

Scheduler& Scheduler::instance() {
    if (g_installed)
        return *g_installed;
    static QtScheduler realTime;
    return realTime;
}

Scheduler* Scheduler::setInstance(Scheduler* scheduler) {
    Scheduler* previous = g_installed;
    g_installed = scheduler;
    return previous;
}

} // namespace ostrel
