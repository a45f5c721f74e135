#include "PacketSender.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace ostrel {

PacketSender::PacketSender(int descriptor)
    : m_descriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)) {}

PacketSender::~PacketSender() {
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool PacketSender::send(const void* data, std::size_t size) const {
    return ::send(m_descriptor, data, size, MSG_NOSIGNAL | MSG_DONTWAIT) ==
           static_cast<ssize_t>(size);
}

} // namespace ostrel
