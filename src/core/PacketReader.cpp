#include "PacketReader.h"

#include "PacketSocket.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ostrel {

PacketReader::PacketReader(int descriptor, QObject* parent)
    : QObject(parent), m_descriptor(descriptor) {
    // The thread waits in recv: one call per packet, woken by a shutdown to stop.
    ::fcntl(m_descriptor, F_SETFL, ::fcntl(m_descriptor, F_GETFL) & ~O_NONBLOCK);
}

PacketReader::~PacketReader() {
    if (m_thread.joinable()) {
        m_stopping = true;
        ::shutdown(m_descriptor, SHUT_RDWR);
        m_thread.join();
    }
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
    std::uint8_t buffer[PacketSocket::kLargestPacket];
    for (;;) {
        const ssize_t size = ::recv(m_descriptor, buffer, sizeof buffer, 0);
        if (size > 0)
            deliver({buffer, static_cast<std::size_t>(size)});
        else if (size == 0 || errno != EINTR)
            break;
    }
    if (!m_stopping)
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
