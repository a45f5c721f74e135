#include "transport/screens/DeviceManagement.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"
#include "store/CurrentDeviceStore.h"
#include "store/FileManager.h"
#include "store/ListLookup.h"
#include "store/OMPlistManager.h"
#include "transport/BluetoothCenterManager.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/HomeNavigator.h"

#include <QCoreApplication>
#include <QPointer>
#include <QSet>
#include <algorithm>
#include <memory>
#include <utility>

namespace ostrel {

namespace {

constexpr BluetoothType kDeskType = 2;
// The link is dropped a moment after scanning stops, so the radio is idle when it goes.
constexpr Scheduler::Duration kEndSessionDelay{100};

const QString kBluetoothName = QStringLiteral("bluetoothName");
const QString kDeviceName = QStringLiteral("deviceName");

RBBluetoothManager& facade() {
    return RBBluetoothManager::sharedInstance();
}

QString onLineText(bool onLine) {
    return onLine ? QStringLiteral("1") : QStringLiteral("0");
}

void run(const std::function<void()>& hook) {
    if (hook)
        hook();
}

} // namespace

DeviceManagement::DeviceManagement(SessionHooks hooks, QObject* parent)
    : QObject(parent), m_hooks(std::move(hooks)) {
    refreshDevices();
}

DeviceManagement::~DeviceManagement() {
    // A scan of these pages must not outlive them; another's is left alone.
    if (m_isScanning)
        facade().stopScanDevice();
}

bool DeviceManagement::isCurrentDesk(const QString& bluetoothName) {
    const PeripheralPtr& current = facade().currentPeripheral();
    return current && current->isConnected() && current->name() == bluetoothName;
}

bool DeviceManagement::isInRange(const QString& bluetoothName) const {
    return bool(peripheralInRange(bluetoothName));
}

PeripheralPtr DeviceManagement::peripheralInRange(const QString& bluetoothName) const {
    const QList<PeripheralPtr>& devices = facade().nDevices();
    const auto found = std::find_if(devices.cbegin(), devices.cend(), [&](const auto& device) {
        return device->name() == bluetoothName;
    });
    return found == devices.cend() ? PeripheralPtr() : *found;
}

QVariantMap DeviceManagement::boundRecord(const QString& bluetoothName) {
    const QVariantList devices = OMPlistManager::getBindDevice();
    const qsizetype index = ListLookup::indexOf(devices, kBluetoothName, bluetoothName);
    return index < 0 ? QVariantMap() : devices.at(index).toMap();
}

void DeviceManagement::blueToothStartScan() {
    facade().setNDevices({});
    refreshDevices(); // all offline but the desk the session holds
    facade().resetScanManager();
    setScanning(true);
    facade().setScanTimeOut(kScanTimeOut);
    QPointer<DeviceManagement> self(this);
    facade().scanWithType(kDeskType,
                          [self](const PeripheralPtr& peripheral, int flags, const OptionalError&) {
                              if (self)
                                  self->scanEvent(peripheral, flags);
                          });
}

void DeviceManagement::scanEvent(const PeripheralPtr& peripheral, int flags) {
    if (flags == BluetoothCenterManager::FlagFirstSighting && peripheral) {
        // Desks are told apart by name: a second desk of the same name adds nothing.
        if (!isInRange(peripheral->name())) {
            QList<PeripheralPtr> devices = facade().nDevices();
            devices.append(peripheral);
            facade().setNDevices(devices);
        }
        refreshDevices();
    } else if (flags == BluetoothCenterManager::FlagScanEnded) {
        refreshDevices();
        setScanning(false);
    }
}

void DeviceManagement::setScanning(bool scanning) {
    if (m_isScanning == scanning)
        return;
    m_isScanning = scanning;
    emit scanningChanged(scanning);
}

void DeviceManagement::refreshDevices() {
    m_arrayPaired.clear();
    m_arrayUnPaired.clear();
    QSet<QString> paired;
    for (const QVariant& entry : OMPlistManager::getBindDevice()) {
        // Entries this build cannot read stay stored untouched; they are only not shown.
        QVariantMap record = entry.toMap();
        const QString name = record.value(kBluetoothName).toString();
        if (name.isEmpty() || paired.contains(name))
            continue;
        paired.insert(name);
        record.insert(QString::fromLatin1(kOnLineKey),
                      onLineText(isInRange(name) || isCurrentDesk(name)));
        m_arrayPaired.append(record);
    }
    for (const PeripheralPtr& device : facade().nDevices()) {
        if (paired.contains(device->name()))
            continue;
        m_arrayUnPaired.append({{kBluetoothName, device->name()},
                                {kDeviceName, device->name()},
                                {QStringLiteral("bluetoothMacAddress"), device->identifierString()},
                                {QString::fromLatin1(kOnLineKey), onLineText(true)}});
    }
    emit devicesChanged();
}

void DeviceManagement::actionConnectWithBluetoothName(const QString& bluetoothName) {
    if (m_isConnecting || isCurrentDesk(bluetoothName))
        return;
    const PeripheralPtr peripheral = peripheralInRange(bluetoothName);
    if (!peripheral) {
        // Not seen in this scan: the desk the session holds stays.
        emit messageRequested(tr("Connection failed"));
        return;
    }
    m_isConnecting = true;
    emit statusChanged(tr("Connecting"));
    CurrentDeviceStore::remove();
    // The session lets the current desk go once it has heard that no key is held.
    QPointer<DeviceManagement> self(this);
    auto switchDesk = [self, hooks = m_hooks, peripheral] { switchTo(self, hooks, peripheral); };
    if (m_hooks.changeStarting)
        m_hooks.changeStarting(switchDesk);
    else
        switchDesk();
}

void DeviceManagement::switchTo(const QPointer<DeviceManagement>& self, const SessionHooks& hooks,
                                const PeripheralPtr& peripheral) {
    if (const PeripheralPtr current = facade().currentPeripheral())
        facade().disconnectWithPeripheral(current);

    // Only the first report answers this request; later ones (a lost link) are the session's.
    auto answered = std::make_shared<bool>(false);
    facade().connectDeviceWithPeripheral(
        peripheral,
        [self, answered, hooks](const PeripheralPtr& linked, const OptionalError& error) {
            if (std::exchange(*answered, true))
                return;
            // The facade names the new desk current only after this call returns.
            HomeNavigator::later(QCoreApplication::instance(), [self, hooks, linked, error] {
                finishSwitch(self, hooks, linked, error);
            });
        });
}

// The switch completes even when the pages closed meanwhile: the session waits for it.
void DeviceManagement::finishSwitch(const QPointer<DeviceManagement>& self,
                                    const SessionHooks& hooks, const PeripheralPtr& peripheral,
                                    const OptionalError& error) {
    if (self) {
        self->m_isConnecting = false;
        emit self->statusChanged({});
    }
    if (error) {
        if (self)
            emit self->messageRequested(tr("Connection failed"));
        run(hooks.changeFailed);
        return;
    }
    // A desk from the unbound section becomes bound, as pairing it from desk search would.
    CurrentDeviceStore::bindDevice(peripheral->name(), peripheral->identifierString());
    if (self) {
        self->refreshDevices();
        emit self->messageRequested(tr("Connected successfully"));
    }
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kGlobeBlueToothIsConnect));
}

bool DeviceManagement::deleteDevice(const QVariantMap& record) {
    const QString name = record.value(kBluetoothName).toString();
    OMPlistManager::deleteBindDeviceWithBlueToothName(name);
    if (!isCurrentDesk(name)) {
        blueToothStartScan();
        return false;
    }
    FileManager::writeDictionary(record, QString::fromLatin1(CurrentDeviceStore::kFileName));
    facade().stopScanDevice();
    setScanning(false);
    // Not tied to these pages: ending the session replaces them.
    Scheduler::instance().after(kEndSessionDelay, QCoreApplication::instance(),
                                [hook = m_hooks.endSession] { run(hook); });
    return true;
}

void DeviceManagement::renameDevice(const QString& bluetoothName, const QString& deviceName) {
    const QString name = deviceName.trimmed();
    QVariantMap record = boundRecord(bluetoothName);
    if (name.isEmpty() || record.isEmpty())
        return;
    record.insert(kDeviceName, name);
    OMPlistManager::saveDeviceInfoWithBlueToothName(bluetoothName, record);
    const QString currentFile = QString::fromLatin1(CurrentDeviceStore::kFileName);
    if (auto current = FileManager::readDictionaryFileName(currentFile);
        current && current->value(kBluetoothName).toString() == bluetoothName) {
        current->insert(kDeviceName, name);
        FileManager::writeDictionary(*current, currentFile);
    }
    refreshDevices();
}

} // namespace ostrel
