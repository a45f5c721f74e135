#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <functional>

namespace ostrel::test {

// For tests that run the application in real time: keeps its events flowing until `condition`
// holds, and gives up after `timeoutMs`. Returns whether the condition came true.
inline bool waitUntil(const std::function<bool()>& condition, int timeoutMs) {
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
    }
    return true;
}

} // namespace ostrel::test
