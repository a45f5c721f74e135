#pragma once

#include "protocol/Bytes.h"
#include "protocol/CRC16.h"

#include <sstream>
#include <string>

namespace ostrel::test {

// "9B 06 02" -> bytes; written independently of the converter under test.
inline Bytes hexBytes(const std::string& text) {
    std::istringstream in(text);
    Bytes out;
    unsigned value = 0;
    while (in >> std::hex >> value)
        out.push_back(static_cast<std::uint8_t>(value));
    return out;
}

// `body` with its CRC between head and foot, whatever its length byte says.
inline Bytes wrapBody(const Bytes& body) {
    Bytes frame{0x9B};
    for (std::uint8_t byte : CRC16::appendCRC16(body))
        frame.push_back(byte);
    frame.push_back(0x9D);
    return frame;
}

// A valid desk frame of `type` carrying `payload`.
inline Bytes deskFrame(std::uint8_t type, const Bytes& payload) {
    Bytes body{static_cast<std::uint8_t>(payload.size() + 4), type};
    for (std::uint8_t byte : payload) // a loop, since gcc 12 misreads an inlined empty insert
        body.push_back(byte);
    return wrapBody(body);
}

} // namespace ostrel::test
