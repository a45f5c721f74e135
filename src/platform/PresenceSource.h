#pragma once

#include <QObject>
#include <chrono>

namespace ostrel {

// One thing the desktop tells about the user: an idle time or a locked screen. A source that
// knows nothing (no such service, or it went away) says the user is there.
class PresenceSource : public QObject {
    Q_OBJECT
public:
    using Duration = std::chrono::milliseconds;

    using QObject::QObject;

    bool isAway() const { return m_away; }
    // Idle sources count the user away after `idle` without input; lock sources ignore it.
    virtual void setIdleLimit(Duration idle) { (void)idle; }

signals:
    void awayChanged();

protected:
    void setAway(bool away) {
        if (away == m_away)
            return;
        m_away = away;
        emit awayChanged();
    }

private:
    bool m_away = false;
};

} // namespace ostrel
