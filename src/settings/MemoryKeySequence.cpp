#include "settings/MemoryKeySequence.h"

#include "protocol/CommandType.h"

#include <utility>

namespace ostrel {

MemoryKeySequence::MemoryKeySequence(QObject* parent) : QObject(parent) {}

MemoryKeySequence::~MemoryKeySequence() {
    cancel();
}

void MemoryKeySequence::start(int presetKey, std::function<void()> done) {
    cancel();
    m_done = std::move(done);
    m_claim = HeldKeyOwner::instance().claim(HeldKeyOwner::Source::Settings, command::kMemoryKey,
                                             this, [this](HeldKeyOwner::Ending) { dropSteps(); });
    step(kStep, command::kNoKey);
    step(2 * kStep, presetKey);
    m_steps.push_back(Scheduler::instance().after(3 * kStep, this, [this] {
        m_claim.release();
        m_steps.clear();
        if (auto finished = std::exchange(m_done, {}))
            finished();
    }));
}

void MemoryKeySequence::cancel() {
    if (!isRunning())
        return;
    dropSteps();
    m_claim.release();
}

void MemoryKeySequence::dropSteps() {
    for (TimerHandle& handle : m_steps)
        handle.cancel();
    m_steps.clear();
    m_done = {};
}

void MemoryKeySequence::step(Scheduler::Duration at, int key) {
    m_steps.push_back(Scheduler::instance().after(at, this, [this, key] { m_claim.hold(key); }));
}

} // namespace ostrel
