#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <QPointer>
#include <vector>

namespace ostrel {

class DeskSession;

// Stores a preset on the desk by tapping its keypad: the memory key for 0.7 s, a pause, then the
// preset key for 0.7 s. Every key is a held key, so the sequence ends at once, with nothing held
// and no later step, when the session lets go of its keys (link loss, session end, quit), when
// it is cancelled, and when its owner goes.
class MemoryKeySequence : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kStep{700};

    explicit MemoryKeySequence(DeskSession* session, QObject* parent = nullptr);
    ~MemoryKeySequence() override;

    // Starts tapping `presetKey` (9..12), replacing a sequence under way.
    void start(int presetKey);
    void cancel();
    bool isRunning() const { return !m_steps.empty(); }

private:
    void dropSteps();
    void step(Scheduler::Duration at, int key, bool last);

    QPointer<DeskSession> m_session;
    std::vector<TimerHandle> m_steps;
};

} // namespace ostrel
