#include "PacketSocket.h"

#include <QPointer>
#include <QSocketNotifier>
#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ostrel {

PacketSocket::PacketSocket(int descriptor, QObject* parent)
    : QObject(parent), m_descriptor(descriptor),
      m_notifier(new QSocketNotifier(descriptor, QSocketNotifier::Read, this)) {
    ::fcntl(m_descriptor, F_SETFL, ::fcntl(m_descriptor, F_GETFL) | O_NONBLOCK);
    // A hang-up or an error wakes the read notifier too; reading tells which it was.
    connect(m_notifier, &QSocketNotifier::activated, this, &PacketSocket::readable);
}

PacketSocket::~PacketSocket() {
    m_notifier->setEnabled(false);
    ::close(m_descriptor);
}

std::pair<int, int> PacketSocket::createPair() {
    int ends[2] = {-1, -1};
    if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends) != 0)
        return {-1, -1};
    return {ends[0], ends[1]};
}

int PacketSocket::send(const void* data, std::size_t size) {
    const ssize_t sent = ::send(m_descriptor, data, size, MSG_NOSIGNAL | MSG_DONTWAIT);
    return sent == static_cast<ssize_t>(size) ? 0 : (sent < 0 ? errno : EMSGSIZE);
}

void PacketSocket::setReading(bool reading) {
    m_notifier->setEnabled(reading);
}

void PacketSocket::readable() {
    const QPointer<PacketSocket> alive(this);
    char buffer[kLargestPacket];
    while (alive) {
        const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, MSG_DONTWAIT);
        if (size < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (size <= 0) {
            // Stop watching first: a hung-up socket stays readable for ever.
            m_notifier->setEnabled(false);
            emit hungUp();
            return;
        }
        if (const std::shared_ptr<PacketSink> sink = m_sink)
            sink->received(
                {reinterpret_cast<const std::uint8_t*>(buffer), static_cast<std::size_t>(size)});
        else
            emit received(QByteArray(buffer, size));
    }
}

} // namespace ostrel
