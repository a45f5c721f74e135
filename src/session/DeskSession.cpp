#include "session/DeskSession.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothProtocol.h"
#include "protocol/BluetoothResultHandle.h"
#include "session/DQGlobalKeyHelper.h"
#include "session/DeskLink.h"
#include "session/DeskRelease.h"
#include "session/DeskStatus.h"
#include "session/GlobalKeyDispatch.h"
#include "session/HeightReadout.h"
#include "session/HeldKeyOwner.h"
#include "session/HotKeyMovement.h"
#include "session/LiveSession.h"
#include "session/OMTimeManager.h"
#include "session/PlannedDisconnect.h"
#include "session/PresetKeys.h"
#include "session/SleepGuard.h"
#include "store/CurrentDeviceStore.h"
#include "store/RecordDictionary.h"
#include "transport/RBBluetoothManager.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"

#include <QCoreApplication>
#include <QPointer>

namespace ostrel {

namespace {

QString text(const std::optional<std::string>& value) {
    return value ? QString::fromStdString(*value) : QStringLiteral("0");
}

BluetoothResultHandle& handle() {
    return BluetoothResultHandle::sharedInstance();
}

RBBluetoothManager& facade() {
    return RBBluetoothManager::sharedInstance();
}

HeldKeyOwner& keyOwner() {
    return HeldKeyOwner::instance();
}

} // namespace

DeskSession::DeskSession(QObject* parent)
    : QObject(parent), m_link(new DeskLink(this)),
      m_presetKeys(new PresetKeys([this] { return m_currentHeight; }, this)),
      m_hotKeyMovement(new HotKeyMovement(this)),
      m_globalKeys(new GlobalKeyDispatch(*m_hotKeyMovement, *m_presetKeys, this)),
      m_goToHeight(new GoToHeight(this)), m_plannedDisconnect(new PlannedDisconnect(this)),
      m_release(new DeskRelease(*m_link, *m_plannedDisconnect, this)),
      m_sleepGuard(new SleepGuard(*this, *m_plannedDisconnect)), m_status(new DeskStatus(this)),
      m_readout(new HeightReadout(this)) {
    wireParts();
}

DeskSession::~DeskSession() {
    LiveSession::instance().withdraw(this);
    releaseHeldKeys();
}

void DeskSession::wireParts() {
    // A new link starts with nothing held; there is no desk yet to stop.
    connect(m_link, &DeskLink::linkStarting, this, [] { keyOwner().releaseAll(); });
    connect(m_link, &DeskLink::linked, this, &DeskSession::deskLinked);
    connect(m_link, &DeskLink::connectFailed, this, [this] {
        if (!m_changingDesk)
            emit breakTipRequested();
    });
    connect(m_presetKeys, &PresetKeys::saved, this, &DeskSession::refreshDeviceInfo);
    connect(m_readout, &HeightReadout::heightShown, this, &DeskSession::heightShown);
    connect(m_readout, &HeightReadout::deskOffsetsChanged, this, &DeskSession::deskOffsetsChanged);
    connect(m_release, &DeskRelease::releasedChanged, this, [this](bool released) {
        if (released)
            emit deskLinkChanged({});
    });
    // Quitting ends the event loop before the link is released: nothing may stay held.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &DeskSession::releaseHeldKeys);
}

int DeskSession::commandType() {
    return handle().currentCommandType();
}

OMTimeManager& DeskSession::timeManager() {
    return OMTimeManager::sharedInstance();
}

void DeskSession::later(Scheduler::Duration delay, Task task) {
    Scheduler::instance().after(delay, this, [this, task = std::move(task)] { task(*this); });
}

// ---- Start-up ----

void DeskSession::setLoadViewAction() {
    initData();
    keyOwner().releaseAll(); // a new session never inherits a key held in an earlier one
    if (m_link->initBluetooth()) {
        deskLinked();
    } else {
        requestBreakTip();
    }
    initBluetoothResultHandle();
    DQGlobalKeyHelper::shareInstance().actionAddGlobalKey();
    LiveSession::instance().setCurrent(this);
    later(kStartupToastDelay, [](DeskSession& self) {
        if (self.m_currentHeight == 0.0f)
            emit self.toastRequested(
                tr("Connected successful, move the table to synchronize the height."));
    });
}

void DeskSession::initData() {
    m_currentHeight = 0.0f;
    m_readout->forget();
    m_maxHeight = kDefaultMaxHeight;
    m_minHeight = kDefaultMinHeight;
    m_presetKeys->setPresets({});
    m_sitOrStand = m_remindInterval = m_isCustom = m_notificationSound = QStringLiteral("0");
    m_objectLightColor.reset();
}

void DeskSession::registerObservers() {
    using Handler = std::function<void()>;
    const std::pair<const char*, Handler> observers[] = {
        {notifications::kMemoryKeyChange, [this] { refreshDeviceInfo(); }},
        {notifications::kGlobeBlueToothIsConnect, [this] { actionDeviceChanged(); }},
        {notifications::kReconnect,
         [this] {
             if (!isReleased())
                 m_link->reconnect();
         }},
        {notifications::kBluetoothDisconnected, [this] { bluetoothDisConnected(); }},
        {notifications::kUnitChange, [this] { actionHeightUnitChange(); }},
        {notifications::kDeleteCurrentDevice, [this] { actionDeleteCurrentDevice(); }},
    };
    NotificationCenter& center = NotificationCenter::defaultCenter();
    for (const auto& [name, handler] : observers)
        center.addObserver(this, QString::fromLatin1(name),
                           [handler = handler](const QVariant&) { handler(); });
    center.addObserver(
        this, QString::fromLatin1(notifications::kGlobalKeyPushName),
        [this](const QVariant& name) { m_globalKeys->globalKeyPush(name.toString()); });
}

// ---- Link ----

void DeskSession::initBluetoothResultHandle() {
    QPointer<DeskSession> self(this);
    // Every reaction holds the session weakly: a closed screen hears nothing.
    auto weakly = [self](auto reaction) {
        return [self, reaction](auto&&... args) {
            if (self)
                reaction(*self, args...);
        };
    };
    auto stopUnattended =
        weakly([](DeskSession& s, const std::string&) { s.stopUnattendedMoves(); });

    BluetoothResultHandle& h = handle();
    // Called with every display frame, once the frame is classified.
    h.bluetoothResultHandle_ChildLock = weakly([](DeskSession& s, bool locked) {
        s.m_status->displayShown(locked, handle().result());
        if (locked)
            s.stopUnattendedMoves();
    });
    h.bluetoothResultHandle_RST = weakly([](DeskSession& s, const std::string&) {
        s.stopUnattendedMoves();
        s.m_presetKeys->clearPresetsAfterReset();
    });
    h.bluetoothResultHandle_Bottom = [](const std::string&) {};
    h.bluetoothResultHandle_Top = [](const std::string&) {};
    h.bluetoothResultHandle_SlideDownward = stopUnattended;
    h.bluetoothResultHandle_Error = stopUnattended;
    h.bluetoothResultHandle_Other = stopUnattended;
    h.bluetoothResultHandle_Manage =
        weakly([](DeskSession& s, const std::string&) { s.m_presetKeys->confirmMemoryKey(); });
    h.bluetoothResultHandle_HeightChange =
        weakly([](DeskSession& s, int height) { s.showHeight(height); });
    h.bluetoothResultHandle_DeviceInfo = weakly([](DeskSession& s, const DeviceModel& model) {
        s.m_maxHeight = model.maxHeight;
        s.m_minHeight = model.minHeight;
        if (s.m_currentHeight > 0) // the picture again, within the new limits
            s.setTableViewHeight(QString::number(double(s.m_currentHeight)));
    });
    h.bluetoothResultHandle_LightColorInfo =
        weakly([](DeskSession& s, int open, int mode, int red, int green, int blue) {
            s.updateLightColor(open, mode, red, green, blue);
        });

    // A lost link ends the session; it must never come back by itself.
    facade().setAutoConnectAfterDisconnect(false);
}

void DeskSession::deskLinked() {
    if (isReleased()) { // a link that came up while the desk was let go goes again
        m_plannedDisconnect->start();
        return;
    }
    m_plannedDisconnect->end();
    emit deskLinkChanged(m_link->blutoothName());
    m_sleepGuard->deskLinked();
    refreshDeviceInfo();
}

void DeskSession::refreshDeviceInfo() {
    const OMBluetoothModel record = CurrentDeviceStore::load();
    m_sitOrStand = text(record.sitOrStand);
    m_remindInterval = text(record.remindInterval);
    m_isCustom = text(record.isCustom);
    m_notificationSound = text(record.notificationsound);
    if (auto presets = CurrentDeviceStore::parsePresets(record.memoryHeight))
        m_presetKeys->setPresets(*presets);
    actionGetDeskMaxMinHeight();
    refreshContentByDeviceInfo();
}

void DeskSession::actionGetDeskMaxMinHeight() {
    facade().writeDataWithCurrentperipheral(BluetoothProtocol::cmdForTableInfo(), nullptr);
}

void DeskSession::refreshContentByDeviceInfo() {
    if (m_sitOrStand != u"0") {
        OMTimeManager& counter = timeManager();
        // A reconnection leaves the countdown as it was.
        if (!m_link->takeReConnect())
            counter.start();
        if (m_isCustom == u"1") {
            counter.setType(3);
            counter.setTotal(m_remindInterval.toInt());
        } else if (m_remindInterval == u"0" || m_remindInterval == u"1" ||
                   m_remindInterval == u"2") {
            counter.setType(m_remindInterval.toInt());
        }
    }
    emit m_presetKeys->presetsChanged();
}

void DeskSession::actionDeviceChanged() {
    m_changingDesk = false;
    m_release->end();
    keyOwner().releaseAll(); // another desk: nothing held for the old one carries over
    m_objectLightColor.reset();
    emit lightStripAvailable(false);
    timeManager().setTime(0);
    timeManager().stop();
    m_link->followCurrentPeripheral();
    deskLinked();
    initBluetoothResultHandle();
}

void DeskSession::deskChangeStarting(std::function<void()> letGo) {
    m_changingDesk = true;
    keyOwner().releaseThen(std::move(letGo));
}

void DeskSession::deskChangeFailed() {
    m_changingDesk = false;
    requestBreakTip();
}

void DeskSession::bluetoothDisConnected() {
    keyOwner().releaseAll();
    emit deskLinkChanged({});
    // Letting go before sleep or on request is no lost link: no alert, the screen stays.
    if (m_plannedDisconnect->isPlanned())
        m_plannedDisconnect->linkGone();
    else if (!m_changingDesk)
        requestBreakTip();
}

void DeskSession::requestBreakTip() {
    later(Scheduler::Duration::zero(), [](DeskSession& self) { emit self.breakTipRequested(); });
}

void DeskSession::actionDeleteCurrentDeviceSetting() {
    // The link goes only once the desk has heard that no key is held.
    QPointer<DeskSession> self(this);
    keyOwner().releaseThen([self] {
        facade().disconnectAllPeripheral();
        timeManager().stop();
        if (self)
            self->actionPushToTypeVC();
    });
}

void DeskSession::actionPushToTypeVC() {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kDeleteCurrentDevice));
    // The router replaces the screen, which may delete this session: only what needs no session
    // may follow. The user sees the end, however hidden the window was.
    OMScreenRouter::instance().show(QString::fromLatin1(
        facade().blueToothIsOpen() ? screens::kBluetoothSearch : screens::kNoBluetooth));
    OMWindowIdentifier::bringToFront(OMWindowIdentifier::find(OMWindowIdentifier::home()));
}

void DeskSession::actionDeleteCurrentDevice() {
    NotificationCenter::defaultCenter().removeObserver(this);
    releaseHeldKeys();
    emit deskLinkChanged({});
    // Every end of a session comes here, whoever ends it: the global keys go with it.
    DQGlobalKeyHelper::shareInstance().removeDeskGlobalHotKey();
}

// ---- Height ----

void DeskSession::showHeight(int height) {
    if (height < 1)
        return;
    m_readout->showReport(height, m_minHeight, m_maxHeight);
    m_currentHeight = static_cast<float>(height);
    keyOwner().heightReported(height);
    emit heightReported(m_readout->shownTenths());
    m_hotKeyMovement->globalKeyMoving(m_currentHeight);
    m_goToHeight->heightReported(height);
}

// Any movement of the desk restarts the sit-stand countdown; the reminder hears of the new height
// after that.
void DeskSession::setTableViewHeight(const QString& height) {
    m_readout->show(height, m_minHeight, m_maxHeight);
}

void DeskSession::actionHeightUnitChange() {
    setTableViewHeight(QString::asprintf("%f", double(m_currentHeight)));
}

// ---- Keys ----

void DeskSession::holdKey(int type) {
    m_screenClaim = keyOwner().claim(HeldKeyOwner::Source::Screen, type, this);
}

void DeskSession::releaseKey() {
    m_screenClaim.release();
}

void DeskSession::releaseHeldKeys() {
    keyOwner().stopAll(HeldKeyOwner::Ending::LetGo);
}

bool DeskSession::isReleased() const {
    return m_release->isReleased();
}

bool DeskSession::isConnected() const {
    return !isReleased() && facade().isConnect();
}

void DeskSession::stopUnattendedMoves() {
    m_hotKeyMovement->globalKeyStopUpDown();
    m_goToHeight->abort();
}

// ---- Moves to a height ----

GoToHeight::Refusal DeskSession::moveTo(int tenthsCm) {
    return m_goToHeight->start(tenthsCm, static_cast<int>(m_currentHeight), limits());
}

void DeskSession::stopMoving() {
    m_goToHeight->stop(); // also a move already coasting to its end
    keyOwner().stopAll();
}

// ---- Light strip ----

void DeskSession::updateLightColor(int open, int mode, int red, int green, int blue) {
    if (!m_objectLightColor) {
        m_objectLightColor.emplace();
        later(Scheduler::Duration::zero(),
              [](DeskSession& self) { emit self.lightStripAvailable(true); });
    }
    const int previousOpen = m_objectLightColor->open;
    *m_objectLightColor = Object_LightColor{open, mode, red, green, blue};
    if (open != previousOpen)
        NotificationCenter::defaultCenter().post(
            QString::fromLatin1(notifications::kLightColorStatusChange),
            toPropertyForm(*m_objectLightColor));
}

} // namespace ostrel
