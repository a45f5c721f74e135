#include "platform/UnixTerminationSignals.h"

#include <QSocketNotifier>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace ostrel {

namespace {

constexpr int kTerminationSignals[] = {SIGTERM, SIGINT, SIGHUP};

// The handler may only write to a descriptor: the event loop reads the other end.
int g_pipe[2] = {-1, -1};

} // namespace

UnixTerminationSignals::UnixTerminationSignals(QObject* parent) : TerminationSignals(parent) {
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, g_pipe) != 0)
        return;
    m_notifier = new QSocketNotifier(g_pipe[1], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixTerminationSignals::readSignal);
    struct sigaction action {};
    action.sa_handler = &UnixTerminationSignals::onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    for (int number : kTerminationSignals)
        ::sigaction(number, &action, nullptr);
}

UnixTerminationSignals::~UnixTerminationSignals() {
    for (int number : kTerminationSignals)
        ::signal(number, SIG_DFL);
    for (int& end : g_pipe) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}

void UnixTerminationSignals::onSignal(int signalNumber) {
    const char number = static_cast<char>(signalNumber);
    [[maybe_unused]] const ssize_t written = ::write(g_pipe[0], &number, 1);
}

void UnixTerminationSignals::readSignal() {
    char number = 0;
    if (::read(g_pipe[1], &number, 1) == 1)
        emit received(number);
}

} // namespace ostrel
