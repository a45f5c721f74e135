#pragma once

#include "platform/TerminationSignals.h"

class QSocketNotifier;

namespace ostrel {

// SIGTERM, SIGINT and SIGHUP through a socket pair that the handler writes and the event loop
// reads. One instance at a time.
class UnixTerminationSignals : public TerminationSignals {
    Q_OBJECT
public:
    explicit UnixTerminationSignals(QObject* parent = nullptr);
    ~UnixTerminationSignals() override;

private:
    static void onSignal(int signalNumber);
    void readSignal();

    QSocketNotifier* m_notifier = nullptr;
};

} // namespace ostrel
