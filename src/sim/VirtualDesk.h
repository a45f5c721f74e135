#pragma once

#include "core/TimerHandle.h"
#include "protocol/Bytes.h"
#include "sim/DeskDrive.h"
#include "sim/DeskFaults.h"
#include "sim/DeskFrames.h"
#include "sim/SegmentDisplay.h"

#include <QObject>
#include <QString>
#include <chrono>
#include <deque>
#include <memory>
#include <string>

namespace ostrel {

class FrameSplitter;

struct VirtualDeskConfig {
    std::string name = "QWJ-0001"; // advertised local name
    int bluetoothType = 2;         // GATT layout: 2 = 180D/2A37 notify/2A39 write, 1 = FFF0/FFF1
    std::chrono::milliseconds pollPeriod{50};
    double speedCmPerSecond = 3.8;
    int minHeight = 600; // tenths of a centimetre
    int maxHeight = 1200;
    int startHeight = 720;
    bool inchDisplay = false; // display (and device info unit) in inches
    int rssi = -55;
    // Additions beyond the carriers' needs, reported in the device-information frame:
    int sensitivity = 2;     // anti-collision sensitivity, 0 = off
    int tableThickness = 25; // tabletop thickness, millimetres
    bool supportChildLock = true;
    bool hasLightStrip = true;        // a desk without one ignores light commands and never reports
    bool ignoresTargetHeight = false; // older controllers move only while a key is held
};

// A model of the desk controller, so the application can be driven, tested and shown without
// hardware. It behaves as the controller box does: once the host subscribes it polls the host's
// keypad every poll period and mirrors its seven-segment display after each poll; keys exist only
// as answers to those polls. Everything is timed through Scheduler::instance().
//
// Heights are tenths of a centimetre throughout (the reported limits included), except the
// target-height command and the display, which use the display unit (tenths of an inch in inch
// mode), as the controller does. Held keys move the desk; memory keys and the target-height
// command start moves that run by themselves until they arrive or any key is pressed.
class VirtualDesk : public QObject {
    Q_OBJECT
public:
    using LightStrip = DeskLightStrip;

    explicit VirtualDesk(VirtualDeskConfig config = {}, QObject* parent = nullptr);
    ~VirtualDesk() override;

    const VirtualDeskConfig& config() const { return m_config; }
    QString name() const; // advertised name
    // "180D"/"2A37"/"2A39" for type 2, "FFF0"/"FFF1"/"FFF1" for type 1.
    QString serviceUuid() const;
    QString notifyUuid() const;
    QString writeUuid() const;
    bool isAdvertising() const { return m_powered && m_inRange; }

    // ---- Link side: called by the carrier ----

    // The host enabled or disabled notifications; polls run only while subscribed.
    void setSubscribed(bool subscribed);
    // One write to the write characteristic, cut into pieces of any size. Frames failing their
    // CRC are dropped; nothing arrives while the desk is off or out of range.
    void writeFromHost(const Bytes& bytes);

    // ---- Observation for tests and the demo ----

    int heightTenths() const; // true height, tenths of a cm
    bool isMoving() const { return m_drive.motor().isMoving(); }
    bool isSubscribed() const { return m_subscribed; } // (added to the carriers' interface)
    // Key frames with any key pressed that the host has sent so far.
    int keyFramesReceived() const { return m_keyFramesReceived; }
    // Every key frame from the host (the latest kKeyFrameLog), acted on as it arrived: its key
    // bitmap and whether it answered a poll or came unasked. A target-height command, the other
    // answer a poll may get, is logged too, as kTargetCommand.
    static constexpr int kTargetCommand = -1;
    struct KeyFrame {
        std::chrono::milliseconds at;
        int keys;
        bool answeredPoll;
    };
    static constexpr std::size_t kKeyFrameLog = 2048;
    const std::deque<KeyFrame>& keyFrames() const { return m_keyFrames; }
    // Anti-collision sensitivity last set, 0 = off.
    int sensitivity() const { return m_sensitivity; }
    const LightStrip& lightStrip() const { return m_light; }
    int lightCommandsReceived() const { return m_lightCommandsReceived; }

    // ---- Fault injection ----

    void injectError(int code); // E01..E37; 0 clears; other codes are ignored
    void setChildLock(bool locked);
    void setResetNeeded(bool needed); // shows RST; holding Down to the bottom completes the reset
    void setSlideDown(bool sliding);
    void setPowered(bool powered); // off: shows OFF, ends the link; on: shows On for a moment
    void placeObstacle();          // hit while moving: stops, and backs off if anti-collision is on
    void setInRange(bool inRange);
    void dropLink();

signals:
    void notified(const ostrel::Bytes& value); // one notification value to the host
    // A key frame from the host was acted on (0 = no key).
    void keysReceived(int keys);
    void advertisingChanged(bool advertising);
    // The desk side ended the link (dropLink, out of range, power off). Also emitted when no host
    // was linked; a carrier without a link ignores it.
    void linkDropped();

private:
    void tick();
    void updateTicking();
    void send(const Bytes& frame);
    void sendSoon(Bytes frame);
    void sendDisplay();
    void sendDeviceInfo();
    void sendLightStrip();
    SegmentCodes currentDisplay() const;

    void handleFrame(const Bytes& frame);
    void handleCommand(const Bytes& payload);
    void recordKeyFrame(int keys);
    void setLight(const Bytes& payload);
    void setReachable(bool powered, bool inRange);
    void endLink();

    int toDisplayUnit(int tenthsCm) const;
    int fromDisplayUnit(int tenths) const;

    VirtualDeskConfig m_config;
    DeskFaults m_faults;
    DeskDrive m_drive;
    std::unique_ptr<FrameSplitter> m_splitter;
    TimerHandle m_ticker;

    bool m_powered = true;
    bool m_inRange = true;
    bool m_subscribed = false;

    int m_keyFramesReceived = 0;
    std::deque<KeyFrame> m_keyFrames;
    bool m_pollOutstanding = false;

    bool m_announcePowerOn = false;
    std::chrono::milliseconds m_powerOnShownUntil{};

    int m_sensitivity;
    int m_thickness;
    LightStrip m_light;
    int m_lightCommandsReceived = 0;
};

} // namespace ostrel
