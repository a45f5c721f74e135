#include "session/DeskLink.h"

#include "protocol/BluetoothResultHandle.h"
#include "store/CurrentDeviceStore.h"
#include "store/OMPlistManager.h"
#include "store/RecordDictionary.h"
#include "transport/BluetoothTool.h"
#include "transport/RBBluetoothManager.h"

#include <QPointer>
#include <algorithm>

namespace ostrel {

namespace {

RBBluetoothManager& facade() {
    return RBBluetoothManager::sharedInstance();
}

QString currentName() {
    return facade().currentPeripheral() ? facade().currentPeripheral()->name() : QString();
}

// Every frame of the link goes to the classifier while the link's owner lives.
RBBluetoothManager::FrameCallback toClassifier(QPointer<DeskLink> owner) {
    return [owner](const std::optional<Bytes>& frame, const OptionalError&) {
        if (owner && frame)
            BluetoothResultHandle::sharedInstance().handleTableData(*frame);
    };
}

} // namespace

DeskLink::DeskLink(QObject* parent) : QObject(parent) {}

void DeskLink::later(Task task) {
    Scheduler::instance().after(Scheduler::Duration::zero(), this,
                                [this, task = std::move(task)] { task(*this); });
}

bool DeskLink::takeReConnect() {
    return std::exchange(m_isReConnect, false);
}

bool DeskLink::initBluetooth() {
    if (!facade().isConnect())
        return false;
    adoptLinkedPeripheral();
    m_blutoothName = currentName();
    subscribeToCurrentPeripheral();
    return true;
}

void DeskLink::followCurrentPeripheral() {
    m_blutoothName = currentName();
    subscribeToCurrentPeripheral();
}

// Desk search links the desk through a facade of its own. Poll answers and commands go to the
// shared facade's current peripheral, so it takes over the linked current device.
void DeskLink::adoptLinkedPeripheral() {
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

void DeskLink::subscribeToCurrentPeripheral() {
    facade().setNotifyDataWithPeripheral(facade().currentPeripheral(), toClassifier(this));
}

void DeskLink::startScan() {
    m_isReConnect = true;
    m_looking = true;
    scanRound([](DeskLink& self) { self.startScanAgain(); });
}

void DeskLink::startScanAgain() {
    scanRound([](DeskLink& self) { self.startScan(); });
}

// One 30 s round looking for the bound desk by its exact name; the next round follows when it
// ends, without limit.
void DeskLink::scanRound(Task onEnded) {
    facade().setNDevices({});
    facade().resetManager();
    facade().setScanTimeOut(kScanRoundSeconds);
    QPointer<DeskLink> self(this);
    facade().scanWithType(kScanRuleType, [self, onEnded](const PeripheralPtr& peripheral, int flags,
                                                         const OptionalError&) {
        if (!self || !self->m_looking)
            return;
        if (flags == BluetoothCenterManager::FlagScanEnded) {
            // Off the scanner's own call stack: the next round restarts the scanner.
            self->later([onEnded](DeskLink& link) {
                if (link.m_looking)
                    onEnded(link);
            });
        } else if (flags == BluetoothCenterManager::FlagFirstSighting && peripheral &&
                   peripheral->name() == self->m_blutoothName) {
            self->connectBluetoothWithPeripheral(peripheral);
            self->stopScan();
        }
    });
}

void DeskLink::stopScan() {
    facade().stopScanDevice();
}

void DeskLink::stopLooking() {
    m_looking = false;
    stopScan();
}

void DeskLink::connectBluetoothWithPeripheral(const PeripheralPtr& peripheral) {
    if (facade().isConnect())
        facade().disconnectAllPeripheral();
    CurrentDeviceStore::remove();
    QPointer<DeskLink> self(this);
    facade().connectDeviceWithPeripheral(
        peripheral,
        [self](const PeripheralPtr& linked, const OptionalError& error) {
            // A later loss of this link reaches the session as a disconnect; only a failed
            // attempt is this link's news. A loss the session chose must not look like one.
            if (!self || (error && (error->code == BluetoothTool::ErrorLinkLost ||
                                    error->code == BluetoothTool::ErrorLinkLostReconnecting)))
                return;
            if (!error)
                emit self->linkStarting(); // before the new link's first poll is answered
            self->later([linked, error](DeskLink& link) {
                if (error) {
                    link.m_isReConnect = false;
                    emit link.connectFailed();
                } else {
                    link.connected(linked);
                }
            });
        },
        toClassifier(this));
}

void DeskLink::connected(const PeripheralPtr& peripheral) {
    actionAddDeviceToLocalWithperipheral(peripheral);
    CurrentDeviceStore::setCurrentDeviceWithperipheral(peripheral->name(),
                                                       peripheral->identifierString());
    emit linked();
}

void DeskLink::actionAddDeviceToLocalWithperipheral(const PeripheralPtr& peripheral) {
    OMPlistManager::saveBindDeviceWithDevice(toPropertyForm(
        CurrentDeviceStore::freshRecord(peripheral->name(), peripheral->identifierString())));
}

} // namespace ostrel
