#include "ProtocolFuzzer.h"

#include "protocol/BluetoothProtocol.h"
#include "protocol/BluetoothResultHandle.h"
#include "protocol/CRC16.h"
#include "protocol/FrameSplitter.h"

#include <algorithm>
#include <string>

namespace ostrel::fuzz {
namespace {

constexpr std::size_t kBound = 512;

void require(bool condition) {
    if (!condition)
        __builtin_trap();
}

bool isWellFormed(const Bytes& frame) {
    return frame.size() >= 2 && frame.front() == 0x9B && frame.back() == 0x9D &&
           frame.size() == std::size_t{frame[1]} + 2;
}

// The same frame with a CRC that passes, so random streams reach the classifier's branches.
Bytes withRepairedCrc(const Bytes& frame) {
    if (frame.size() < 4)
        return frame;
    const Bytes body(frame.begin() + 1, frame.end() - 3);
    return BluetoothProtocol::appendHeadAndFoot(CRC16::appendCRC16(body));
}

void installCheckingCallbacks(BluetoothResultHandle& handle) {
    handle.setWriter([](const Bytes& answer) {
        require(BluetoothResultHandle::crcCheck(answer) && isWellFormed(answer));
    });
    const auto text = [&handle](const std::string& result) { require(result == handle.result()); };
    handle.bluetoothResultHandle_RST = text;
    handle.bluetoothResultHandle_Bottom = text;
    handle.bluetoothResultHandle_Top = text;
    handle.bluetoothResultHandle_SlideDownward = text;
    handle.bluetoothResultHandle_Error = [&handle](const std::string& result) {
        require(result == handle.errorCode() || result == "-OL" || result.starts_with('E'));
    };
    handle.bluetoothResultHandle_Manage = text;
    handle.bluetoothResultHandle_Other = text;
    handle.bluetoothResultHandle_HeightChange = [&handle](int height) {
        require(height == handle.currentHeight() && height >= 0);
    };
    handle.bluetoothResultHandle_ChildLock = [&handle](bool lock) {
        require(lock == handle.lock());
    };
    handle.bluetoothResultHandle_DeviceInfo = [](const DeviceModel& model) {
        require(model.maxHeight <= 0xFFFF && model.minHeight <= 0xFFFF);
    };
    handle.bluetoothResultHandle_LightColorInfo = [](int sw, int mode, int r, int g, int b) {
        require(std::max({sw, mode, r, g, b}) <= 0xFF && std::min({sw, mode, r, g, b}) >= 0);
    };
}

} // namespace

std::size_t runProtocolInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    BluetoothResultHandle handle;
    installCheckingCallbacks(handle);
    handle.setCurrentCommandType(static_cast<std::int8_t>(data[0]));
    const bool repairCrc = (data[1] & 0x01) != 0;
    const std::size_t chunkSize = 1 + (data[1] >> 1) % 40;

    const Bytes stream(data + 2, data + size);
    FrameSplitter splitter(kBound);
    std::size_t accepted = 0;
    for (std::size_t at = 0; at < stream.size(); at += chunkSize) {
        const auto end =
            stream.begin() + static_cast<std::ptrdiff_t>(std::min(at + chunkSize, stream.size()));
        splitter.append(Bytes(stream.begin() + static_cast<std::ptrdiff_t>(at), end),
                        [&](const Bytes& frame) {
                            require(isWellFormed(frame));
                            const Bytes checked = repairCrc ? withRepairedCrc(frame) : frame;
                            accepted += BluetoothResultHandle::crcCheck(checked) ? 1 : 0;
                            handle.handleTableData(checked);
                        });
        require(splitter.bufferedSize() <= kBound);
    }

    // The hex converter must finish on any text, with at most one byte per two characters
    // (plus one for an odd tail).
    const std::string text(
        stream.begin(),
        stream.begin() + static_cast<std::ptrdiff_t>(std::min<std::size_t>(stream.size(), 64)));
    require(BluetoothProtocol::dataForHexString(text)->size() <= text.size() / 2 + 1);
    return accepted;
}

} // namespace ostrel::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ostrel::fuzz::runProtocolInput(data, size);
    return 0;
}
