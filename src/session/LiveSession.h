#pragma once

#include <QObject>
#include <QPointer>

namespace ostrel {

class DeskSession;

// The desk session of the control screen that is showing, if any. Whatever drives the desk
// from outside the window (the session-bus interface) finds the session here, so the session
// never needs to know who drives it.
class LiveSession : public QObject {
    Q_OBJECT
public:
    static LiveSession& instance();

    DeskSession* current() const { return m_current; }
    // A session announces itself when it starts and withdraws as it ends.
    void setCurrent(DeskSession* session);
    void withdraw(DeskSession* session);

signals:
    void currentChanged(ostrel::DeskSession* session);

private:
    QPointer<DeskSession> m_current;
};

} // namespace ostrel
