#include "session/DeskSession.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/BluetoothProtocol.h"
#include "protocol/BluetoothResultHandle.h"
#include "session/DeskHeightDisplay.h"
#include "session/OMTimeManager.h"
#include "store/CurrentDeskModel.h"
#include "store/OMPlistManager.h"
#include "store/RecordDictionary.h"
#include "transport/RBBluetoothManager.h"
#include "widgets/OMScreenRouter.h"

#include <QPointer>
#include <algorithm>

namespace ostrel {

namespace {

struct PresetText {
    const char* image;     // picture name stem, "_set" / "_unset" appended
    const char* saveTip;   // what the save sheet asks about
    const char* tipCm;     // the hover tip, centimetres
    const char* tipInches; // the hover tip, inches
};

constexpr PresetText kPresets[DeskSession::kPresetCount] = {
    {"control_sit", QT_TRANSLATE_NOOP("ostrel::DeskSession", "the sitting height"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "Sit height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "Sit height:%.1fin")},
    {"control_stand", QT_TRANSLATE_NOOP("ostrel::DeskSession", "the standing height"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "Stand height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "Stand height:%.1fin")},
    {"control_M1", QT_TRANSLATE_NOOP("ostrel::DeskSession", "the M1 height"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "M1 height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "M1 height:%.1fin")},
    {"control_M2", QT_TRANSLATE_NOOP("ostrel::DeskSession", "the M2 height"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "M2 height:%.1fcm"),
     QT_TRANSLATE_NOOP("ostrel::DeskSession", "M2 height:%.1fin")},
};

// The memory-height text with one slot replaced by a height in whole cm ("%.0f" rounds).
std::string presetsWithSlot(const CurrentDeviceStore::Presets& presets, int type, float height) {
    const int slot = type - DeskSession::kSitKey;
    if (slot < 0 || slot >= DeskSession::kPresetCount)
        return {};
    QStringList parts;
    for (int i = 0; i < DeskSession::kPresetCount; ++i)
        parts << (i == slot ? QString::asprintf("%.0f", double(height) / 10.0)
                            : QString::number(presets[std::size_t(i)]));
    return parts.join(u',').toStdString();
}

QString text(const std::optional<std::string>& value) {
    return value ? QString::fromStdString(*value) : QStringLiteral("0");
}

BluetoothResultHandle& handle() {
    return BluetoothResultHandle::sharedInstance();
}

RBBluetoothManager& facade() {
    return RBBluetoothManager::sharedInstance();
}

void setCommandType(int type) {
    handle().setCurrentCommandType(type);
}

} // namespace

DeskSession::DeskSession(QObject* parent) : QObject(parent) {}

DeskSession::~DeskSession() {
    releaseHeldKeys();
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
    releaseHeldKeys(); // a new session never inherits a key held in an earlier one
    initBluetooth();
    initBluetoothResultHandle();
    later(kStartupToastDelay, [](DeskSession& self) {
        if (self.m_currentHeight == 0.0f)
            emit self.toastRequested(
                tr("Connected successful, move the table to synchronize the height."));
    });
}

void DeskSession::initData() {
    m_blutoothName.clear();
    m_currentHeight = 0.0f;
    m_previousHeight.clear();
    m_maxHeight = kDefaultMaxHeight;
    m_minHeight = kDefaultMinHeight;
    m_memory = {};
    m_sitOrStand = m_remindInterval = m_isCustom = m_notificationSound = QStringLiteral("0");
    m_isMoving = false;
    m_tempHeight = 0.0f;
    m_tempDate = Scheduler::instance().now();
    m_isMemerySet = QStringLiteral("0");
    m_commandTypeMemery = kNoKey;
    m_isReConnect = false;
    m_objectLightColor.reset();
}

void DeskSession::registerObservers() {
    using Handler = void (DeskSession::*)();
    const std::pair<const char*, Handler> observers[] = {
        {notifications::kMemoryKeyChange, &DeskSession::refreshDeviceInfo},
        {notifications::kGlobeBlueToothIsConnect, &DeskSession::actionDeviceChanged},
        {notifications::kReconnect, &DeskSession::reconnect},
        {notifications::kBluetoothDisconnected, &DeskSession::bluetoothDisConnected},
        {notifications::kUnitChange, &DeskSession::actionHeightUnitChange},
        {notifications::kDeleteCurrentDevice, &DeskSession::actionDeleteCurrentDevice},
    };
    NotificationCenter& center = NotificationCenter::defaultCenter();
    for (const auto& [name, handler] : observers)
        center.addObserver(this, QString::fromLatin1(name),
                           [this, handler = handler](const QVariant&) { (this->*handler)(); });
}

// ---- Link ----

void DeskSession::initBluetooth() {
    if (!facade().isConnect()) {
        requestBreakTip();
        return;
    }
    adoptLinkedPeripheral();
    m_blutoothName =
        facade().currentPeripheral() ? facade().currentPeripheral()->name() : QString();
    subscribeToCurrentPeripheral();
    refreshDeviceInfo();
}

// Desk search links the desk through a facade of its own. Poll answers and commands go to the
// shared facade's current peripheral, so it takes over the linked current device.
void DeskSession::adoptLinkedPeripheral() {
    const PeripheralPtr& current = facade().currentPeripheral();
    if (current && current->isConnected())
        return;
    const OMBluetoothModel record = CurrentDeviceStore::load();
    const auto matches = [&record](const PeripheralPtr& peripheral) {
        return (record.bluetoothMacAddress &&
                peripheral->identifierString().toStdString() == *record.bluetoothMacAddress) ||
               (record.bluetoothName && peripheral->name().toStdString() == *record.bluetoothName);
    };
    const auto& linked = facade().bluetoothTool().centerManager().connectedDeviceDict();
    const auto found = std::find_if(linked.cbegin(), linked.cend(), matches);
    if (found != linked.cend())
        facade().setCurrentPeripheral(*found);
}

void DeskSession::subscribeToCurrentPeripheral() {
    QPointer<DeskSession> self(this);
    facade().setNotifyDataWithPeripheral(
        facade().currentPeripheral(),
        [self](const std::optional<Bytes>& frame, const OptionalError&) {
            if (self && frame)
                handle().handleTableData(*frame);
        });
}

void DeskSession::initBluetoothResultHandle() {
    QPointer<DeskSession> self(this);
    // Every reaction holds the session weakly: a closed screen hears nothing.
    auto weakly = [self](auto reaction) {
        return [self, reaction](auto&&... args) {
            if (self)
                reaction(*self, args...);
        };
    };
    auto stopHotKeyMove =
        weakly([](DeskSession& s, const std::string&) { s.globalKeyStopUpDown(); });

    BluetoothResultHandle& h = handle();
    h.bluetoothResultHandle_ChildLock = weakly([](DeskSession& s, bool locked) {
        if (locked)
            s.globalKeyStopUpDown();
    });
    h.bluetoothResultHandle_RST = weakly([](DeskSession& s, const std::string&) {
        s.globalKeyStopUpDown();
        s.clearPresetsAfterReset();
    });
    h.bluetoothResultHandle_Bottom = [](const std::string&) {};
    h.bluetoothResultHandle_Top = [](const std::string&) {};
    h.bluetoothResultHandle_SlideDownward = stopHotKeyMove;
    h.bluetoothResultHandle_Error = stopHotKeyMove;
    h.bluetoothResultHandle_Other = stopHotKeyMove;
    h.bluetoothResultHandle_Manage =
        weakly([](DeskSession& s, const std::string&) { s.confirmMemoryKey(); });
    h.bluetoothResultHandle_HeightChange = weakly([](DeskSession& s, int height) {
        s.later(Scheduler::Duration::zero(), [height](DeskSession& t) { t.showHeight(height); });
    });
    h.bluetoothResultHandle_DeviceInfo = weakly([](DeskSession& s, const DeviceModel& model) {
        s.m_maxHeight = model.maxHeight;
        s.m_minHeight = model.minHeight;
    });
    h.bluetoothResultHandle_LightColorInfo =
        weakly([](DeskSession& s, int open, int mode, int red, int green, int blue) {
            s.updateLightColor(open, mode, red, green, blue);
        });

    // A lost link ends the session; it must never come back by itself.
    facade().setAutoConnectAfterDisconnect(false);
}

void DeskSession::startScan() {
    m_isReConnect = true;
    scanRound([](DeskSession& self) { self.startScanAgain(); });
}

void DeskSession::startScanAgain() {
    scanRound([](DeskSession& self) { self.startScan(); });
}

// One 30 s round looking for the bound desk by its exact name; the next round follows when it
// ends, without limit.
void DeskSession::scanRound(Task onEnded) {
    facade().setNDevices({});
    facade().resetManager();
    facade().setScanTimeOut(kScanRoundSeconds);
    QPointer<DeskSession> self(this);
    facade().scanWithType(kScanRuleType, [self, onEnded](const PeripheralPtr& peripheral, int flags,
                                                         const OptionalError&) {
        if (!self)
            return;
        if (flags == BluetoothCenterManager::FlagScanEnded) {
            // Off the scanner's own call stack: the next round restarts the scanner.
            self->later(Scheduler::Duration::zero(), onEnded);
        } else if (flags == BluetoothCenterManager::FlagFirstSighting && peripheral &&
                   peripheral->name() == self->m_blutoothName) {
            self->connectBluetoothWithPeripheral(peripheral);
            self->stopScan();
        }
    });
}

void DeskSession::stopScan() {
    facade().stopScanDevice();
}

void DeskSession::connectBluetoothWithPeripheral(const PeripheralPtr& peripheral) {
    if (facade().isConnect())
        facade().disconnectAllPeripheral();
    CurrentDeviceStore::remove();
    QPointer<DeskSession> self(this);
    facade().connectDeviceWithPeripheral(
        peripheral,
        [self](const PeripheralPtr& linked, const OptionalError& error) {
            if (!self)
                return;
            if (!error)
                self->releaseHeldKeys(); // before the new link's first poll is answered
            self->later(Scheduler::Duration::zero(), [linked, error](DeskSession& s) {
                if (error) {
                    emit s.breakTipRequested();
                    s.m_isReConnect = false;
                } else {
                    s.connected(linked);
                }
            });
        },
        [self](const std::optional<Bytes>& frame, const OptionalError&) {
            if (self && frame)
                handle().handleTableData(*frame);
        });
}

void DeskSession::connected(const PeripheralPtr& peripheral) {
    actionAddDeviceToLocalWithperipheral(peripheral);
    CurrentDeviceStore::setCurrentDeviceWithperipheral(peripheral->name(),
                                                       peripheral->identifierString());
    refreshDeviceInfo();
}

void DeskSession::actionAddDeviceToLocalWithperipheral(const PeripheralPtr& peripheral) {
    OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(
        CurrentDeviceStore::freshRecord(peripheral->name(), peripheral->identifierString())));
}

void DeskSession::refreshDeviceInfo() {
    const OMBluetoothModel record = CurrentDeviceStore::load();
    m_sitOrStand = text(record.sitOrStand);
    m_remindInterval = text(record.remindInterval);
    m_isCustom = text(record.isCustom);
    m_notificationSound = text(record.notificationsound);
    if (auto presets = CurrentDeviceStore::parsePresets(record.memoryHeight))
        m_memory = *presets;
    actionGetDeskMaxMinHeight();
    refreshContentByDeviceInfo();
}

void DeskSession::actionGetDeskMaxMinHeight() {
    facade().writeDataWithCurrentperipheral(BluetoothProtocol::cmdForTableInfo(), nullptr);
}

void DeskSession::refreshContentByDeviceInfo() {
    if (m_sitOrStand != u"0") {
        OMTimeManager& counter = timeManager();
        if (m_isReConnect)
            m_isReConnect = false; // a reconnection leaves the countdown as it was
        else
            counter.start();
        if (m_isCustom == u"1") {
            counter.setType(3);
            counter.setTotal(m_remindInterval.toInt());
        } else if (m_remindInterval == u"0" || m_remindInterval == u"1" ||
                   m_remindInterval == u"2") {
            counter.setType(m_remindInterval.toInt());
        }
    }
    emit presetsChanged();
}

void DeskSession::actionDeviceChanged() {
    releaseHeldKeys(); // another desk: nothing held for the old one carries over
    m_objectLightColor.reset();
    emit lightStripAvailable(false);
    timeManager().setTime(0);
    timeManager().stop();
    m_blutoothName =
        facade().currentPeripheral() ? facade().currentPeripheral()->name() : QString();
    refreshDeviceInfo();
    initBluetoothResultHandle();
    subscribeToCurrentPeripheral();
}

void DeskSession::bluetoothDisConnected() {
    releaseHeldKeys();
    requestBreakTip();
}

void DeskSession::requestBreakTip() {
    later(Scheduler::Duration::zero(), [](DeskSession& self) { emit self.breakTipRequested(); });
}

void DeskSession::actionDeleteCurrentDeviceSetting() {
    facade().disconnectAllPeripheral();
    releaseHeldKeys();
    timeManager().stop();
    actionPushToTypeVC();
}

void DeskSession::actionPushToTypeVC() {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kDeleteCurrentDevice));
    // The router replaces the screen, which may delete this session: nothing may follow.
    OMScreenRouter::instance().show(QString::fromLatin1(
        facade().blueToothIsOpen() ? screens::kBluetoothSearch : screens::kNoBluetooth));
}

void DeskSession::actionDeleteCurrentDevice() {
    NotificationCenter::defaultCenter().removeObserver(this);
    releaseHeldKeys();
}

// ---- Height ----

void DeskSession::showHeight(int height) {
    if (height < 1)
        return;
    setTableViewHeight(QString::number(height));
    m_currentHeight = static_cast<float>(height);
    globalKeyMoving();
}

void DeskSession::setTableViewHeight(const QString& height) {
    const QString normalised = DeskHeightDisplay::normalisedHeight(height);
    const double tenths = normalised.toDouble();
    const QString shown = DeskHeightDisplay::heightText(tenths, DeskHeightDisplay::usesInches());
    if (shown != m_shownText) {
        m_shownText = shown;
        emit heightShown(shown);
    }

    // Any movement of the desk restarts the sit-stand countdown.
    if (m_previousHeight != normalised && timeManager().time() > 0)
        timeManager().setTime(0);
    m_previousHeight = normalised;

    const auto offsets = DeskHeightDisplay::pictureOffsets(
        static_cast<float>(tenths), m_minHeight, m_maxHeight,
        DeskHeightDisplay::legsForModel(CurrentDeskModel::name()));
    emit deskOffsetsChanged(offsets.top, offsets.middle);
}

void DeskSession::actionHeightUnitChange() {
    setTableViewHeight(QString::asprintf("%f", double(m_currentHeight)));
}

// ---- Keys and presets ----

void DeskSession::holdKey(int type) {
    setCommandType(type);
}

void DeskSession::releaseKey() {
    setCommandType(kNoKey);
}

bool DeskSession::holdPresetKey(int slot) {
    if (memory(slot) < 1) {
        emit heightToastRequested(tr("Height presets not set"));
        return false;
    }
    setCommandType(kSitKey + slot);
    return true;
}

void DeskSession::actionSetMemoryKeyWithtype(int type) {
    m_isMemerySet = QStringLiteral("0");
    m_commandTypeMemery = type;
    setCommandType(kMemoryKey);
    later(kMemoryKeyTap, [](DeskSession&) { setCommandType(kNoKey); });
    later(kMemoryConfirmTimeout, [](DeskSession& self) {
        if (self.m_isMemerySet == u"0")
            emit self.toastRequested(tr("Setting failed"));
    });
}

// The desk shows "S-" once it took the memory key: answer with the preset key of the slot.
void DeskSession::confirmMemoryKey() {
    // Only the first confirmation of a request counts; an "S-" from the desk's own keypad,
    // with no request from here, must not overwrite the recorded presets.
    if (m_isMemerySet != u"0" || m_commandTypeMemery == kNoKey)
        return;
    m_isMemerySet = QStringLiteral("1");
    setCommandType(m_commandTypeMemery);
    later(kMemoryKeyTap, [](DeskSession& self) {
        setCommandType(kNoKey);
        emit self.toastRequested(tr("Setting successful"));
        self.actionMemoryKeySaveWithtype(self.m_commandTypeMemery);
    });
}

void DeskSession::actionMemoryKeySaveWithtype(int type) {
    if (m_currentHeight == 0.0f)
        return;
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.memoryHeight = presetsWithSlot(m_memory, type, m_currentHeight);
    CurrentDeviceStore::save(record);
    refreshDeviceInfo();
}

void DeskSession::actionEnterMemoryKeyWithtype(int type) {
    setCommandType(type);
    later(kPresetKeyTap, [](DeskSession&) { setCommandType(kNoKey); });
}

void DeskSession::clearPresetsAfterReset() {
    if (std::none_of(m_memory.begin(), m_memory.end(), [](int preset) { return preset >= 1; }))
        return;
    OMBluetoothModel record = CurrentDeviceStore::load();
    record.memoryHeight = std::string(CurrentDeviceStore::kNoPresets);
    CurrentDeviceStore::save(record);
    m_memory = {};
    later(Scheduler::Duration::zero(), [](DeskSession& self) { emit self.presetsChanged(); });
}

QString DeskSession::presetTipText(int slot) const {
    const int preset = memory(slot);
    if (preset == 0)
        return {};
    const PresetText& texts = kPresets[slot];
    if (DeskHeightDisplay::usesInches())
        return QString::asprintf(qPrintable(tr(texts.tipInches)),
                                 double(preset) / DeskHeightDisplay::kCmPerInch);
    return QString::asprintf(qPrintable(tr(texts.tipCm)), double(preset));
}

QString DeskSession::presetSaveTip(int slot) {
    return tr(kPresets[slot].saveTip);
}

QString DeskSession::presetImageName(int slot, bool set) {
    return QString::fromLatin1(kPresets[slot].image) +
           (set ? QStringLiteral("_set") : QStringLiteral("_unset"));
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

// ---- Hot-key movement ----

// A hot-key movement ends by itself when the height stops changing for a second.
void DeskSession::globalKeyMoving() {
    if (!m_isMoving)
        return;
    const Scheduler::Duration now = Scheduler::instance().now();
    if (now - m_tempDate <= kHotKeyStallStep)
        return;
    if (m_currentHeight == m_tempHeight) {
        setCommandType(kNoKey);
        m_isMoving = false;
        m_tempHeight = 0.0f;
    } else {
        m_tempHeight = m_currentHeight;
    }
    m_tempDate = now;
}

void DeskSession::globalKeyStopUpDown() {
    if (!m_isMoving)
        return;
    setCommandType(kNoKey);
    m_isMoving = false;
    m_tempHeight = 0.0f;
    m_tempDate = Scheduler::instance().now();
}

void DeskSession::releaseHeldKeys() {
    setCommandType(kNoKey);
    m_isMoving = false;
    m_tempHeight = 0.0f;
}

} // namespace ostrel
