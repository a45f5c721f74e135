#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"
#include "session/HeldKeyOwner.h"

#include <QObject>
#include <functional>
#include <vector>

namespace ostrel {

// Stores a preset on the desk by tapping its keypad: the memory key for 0.7 s, a pause, then the
// preset key for 0.7 s. It runs to its end whatever page started it; it ends early, with nothing
// held and nothing recorded, only when the key is taken from it (the link lost, the session
// ended, another source pressing a key), when it is cancelled, or when its owner goes.
class MemoryKeySequence : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kStep{700};

    explicit MemoryKeySequence(QObject* parent = nullptr);
    ~MemoryKeySequence() override;

    // Starts tapping `presetKey` (9..12), replacing a sequence under way; `done` runs once the
    // desk has had every key.
    void start(int presetKey, std::function<void()> done = {});
    void cancel();
    bool isRunning() const { return !m_steps.empty(); }

private:
    void dropSteps();
    void step(Scheduler::Duration at, int key);

    HeldKeyOwner::Claim m_claim;
    std::vector<TimerHandle> m_steps;
    std::function<void()> m_done;
};

} // namespace ostrel
