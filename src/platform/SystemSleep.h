#pragma once

#include <QObject>
#include <memory>

namespace ostrel {

// The system's sleep and shutdown, announced before they happen. A delay lock taken in advance
// makes the system wait (a few seconds at most) until the lock is let go, so the application
// can let go of the desk first. Without such a service nothing is ever announced.
class SystemSleep : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    static std::unique_ptr<SystemSleep> forDesktop();

    // Takes the delay lock unless one is held; a refusal leaves the application without one.
    virtual void holdOff() = 0;
    // Lets the system go on.
    virtual void letGo() = 0;
    virtual bool isHeld() const = 0;

signals:
    // Sleep or shutdown is about to happen.
    void coming();
    // Back from sleep.
    void resumed();
};

} // namespace ostrel
