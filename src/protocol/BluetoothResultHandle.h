#pragma once

#include "Bytes.h"
#include "DeviceModel.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace ostrel {

// The one place where frames from the desk are understood. It answers the desk's keypad polls
// with the key selected in currentCommandType, turns display frames into events and turns
// device-information and light-strip reports into values. Process-wide. There is deliberately
// no static handleTableData (it would clash with the member): callers use
// sharedInstance().handleTableData(frame).
//
// Desk frames it reads (positions count from the 0x9B head; a frame too short to hold the
// positions its type reads is ignored):
//   0x11 keypad poll: nothing read; answered through the writer at once.
//   0x12 display: d1, d2, d3 at 3-5.                                      (>= 9 bytes)
//   0x82 device information: 3 unit, 4-5 max height, 6-7 min height (16-bit, low byte first),
//        8 sensitivity, 9 flags (bit 0 child lock), 14 tabletop thickness. (>= 18 bytes)
//   0x9F light strip: 3 switch, 4 mode, 5 green, 6 red, 7 blue.           (>= 11 bytes)
class BluetoothResultHandle {
public:
    using Writer = std::function<void(const Bytes&)>;
    using TextCallback = std::function<void(const std::string& result)>;

    // Display results that are internal markers rather than display texts; the dispatch
    // compares against them.
    static constexpr const char* kPowerOff = "电源关闭";
    static constexpr const char* kSlideDown = "结构下滑";
    static constexpr const char* kPowerOn = "电源打开";

    BluetoothResultHandle();

    static BluetoothResultHandle& sharedInstance();
    // Tests install a fresh instance; returns the previous one.
    static std::unique_ptr<BluetoothResultHandle>
    replaceSharedInstance(std::unique_ptr<BluetoothResultHandle> instance);

    // Where handleTableData writes its poll answers, synchronously. A link's channel answers
    // the polls it carries itself (answerPoll), so the application installs none.
    void setWriter(Writer writer);
    // One complete frame, as cut by FrameSplitter. Frames failing crcCheck are ignored.
    void handleTableData(const Bytes& frame);
    // Head 0x9B, foot 0x9D and a CRC over the bytes between head and CRC that matches. The
    // length byte is not compared with the frame's size.
    static bool crcCheck(const Bytes& frame);
    // A keypad poll that passes crcCheck.
    static bool isPoll(const Bytes& frame);
    // The frame that answers a keypad poll now, null when the current type has none. The
    // caller writes it at once; the poll counts as answered. Nothing is built or allocated
    // unless a target height or thickness changed since it was last answered. Safe on any one
    // thread at a time (the current link's), alongside the key's setters on another.
    const Bytes* answerPoll();

    // The held key answered to every poll: 0 none, 1 up, 2 down, 4 device information,
    // 5 target height, 6 tabletop thickness, 9-12 presets, 13 memory set; others per the
    // response table, 15 and above unanswered.
    // Polls may be answered on another thread: setCurrentCommandType returns how many were
    // answered before `type` took effect, and every one counted after that had `type` (or a
    // later key).
    int currentCommandType() const { return keyOf(m_keyAndPolls.load()); }
    std::uint64_t setCurrentCommandType(int type);
    // How many polls have been answered: lets the link's owner wait until the desk has heard
    // a released key before it lets the link go.
    std::uint64_t answeredPolls() const { return m_keyAndPolls.load() >> kPollShift; }
    int targetHeight() const { return m_targetHeight.load(); }
    void setTargetHeight(int height) { m_targetHeight.store(height); }
    int thicknessHeight() const { return m_thicknessHeight.load(); }
    void setThicknessHeight(int thickness) { m_thicknessHeight.store(thickness); }

    // 0 after RST, 1 after an ordinary display, 2 after an error display.
    int state() const { return m_state; }
    // Classification of the last display frame: a height text, "RST", "Bottom", "Top", "LR",
    // "S-", "L", "A-", an error text or one of the markers above.
    const std::string& result() const { return m_result; }
    // The last error text, "" once an ordinary display follows.
    const std::string& errorCode() const { return m_errorCode; }
    bool lock() const { return m_lock; }
    // The last displayed height in tenths of the displayed unit.
    int currentHeight() const { return m_currentHeight; }
    // Kept for callers that stash raw bytes here; the classifier never touches it.
    Bytes& bluethoothData() { return m_bluethoothData; }

    TextCallback bluetoothResultHandle_RST;
    TextCallback bluetoothResultHandle_Bottom;
    TextCallback bluetoothResultHandle_Top;
    TextCallback bluetoothResultHandle_SlideDownward;
    TextCallback bluetoothResultHandle_Error;
    TextCallback bluetoothResultHandle_Manage;
    std::function<void(int currentHeight)> bluetoothResultHandle_HeightChange;
    std::function<void(bool lock)> bluetoothResultHandle_ChildLock;
    std::function<void(const DeviceModel& model)> bluetoothResultHandle_DeviceInfo;
    std::function<void(int switchStatus, int mode, int red, int green, int blue)>
        bluetoothResultHandle_LightColorInfo;
    TextCallback bluetoothResultHandle_Other;

private:
    // An answer carrying a value the screens set, built again only when the value changes.
    struct ValueAnswer {
        std::optional<int> value;
        Bytes frame;
    };
    // The held key in the low bits of one word and the answered polls above them, so that a
    // poll is counted together with the key it was answered with.
    static constexpr int kPollShift = 16;
    static constexpr std::uint64_t kKeyBits = (std::uint64_t{1} << kPollShift) - 1;
    static int keyOf(std::uint64_t word) { return static_cast<std::int16_t>(word & kKeyBits); }
    static std::uint64_t withKey(std::uint64_t word, int type) {
        return (word & ~kKeyBits) | static_cast<std::uint16_t>(type);
    }
    const Bytes* answerFor(int type);
    static const Bytes& valueAnswer(ValueAnswer& cache, int value, Bytes (*build)(int));
    void handleDisplay(int d1, int d2, int d3);
    void classifyDisplay(int d1, int d2, int d3);
    void dispatchDisplay(int d1);
    void handleDeviceInfo(const Bytes& frame);
    void handleLightStrip(const Bytes& frame) const;
    void setOrdinaryResult(std::string result);

    Writer m_writer;
    std::atomic<std::uint64_t> m_keyAndPolls{0};
    std::atomic<int> m_targetHeight{0};
    std::atomic<int> m_thicknessHeight{0};
    ValueAnswer m_targetHeightAnswer;
    ValueAnswer m_thicknessAnswer;
    int m_state = 0;
    bool m_lock = false;
    std::string m_result;
    std::string m_errorCode;
    int m_currentHeight = 0;
    Bytes m_bluethoothData;
};

} // namespace ostrel
