#pragma once

#include <cstddef>

namespace ostrel {

// The sending end of a connected packet socket for any thread: a duplicate descriptor of its
// own, so the holder that closes the original (on the GUI thread) never closes it under a
// sender on another thread. Closed with the object.
class PacketSender {
public:
    explicit PacketSender(int descriptor);
    ~PacketSender();
    PacketSender(const PacketSender&) = delete;
    PacketSender& operator=(const PacketSender&) = delete;

    // One packet, without blocking; false when it did not go out whole.
    bool send(const void* data, std::size_t size) const;

private:
    int m_descriptor;
};

} // namespace ostrel
