#pragma once

#include "core/Scheduler.h"
#include "protocol/CommandType.h"
#include "session/GoToHeight.h"
#include "session/HeldKeyOwner.h"
#include "store/Object_LightColor.h"

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace ostrel {

class DeskLink;
class DeskRelease;
class DeskStatus;
class GlobalKeyDispatch;
class HeightReadout;
class HotKeyMovement;
class OMTimeManager;
class PlannedDisconnect;
class PresetKeys;
class SleepGuard;

// The session with the one bound desk behind the control screen. It wires the link, the
// presets and the hot-key movement to the classifier's events, shows the live height and keeps
// the light strip's state. It never draws; the screen shows what its signals say.
//
// Keys reach the desk only as answers to its polls, through claims on the one key owner. A new
// link never inherits a held key: losing the link, ending the session, starting one and quitting
// the application all release it.
class DeskSession : public QObject {
    Q_OBJECT
public:
    static constexpr int kDefaultMinHeight = 600;
    static constexpr int kDefaultMaxHeight = 1200;
    static constexpr Scheduler::Duration kStartupToastDelay{500};

    explicit DeskSession(QObject* parent = nullptr);
    ~DeskSession() override;

    // Start-up: defaults, attach to the link, wire the classifier, the start-up toast.
    void setLoadViewAction();
    // Subscribes to the notifications the session reacts to, with itself as context.
    void registerObservers();

    DeskLink& link() const { return *m_link; }
    // Letting go of the desk for another device, and connecting it again.
    DeskRelease& release() const { return *m_release; }
    PresetKeys& presetKeys() const { return *m_presetKeys; }
    HotKeyMovement& hotKeyMovement() const { return *m_hotKeyMovement; }
    GlobalKeyDispatch& globalKeys() const { return *m_globalKeys; }
    GoToHeight& goToHeight() const { return *m_goToHeight; }
    DeskStatus& status() const { return *m_status; }

    // ---- State ----
    float currentHeight() const { return m_currentHeight; }
    int minHeight() const { return m_minHeight; }
    int maxHeight() const { return m_maxHeight; }
    GoToHeight::Limits limits() const { return {m_minHeight, m_maxHeight}; }
    // Linked and not released.
    bool isConnected() const;
    bool isReleased() const;
    const std::optional<Object_LightColor>& objectLightColor() const { return m_objectLightColor; }
    const QString& sitOrStand() const { return m_sitOrStand; }
    static int commandType();

    // ---- Link ----
    void initBluetoothResultHandle();
    void refreshDeviceInfo();
    void refreshContentByDeviceInfo();
    void actionGetDeskMaxMinHeight();
    void actionDeviceChanged();
    // Another desk is being linked in place of this one: losing this one is expected, and
    // actionDeviceChanged follows. Failing that, deskChangeFailed: the session has no desk.
    // `letGo` runs once this desk has heard that no key is held (at most a second later).
    void deskChangeStarting(std::function<void()> letGo);
    void deskChangeFailed();
    void bluetoothDisConnected();
    // Session end: end every movement, drop the link once the desk heard no key, stop the
    // countdown, back to desk search; the global keys go when the session hears its own end.
    void actionDeleteCurrentDeviceSetting();
    void actionPushToTypeVC();
    void actionDeleteCurrentDevice();

    // ---- Height ----
    void setTableViewHeight(const QString& height);
    void actionHeightUnitChange();

    // ---- Keys held from the screen ----
    void holdKey(int type);
    void releaseKey();
    // Whether a long press may offer saving: only once a height is known.
    bool canSavePreset() const { return m_currentHeight > 0; }
    // Ends every claim on the key, a hot-key movement and a move to a height included, and
    // stops a desk that moves by itself.
    void releaseHeldKeys();

    // ---- Moves to a height ----
    GoToHeight::Refusal moveTo(int tenthsCm);
    // Ends whatever moves the desk.
    void stopMoving();

signals:
    void heightShown(const QString& text);
    void deskOffsetsChanged(float top, float middle);
    void lightStripAvailable(bool available);
    void toastRequested(const QString& text);
    // The link is gone: the screen asks the user, whose confirmation ends the session.
    void breakTipRequested();
    // For the standing-time record: every height the desk reports, in tenths of a centimetre,
    // and the desk now linked ("" while none is).
    void heightReported(double tenthsCm);
    void deskLinkChanged(const QString& desk);

private:
    using Task = std::function<void(DeskSession&)>;

    void initData();
    void wireParts();
    // A hop onto the main loop that does nothing once the session is gone.
    void later(Scheduler::Duration delay, Task task);
    // Asked on the main loop, never from inside the call that noticed the loss.
    void requestBreakTip();
    void showHeight(int height);
    // A fault, a lock or a reset on the desk ends the moves that no finger holds.
    void stopUnattendedMoves();
    void deskLinked();
    void updateLightColor(int open, int mode, int red, int green, int blue);
    static OMTimeManager& timeManager();

    DeskLink* m_link;
    PresetKeys* m_presetKeys;
    HotKeyMovement* m_hotKeyMovement;
    GlobalKeyDispatch* m_globalKeys;
    GoToHeight* m_goToHeight;
    PlannedDisconnect* m_plannedDisconnect;
    DeskRelease* m_release;
    SleepGuard* m_sleepGuard;
    DeskStatus* m_status;
    HeightReadout* m_readout;
    float m_currentHeight = 0.0f;
    int m_maxHeight = kDefaultMaxHeight;
    int m_minHeight = kDefaultMinHeight;
    QString m_sitOrStand = QStringLiteral("0");
    QString m_remindInterval = QStringLiteral("0");
    QString m_isCustom = QStringLiteral("0");
    QString m_notificationSound = QStringLiteral("0");
    std::optional<Object_LightColor> m_objectLightColor;
    bool m_changingDesk = false;
    HeldKeyOwner::Claim m_screenClaim;
};

} // namespace ostrel
