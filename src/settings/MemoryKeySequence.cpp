#include "settings/MemoryKeySequence.h"

#include "protocol/CommandType.h"
#include "session/DeskSession.h"

namespace ostrel {

MemoryKeySequence::MemoryKeySequence(DeskSession* session, QObject* parent)
    : QObject(parent), m_session(session) {
    // The session has already released the key: only the steps still to come must go.
    if (session)
        connect(session, &DeskSession::heldKeysReleased, this, &MemoryKeySequence::dropSteps);
}

MemoryKeySequence::~MemoryKeySequence() {
    cancel();
}

void MemoryKeySequence::start(int presetKey) {
    cancel();
    if (!m_session)
        return;
    m_session->holdKey(command::kMemoryKey);
    step(kStep, command::kNoKey, false);
    step(2 * kStep, presetKey, false);
    step(3 * kStep, command::kNoKey, true);
}

void MemoryKeySequence::cancel() {
    if (!isRunning())
        return;
    dropSteps();
    if (m_session)
        m_session->releaseKey();
}

void MemoryKeySequence::dropSteps() {
    for (TimerHandle& handle : m_steps)
        handle.cancel();
    m_steps.clear();
}

void MemoryKeySequence::step(Scheduler::Duration at, int key, bool last) {
    m_steps.push_back(Scheduler::instance().after(at, this, [this, key, last] {
        if (last)
            m_steps.clear();
        if (m_session)
            m_session->holdKey(key);
    }));
}

} // namespace ostrel
