#pragma once

#include <QObject>
#include <memory>

namespace ostrel {

// Requests from outside to end the process (kill, Ctrl+C, the end of the desktop session),
// delivered on the event loop, so the application quits by its ordinary path and lets go of the
// desk on the way instead of dying with a key held.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    // SIGTERM, SIGINT and SIGHUP.
    static std::unique_ptr<TerminationSignals> forDesktop();

signals:
    void received(int signalNumber);
};

} // namespace ostrel
