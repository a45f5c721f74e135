#pragma once

#include <QObject>

class QSocketNotifier;

namespace ostrel {

// SIGTERM, SIGINT and SIGHUP (kill, Ctrl+C, the end of the desktop session) arrive here as a
// Qt signal on the event loop, so the application quits by its ordinary path and lets go of the
// desk on the way instead of dying with a key held. One instance at a time.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    explicit TerminationSignals(QObject* parent = nullptr);
    ~TerminationSignals() override;

signals:
    void received(int signalNumber);

private:
    static void onSignal(int signalNumber);
    void readSignal();

    QSocketNotifier* m_notifier = nullptr;
};

} // namespace ostrel
