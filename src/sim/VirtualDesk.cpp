#include "sim/VirtualDesk.h"

#include "core/Scheduler.h"
#include "protocol/BluetoothResultHandle.h"
#include "protocol/FrameSplitter.h"
#include "protocol/FrameType.h"
#include "sim/DeskFrames.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace ostrel {

namespace {

using namespace frame;
constexpr int kCustomColourMode = 9;

constexpr int kNoKey = DeskDrive::kNoKey;
constexpr auto kPowerOnShown = 1s;
constexpr double kCmPerInch = 2.54;

// Head, length, type, two CRC bytes and foot around every payload.
constexpr std::size_t kEnvelopeSize = 6;

} // namespace

VirtualDesk::VirtualDesk(VirtualDeskConfig config, QObject* parent)
    : QObject(parent), m_config(std::move(config)),
      m_drive(DeskMotor(m_config.speedCmPerSecond, m_config.minHeight, m_config.maxHeight,
                        m_config.startHeight),
              m_faults, [this] { updateTicking(); }),
      m_splitter(std::make_unique<FrameSplitter>()), m_sensitivity(m_config.sensitivity),
      m_thickness(m_config.tableThickness) {
    // A zero period would make the poll timer spin.
    m_config.pollPeriod = std::max(m_config.pollPeriod, std::chrono::milliseconds(1));
}

VirtualDesk::~VirtualDesk() = default;

QString VirtualDesk::name() const {
    return QString::fromStdString(m_config.name);
}

// Type 1 desks use one characteristic both ways; every other type has the type 2 layout.
QString VirtualDesk::serviceUuid() const {
    return m_config.bluetoothType == 1 ? QStringLiteral("FFF0") : QStringLiteral("180D");
}

QString VirtualDesk::notifyUuid() const {
    return m_config.bluetoothType == 1 ? QStringLiteral("FFF1") : QStringLiteral("2A37");
}

QString VirtualDesk::writeUuid() const {
    return m_config.bluetoothType == 1 ? QStringLiteral("FFF1") : QStringLiteral("2A39");
}

int VirtualDesk::heightTenths() const {
    return m_drive.heightTenths();
}

// ---- Link ----

void VirtualDesk::setSubscribed(bool subscribed) {
    subscribed = subscribed && isAdvertising();
    if (subscribed == m_subscribed)
        return;
    m_subscribed = subscribed;
    m_pollOutstanding = false;
    if (!subscribed)
        m_drive.keys(kNoKey);
    updateTicking();
}

void VirtualDesk::writeFromHost(const Bytes& bytes) {
    if (!isAdvertising())
        return;
    m_splitter->append(bytes, [this](const Bytes& frame) { handleFrame(frame); });
}

// The controller's heartbeat: it runs while someone listens or the columns move, so a one-touch
// move finishes even with nobody connected.
void VirtualDesk::updateTicking() {
    const bool needed = m_powered && (m_subscribed || m_drive.motor().isMoving());
    if (needed && m_ticker.isNull()) {
        m_ticker = Scheduler::instance().every(m_config.pollPeriod, this, [this] { tick(); });
    } else if (!needed && !m_ticker.isNull()) {
        m_ticker.cancel();
        m_ticker = {};
    }
}

void VirtualDesk::tick() {
    m_drive.update();
    // An unanswered poll is as good as a released key.
    m_drive.releaseIfSilentFor(2 * m_config.pollPeriod);
    if (m_subscribed) {
        m_pollOutstanding = true; // the answer may come back before send returns
        send(DeskFrames::poll());
        sendDisplay();
    }
    updateTicking();
}

void VirtualDesk::send(const Bytes& frame) {
    if (m_subscribed)
        emit notified(frame);
}

// Replies leave after the host's write has returned, as from a real controller; this also keeps
// the host's receive path from being re-entered while it is still writing.
void VirtualDesk::sendSoon(Bytes frame) {
    Scheduler::instance().after(0ms, this, [this, frame = std::move(frame)] { send(frame); });
}

void VirtualDesk::sendDisplay() {
    if (m_announcePowerOn) {
        m_announcePowerOn = false;
        m_powerOnShownUntil = Scheduler::instance().now() + kPowerOnShown;
    }
    send(DeskFrames::display(currentDisplay()));
}

SegmentCodes VirtualDesk::currentDisplay() const {
    if (const std::optional<SegmentCodes> fault = m_faults.display())
        return *fault;
    if (Scheduler::instance().now() < m_powerOnShownUntil)
        return SegmentDisplay::kPowerOn;
    if (m_drive.isMemorySetMode())
        return SegmentDisplay::kMemorySet;
    return SegmentDisplay::height(toDisplayUnit(heightTenths()));
}

// Limits always go out in tenths of a cm; the unit byte tells how the display counts.
void VirtualDesk::sendDeviceInfo() {
    sendSoon(DeskFrames::deviceInfo({.inchDisplay = m_config.inchDisplay,
                                     .maxHeight = m_drive.motor().maxHeight(),
                                     .minHeight = m_drive.motor().minHeight(),
                                     .sensitivity = m_sensitivity,
                                     .supportChildLock = m_config.supportChildLock,
                                     .tableThickness = m_thickness}));
    // The strip's state follows, so a host learns that the desk has one.
    if (m_config.hasLightStrip)
        sendLightStrip();
}

void VirtualDesk::sendLightStrip() {
    sendSoon(DeskFrames::lightStrip(m_light));
}

// ---- Host frames ----

void VirtualDesk::handleFrame(const Bytes& frame) {
    if (frame.size() < kEnvelopeSize || !BluetoothResultHandle::crcCheck(frame))
        return;
    const Bytes payload(frame.begin() + 3, frame.end() - 3);
    if (frame[2] == kKeyFrame && payload.size() >= 2) {
        const int keys = payload[0] | payload[1] << 8;
        recordKeyFrame(keys);
        m_drive.keys(keys);
        emit keysReceived(keys);
    } else if (frame[2] == kCommandFrame && !payload.empty())
        handleCommand(payload);
    // Anything else (the key-display frame, unknown types) means nothing to the controller.
}

void VirtualDesk::handleCommand(const Bytes& payload) {
    const std::size_t arguments = payload.size() - 1;
    switch (payload[0]) {
    case kDeviceInfoCommand:
        sendDeviceInfo();
        break;
    case kTargetHeightCommand:
        recordKeyFrame(kTargetCommand);
        if (arguments >= 2 && !m_config.ignoresTargetHeight)
            m_drive.moveTo(fromDisplayUnit(payload[1] | payload[2] << 8));
        break;
    case kThicknessCommand:
        if (arguments >= 1)
            m_thickness = payload[1];
        break;
    case kAntiCollisionCommand:
        if (arguments >= 1)
            m_sensitivity = payload[1];
        break;
    case kLightStripCommand:
        if (arguments >= 2)
            setLight(payload);
        break;
    default:
        break;
    }
}

void VirtualDesk::setLight(const Bytes& payload) {
    if (!m_config.hasLightStrip)
        return;
    ++m_lightCommandsReceived;
    m_light.switchStatus = payload[1];
    m_light.mode = payload[2];
    if (m_light.mode == kCustomColourMode && payload.size() >= 6) {
        m_light.green = payload[3];
        m_light.red = payload[4];
        m_light.blue = payload[5];
    }
    sendLightStrip();
}

// ---- Key log ----

void VirtualDesk::recordKeyFrame(int keys) {
    if (keys > kNoKey)
        ++m_keyFramesReceived;
    m_keyFrames.push_back(
        {Scheduler::instance().now(), keys, std::exchange(m_pollOutstanding, false)});
    if (m_keyFrames.size() > kKeyFrameLog)
        m_keyFrames.pop_front();
}

// ---- Units ----

int VirtualDesk::toDisplayUnit(int tenthsCm) const {
    return m_config.inchDisplay ? static_cast<int>(std::lround(tenthsCm / kCmPerInch)) : tenthsCm;
}

int VirtualDesk::fromDisplayUnit(int tenths) const {
    return m_config.inchDisplay ? static_cast<int>(std::lround(tenths * kCmPerInch)) : tenths;
}

// ---- Faults ----

void VirtualDesk::injectError(int code) {
    if (m_faults.setError(code))
        m_drive.faultChanged(code != 0);
}

void VirtualDesk::setChildLock(bool locked) {
    m_faults.setChildLock(locked);
    m_drive.faultChanged(locked);
}

void VirtualDesk::setResetNeeded(bool needed) {
    m_faults.setResetNeeded(needed);
    m_drive.faultChanged(needed);
}

void VirtualDesk::setSlideDown(bool sliding) {
    m_faults.setSlideDown(sliding);
    m_drive.faultChanged(sliding);
}

void VirtualDesk::setPowered(bool powered) {
    if (powered == m_powered)
        return;
    if (powered) {
        m_announcePowerOn = true;
    } else {
        send(DeskFrames::display(SegmentDisplay::kPowerOff));
        m_drive.powerOff();
    }
    setReachable(powered, m_inRange);
}

void VirtualDesk::setInRange(bool inRange) {
    setReachable(m_powered, inRange);
}

void VirtualDesk::setReachable(bool powered, bool inRange) {
    const bool wasAdvertising = isAdvertising();
    m_powered = powered;
    m_inRange = inRange;
    if (wasAdvertising == isAdvertising())
        return;
    if (!isAdvertising())
        endLink();
    updateTicking();
    emit advertisingChanged(isAdvertising());
}

void VirtualDesk::dropLink() {
    endLink();
}

void VirtualDesk::endLink() {
    m_subscribed = false;
    m_splitter->clear();
    m_drive.keys(kNoKey);
    emit linkDropped();
}

void VirtualDesk::placeObstacle() {
    m_drive.hitObstacle(m_sensitivity > 0);
}

} // namespace ostrel
