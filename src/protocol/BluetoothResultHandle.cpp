#include "BluetoothResultHandle.h"

#include "BluetoothProtocol.h"
#include "CRC16.h"
#include "CommandType.h"
#include "FrameType.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <span>
#include <utility>

namespace ostrel {
namespace {

using frame::kDeviceInfoFrame;
using frame::kDisplayFrame;
using frame::kLightStripFrame;
using frame::kPollFrame;

// Head, length, type, CRC and foot around the payload positions a type reads.
constexpr std::size_t kEnvelope = 3;
constexpr std::size_t minimumSize(std::size_t lastPositionRead) {
    return lastPositionRead + 1 + kEnvelope;
}

using command::kAnswerCount;

// Poll answers are written while the notification is handled, so the constant ones are built
// once; target height and thickness depend on values the screens set (see valueAnswer).
const std::array<Bytes, kAnswerCount>& constantAnswers() {
    static const std::array<Bytes, kAnswerCount> answers = [] {
        std::array<Bytes, kAnswerCount> built;
        for (int index = 0; index < kAnswerCount; ++index)
            built[static_cast<std::size_t>(index)] =
                index == command::kDeviceInfoRequest
                    ? BluetoothProtocol::cmdForTableInfo()
                    : BluetoothProtocol::cmdForTableResponseType(index);
        return built;
    }();
    return answers;
}

// The display's height text as tenths: "72.5" -> 725, "110" -> 1100; text that does not start
// like a decimal number counts as 0. Integer arithmetic, so 62.3 cannot become 622.
int tenthsOf(const std::string& text) {
    const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    int whole = 0;
    std::size_t i = 0;
    for (; i < text.size() && isDigit(text[i]); ++i)
        whole = whole * 10 + (text[i] - '0');
    const bool hasTenth = i + 1 < text.size() && text[i] == '.' && isDigit(text[i + 1]);
    return whole * 10 + (hasTenth ? text[i + 1] - '0' : 0);
}

bool hasLatinLetter(const std::string& text) {
    return std::any_of(text.begin(), text.end(),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

template <class Callback, class... Args> void notify(const Callback& callback, Args&&... args) {
    if (callback)
        callback(std::forward<Args>(args)...);
}

std::unique_ptr<BluetoothResultHandle>& sharedSlot() {
    static std::unique_ptr<BluetoothResultHandle> instance =
        std::make_unique<BluetoothResultHandle>();
    return instance;
}

} // namespace

BluetoothResultHandle::BluetoothResultHandle() {
    constantAnswers();
}

BluetoothResultHandle& BluetoothResultHandle::sharedInstance() {
    return *sharedSlot();
}

std::unique_ptr<BluetoothResultHandle>
BluetoothResultHandle::replaceSharedInstance(std::unique_ptr<BluetoothResultHandle> instance) {
    if (!instance)
        instance = std::make_unique<BluetoothResultHandle>();
    return std::exchange(sharedSlot(), std::move(instance));
}

void BluetoothResultHandle::setWriter(Writer writer) {
    m_writer = std::move(writer);
}

bool BluetoothResultHandle::crcCheck(const Bytes& frame) {
    if (frame.size() < 4 || frame.front() != 0x9B || frame.back() != 0x9D)
        return false;
    const std::uint16_t sent =
        static_cast<std::uint16_t>((frame[frame.size() - 3] << 8) | frame[frame.size() - 2]);
    return CRC16::crc16(std::span(frame).subspan(1, frame.size() - 4)) == sent;
}

bool BluetoothResultHandle::isPoll(const Bytes& frame) {
    return frame.size() >= minimumSize(2) && frame[2] == kPollFrame && crcCheck(frame);
}

void BluetoothResultHandle::handleTableData(const Bytes& frame) {
    // The type byte must lie before the CRC, or the CRC would not cover it.
    if (frame.size() < minimumSize(2) || !crcCheck(frame))
        return;
    switch (frame[2]) {
    case kPollFrame:
        if (const Bytes* answer = m_writer ? answerPoll() : nullptr)
            m_writer(*answer);
        break;
    case kDisplayFrame:
        if (frame.size() >= minimumSize(5))
            handleDisplay(frame[3], frame[4], frame[5]);
        break;
    case kDeviceInfoFrame:
        if (frame.size() >= minimumSize(14))
            handleDeviceInfo(frame);
        break;
    case kLightStripFrame:
        if (frame.size() >= minimumSize(7))
            handleLightStrip(frame);
        break;
    default:
        break;
    }
}

std::uint64_t BluetoothResultHandle::setCurrentCommandType(int type) {
    std::uint64_t word = m_keyAndPolls.load();
    while (!m_keyAndPolls.compare_exchange_weak(word, withKey(word, type))) {
    }
    return word >> kPollShift;
}

const Bytes* BluetoothResultHandle::answerPoll() {
    std::uint64_t word = m_keyAndPolls.load();
    for (;;) {
        const Bytes* answer = answerFor(keyOf(word));
        // Counted only if the key is still the one answered.
        if (!answer || m_keyAndPolls.compare_exchange_weak(word, word + (kKeyBits + 1)))
            return answer;
    }
}

const Bytes* BluetoothResultHandle::answerFor(int type) {
    if (type == command::kTargetHeight)
        return &valueAnswer(m_targetHeightAnswer, targetHeight(),
                            &BluetoothProtocol::cmdForTableTargetHeight);
    if (type == command::kTabletopThickness)
        return &valueAnswer(m_thicknessAnswer, thicknessHeight(),
                            &BluetoothProtocol::cmdForTableEditTabletopThickness);
    if (type >= 0 && type < kAnswerCount)
        return &constantAnswers()[static_cast<std::size_t>(type)];
    return nullptr;
}

const Bytes& BluetoothResultHandle::valueAnswer(ValueAnswer& cache, int value,
                                                Bytes (*build)(int)) {
    if (cache.value != value) {
        cache.frame = build(value);
        cache.value = value;
    }
    return cache.frame;
}

void BluetoothResultHandle::handleDisplay(int d1, int d2, int d3) {
    classifyDisplay(d1, d2, d3);
    dispatchDisplay(d1);
}

void BluetoothResultHandle::setOrdinaryResult(std::string result) {
    m_result = std::move(result);
    m_state = 1;
    m_errorCode.clear();
}

// The first recogniser that accepts the display wins; the order settles overlaps such as the
// two "-OL" shapes and the version display that starts with "L".
void BluetoothResultHandle::classifyDisplay(int d1, int d2, int d3) {
    using P = BluetoothProtocol;
    if (P::isRST(d1, d2, d3)) {
        m_lock = false;
        setOrdinaryResult("RST");
        m_state = 0;
    } else if (P::isBottom(d1, d2, d3)) {
        setOrdinaryResult("Bottom");
    } else if (P::isError(d1, d2, d3)) {
        m_lock = false;
        m_result = P::getError(d1, d2, d3);
        m_state = 2;
        m_errorCode = m_result;
    } else if (P::isOFF(d1, d2, d3)) {
        m_result = kPowerOff;
    } else if (P::isOL(d1, d2, d3)) {
        m_result = kSlideDown;
    } else if (P::isOn(d1, d2, d3)) {
        m_result = kPowerOn;
    } else if (P::isTop(d1, d2, d3)) {
        setOrdinaryResult("Top");
    } else if (P::isLRChange(d1, d2, d3)) {
        setOrdinaryResult("LR");
    } else if (P::isLOC(d1, d2, d3)) {
        // Only the lock changes: the previous result is dispatched again.
        m_lock = true;
    } else if (P::isMemoryHeight(d1, d2, d3)) {
        setOrdinaryResult("S-");
    } else if (P::isVersion(d1, d2, d3)) {
        setOrdinaryResult("L");
    } else if (P::isBackward(d1, d2, d3)) {
        setOrdinaryResult("A-");
    } else {
        m_lock = false;
        setOrdinaryResult(P::getNumber(d1, d2, d3));
        m_currentHeight = tenthsOf(m_result);
    }
}

void BluetoothResultHandle::dispatchDisplay(int d1) {
    notify(bluetoothResultHandle_ChildLock, m_lock);
    const std::string& r = m_result;
    if (r == "RST")
        notify(bluetoothResultHandle_RST, r);
    else if (r == "Bottom")
        notify(bluetoothResultHandle_Bottom, r);
    else if (r == "Top")
        notify(bluetoothResultHandle_Top, r);
    else if (r == kSlideDown)
        notify(bluetoothResultHandle_SlideDownward, r);
    else if (r == "-OL" || r.starts_with('E'))
        notify(bluetoothResultHandle_Error, r);
    else if (r == "S-")
        notify(bluetoothResultHandle_Manage, r);
    else if (r == "L" || r == "A-" || r == kPowerOff)
        notify(bluetoothResultHandle_Other, r);
    else if (!hasLatinLetter(r) && d1 != 0x00 && d1 != 0x09 && d1 != 0x5C)
        // A blank, colon or "o" first digit is not a height reading.
        notify(bluetoothResultHandle_HeightChange, m_currentHeight);
}

void BluetoothResultHandle::handleDeviceInfo(const Bytes& frame) {
    DeviceModel model;
    model.mUnit = frame[3];
    model.maxHeight = frame[4] | (frame[5] << 8);
    model.minHeight = frame[6] | (frame[7] << 8);
    model.sensitivity = frame[8];
    model.supportChildLock = (frame[9] & 0x01) != 0;
    model.tableThickness = frame[14];
    notify(bluetoothResultHandle_DeviceInfo, model);
    // The information poll has been answered; go back to no key.
    std::uint64_t word = m_keyAndPolls.load();
    while (keyOf(word) == command::kDeviceInfoRequest &&
           !m_keyAndPolls.compare_exchange_weak(word, withKey(word, command::kNoKey))) {
    }
}

void BluetoothResultHandle::handleLightStrip(const Bytes& frame) const {
    // The desk sends green before red.
    notify(bluetoothResultHandle_LightColorInfo, frame[3], frame[4], frame[6], frame[5], frame[7]);
}

} // namespace ostrel
