#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <functional>

namespace ostrel {

// A disconnect the session chose (sleep, letting go of the desk): every key is released and
// every movement ends, and the link goes through the transport once the desk has answered a poll
// with no key. Until the desk is linked again, losing the link is expected: no alert.
class PlannedDisconnect : public QObject {
    Q_OBJECT
public:
    // The longest wait for the link to go before `gone` runs anyway.
    static constexpr Scheduler::Duration kDisconnectLimit{3000};

    using QObject::QObject;

    // Lets go of the desk; `gone` runs once the link is down, or after kDisconnectLimit.
    void start(std::function<void()> gone = {});
    // Whether the link is down, or going, because the session let it go.
    bool isPlanned() const { return m_planned; }
    // The link went.
    void linkGone();
    // The desk is linked again: a later loss is a loss.
    void end();

private:
    void letLinkGo();
    void finish();

    bool m_planned = false;
    std::function<void()> m_gone;
    TimerHandle m_limit;
};

} // namespace ostrel
