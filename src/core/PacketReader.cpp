#include "PacketReader.h"

#include "PacketSocket.h"

#include <cerrno>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ostrel {

PacketReader::PacketReader(int descriptor, QObject* parent)
    : QObject(parent), m_descriptor(descriptor), m_wake(::eventfd(0, EFD_CLOEXEC)) {}

PacketReader::~PacketReader() {
    if (m_thread.joinable()) {
        // The thread also ends by itself at a hang-up; the wake then goes unread.
        const std::uint64_t stop = 1;
        [[maybe_unused]] const ssize_t written = ::write(m_wake, &stop, sizeof stop);
        m_thread.join();
    }
    ::close(m_wake);
    ::close(m_descriptor);
}

void PacketReader::start() {
    if (!m_thread.joinable())
        m_thread = std::thread([this] { run(); });
}

void PacketReader::setSink(std::shared_ptr<PacketSink> sink) {
    const std::lock_guard held(m_sinkLock);
    m_sink.swap(sink); // the old sink goes with `sink`, after the lock
}

void PacketReader::run() {
    pollfd watched[2] = {{m_descriptor, POLLIN, 0}, {m_wake, POLLIN, 0}};
    std::uint8_t buffer[PacketSocket::kLargestPacket];
    for (;;) {
        if (::poll(watched, 2, -1) < 0 && errno != EINTR)
            break;
        if (watched[1].revents != 0)
            return;
        const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, MSG_DONTWAIT);
        if (size > 0)
            deliver({buffer, static_cast<std::size_t>(size)});
        else if (size == 0 || (errno != EAGAIN && errno != EINTR))
            break;
    }
    emit hungUp();
}

void PacketReader::deliver(std::span<const std::uint8_t> packet) {
    const std::lock_guard held(m_sinkLock);
    if (m_sink)
        m_sink->received(packet);
    else
        emit received(QByteArray(reinterpret_cast<const char*>(packet.data()),
                                 static_cast<qsizetype>(packet.size())));
}

} // namespace ostrel
