#include "sim/DeskFrames.h"

#include "protocol/BluetoothProtocol.h"
#include "protocol/CRC16.h"
#include "protocol/FrameType.h"

#include <algorithm>

namespace ostrel {

namespace {

std::uint8_t byteAt(int value, int index) {
    return static_cast<std::uint8_t>((value >> (8 * index)) & 0xFF);
}

std::uint8_t flag(bool value) {
    return value ? 1 : 0;
}

} // namespace

Bytes DeskFrames::frame(std::uint8_t type, const Bytes& payload) {
    Bytes body(payload.size() + 2);
    body[0] = static_cast<std::uint8_t>(payload.size() + 4); // counts type, payload and CRC
    body[1] = type;
    std::copy(payload.begin(), payload.end(), body.begin() + 2);
    return BluetoothProtocol::appendHeadAndFoot(CRC16::appendCRC16(body));
}

Bytes DeskFrames::poll() {
    return frame(frame::kPollFrame, {});
}

Bytes DeskFrames::display(const SegmentCodes& codes) {
    return frame(frame::kDisplayFrame, Bytes(codes.begin(), codes.end()));
}

Bytes DeskFrames::deviceInfo(const DeskInfo& info) {
    const Bytes payload{
        flag(info.inchDisplay),
        byteAt(info.maxHeight, 0),
        byteAt(info.maxHeight, 1),
        byteAt(info.minHeight, 0),
        byteAt(info.minHeight, 1),
        byteAt(info.sensitivity, 0),
        flag(info.supportChildLock),
        0,
        0,
        0,
        0,
        byteAt(info.tableThickness, 0),
    };
    return frame(frame::kDeviceInfoFrame, payload);
}

Bytes DeskFrames::lightStrip(const DeskLightStrip& light) {
    const Bytes payload{byteAt(light.switchStatus, 0), byteAt(light.mode, 0),
                        byteAt(light.green, 0), byteAt(light.red, 0), byteAt(light.blue, 0)};
    return frame(frame::kLightStripFrame, payload);
}

} // namespace ostrel
