#pragma once

#include "core/Scheduler.h"
#include "store/CurrentDeviceStore.h"
#include "store/Object_LightColor.h"
#include "transport/BluetoothPeripheral.h"

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace ostrel {

class OMTimeManager;

// The session with the one bound desk behind the control screen: link lifecycle, live height,
// held keys, presets and their saving. It never draws; the screen shows what its signals say.
//
// Keys reach the desk only as answers to its polls: setting the classifier's command type holds
// a key, 0 releases it. A new link never inherits a held key: losing the link, ending the
// session and starting one all release it.
class DeskSession : public QObject {
    Q_OBJECT
public:
    // Command types this session sets.
    enum CommandType {
        kNoKey = 0,
        kUpKey = 1,
        kDownKey = 2,
        kSitKey = 9, // Stand, M1 and M2 follow
        kMemoryKey = 13,
    };
    static constexpr int kPresetCount = 4;
    static constexpr int kScanRuleType = 2;
    static constexpr int kScanRoundSeconds = 30;
    static constexpr int kDefaultMinHeight = 600;
    static constexpr int kDefaultMaxHeight = 1200;
    static constexpr Scheduler::Duration kStartupToastDelay{500};
    static constexpr Scheduler::Duration kMemoryKeyTap{100};
    static constexpr Scheduler::Duration kMemoryConfirmTimeout{2000};
    static constexpr Scheduler::Duration kPresetKeyTap{700};
    static constexpr Scheduler::Duration kHotKeyStallStep{1000};

    explicit DeskSession(QObject* parent = nullptr);
    ~DeskSession() override;

    // Start-up: defaults, attach to the link, wire the classifier, the start-up toast.
    void setLoadViewAction();
    // Subscribes to the notifications the session reacts to, with itself as context.
    void registerObservers();

    // ---- State ----
    const QString& blutoothName() const { return m_blutoothName; }
    float currentHeight() const { return m_currentHeight; }
    int minHeight() const { return m_minHeight; }
    int maxHeight() const { return m_maxHeight; }
    const CurrentDeviceStore::Presets& presets() const { return m_memory; }
    int memory(int slot) const { return m_memory[std::size_t(slot)]; }
    const QString& isMemerySet() const { return m_isMemerySet; }
    int commandTypeMemery() const { return m_commandTypeMemery; }
    bool isReConnect() const { return m_isReConnect; }
    bool isMoving() const { return m_isMoving; }
    const std::optional<Object_LightColor>& objectLightColor() const { return m_objectLightColor; }
    const QString& sitOrStand() const { return m_sitOrStand; }
    static int commandType();

    // ---- Link ----
    void initBluetooth();
    void initBluetoothResultHandle();
    void startScan();
    void startScanAgain();
    void stopScan();
    void reconnect() { startScan(); }
    void connectBluetoothWithPeripheral(const PeripheralPtr& peripheral);
    void actionAddDeviceToLocalWithperipheral(const PeripheralPtr& peripheral);
    void refreshDeviceInfo();
    void refreshContentByDeviceInfo();
    void actionGetDeskMaxMinHeight();
    void actionDeviceChanged();
    void bluetoothDisConnected();
    // Session end: drop the link and the held keys, stop the countdown, back to desk search.
    void actionDeleteCurrentDeviceSetting();
    void actionPushToTypeVC();
    void actionDeleteCurrentDevice();

    // ---- Height ----
    void setTableViewHeight(const QString& height);
    void actionHeightUnitChange();

    // ---- Keys and presets (slot 0..3 = Sit, Stand, M1, M2) ----
    void holdKey(int type);
    void releaseKey();
    // Holds the slot's preset key; an unset preset sends nothing and returns false.
    bool holdPresetKey(int slot);
    // Whether a long press may offer saving: only once a height is known.
    bool canSavePreset() const { return m_currentHeight > 0; }
    void actionSetMemoryKeyWithtype(int type);
    void actionMemoryKeySaveWithtype(int type);
    void actionEnterMemoryKeyWithtype(int type);
    // "Sit height:72.0cm" and the like, or empty for an unset preset.
    QString presetTipText(int slot) const;
    static QString presetSaveTip(int slot);
    static QString presetImageName(int slot, bool set);

    // ---- Hot-key movement (the hot keys themselves register elsewhere) ----
    void globalKeyMoving();
    void globalKeyStopUpDown();
    // Releases any held key and forgets a hot-key movement.
    void releaseHeldKeys();

signals:
    void heightShown(const QString& text);
    void deskOffsetsChanged(float top, float middle);
    void presetsChanged();
    void lightStripAvailable(bool available);
    void toastRequested(const QString& text);
    void heightToastRequested(const QString& text);
    // The link is gone: the screen asks the user, whose confirmation ends the session.
    void breakTipRequested();

private:
    using Task = std::function<void(DeskSession&)>;

    void initData();
    // A hop onto the main loop that does nothing once the session is gone.
    void later(Scheduler::Duration delay, Task task);
    void adoptLinkedPeripheral();
    void subscribeToCurrentPeripheral();
    // Asked on the main loop, never from inside the call that noticed the loss.
    void requestBreakTip();
    void scanRound(Task onEnded);
    void connected(const PeripheralPtr& peripheral);
    void showHeight(int height);
    void clearPresetsAfterReset();
    void updateLightColor(int open, int mode, int red, int green, int blue);
    void confirmMemoryKey();
    static OMTimeManager& timeManager();

    QString m_blutoothName;
    float m_currentHeight = 0.0f;
    QString m_previousHeight;
    QString m_shownText;
    int m_maxHeight = kDefaultMaxHeight;
    int m_minHeight = kDefaultMinHeight;
    CurrentDeviceStore::Presets m_memory{};
    QString m_sitOrStand = QStringLiteral("0");
    QString m_remindInterval = QStringLiteral("0");
    QString m_isCustom = QStringLiteral("0");
    QString m_notificationSound = QStringLiteral("0");
    bool m_isMoving = false;
    float m_tempHeight = 0.0f;
    Scheduler::Duration m_tempDate{};
    QString m_isMemerySet = QStringLiteral("0");
    int m_commandTypeMemery = kNoKey;
    bool m_isReConnect = false;
    std::optional<Object_LightColor> m_objectLightColor;
};

} // namespace ostrel
