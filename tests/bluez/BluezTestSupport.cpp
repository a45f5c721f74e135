#include "BluezTestSupport.h"

#include "transport/BluetoothFilter.h"
#include "transport/QtPlatformCentral.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTest>

namespace ostrel::test {

void BluezTest::SetUp() {
    m_previousTool =
        BluetoothTool::replaceShareInstance(std::make_unique<BluetoothTool>(new QtPlatformCentral));
    m_previousHandle =
        BluetoothResultHandle::replaceSharedInstance(std::make_unique<BluetoothResultHandle>());
    m_previousFacade =
        RBBluetoothManager::replaceSharedInstance(std::make_unique<RBBluetoothManager>());
    handle().bluetoothResultHandle_HeightChange = [this](int height) { heights.push_back(height); };
    ASSERT_TRUE(waitFor([] { return facade().blueToothIsOpen(); })) << "no powered adapter";
}

void BluezTest::TearDown() {
    facade().resetManager();
    for (auto it = m_deskPaths.cbegin(); it != m_deskPaths.cend(); ++it)
        control(QStringLiteral("RemoveDesk"), {it.key()});
    control(QStringLiteral("SetPowered"), {true});
    offerSockets(true);
    RBBluetoothManager::replaceSharedInstance(std::move(m_previousFacade));
    BluetoothTool::replaceShareInstance(std::move(m_previousTool));
    BluetoothResultHandle::replaceSharedInstance(std::move(m_previousHandle));
}

bool BluezTest::waitFor(const std::function<bool()>& condition, int timeoutMs) {
    return QTest::qWaitFor(condition, timeoutMs);
}

QDBusMessage BluezTest::control(const QString& method, const QVariantList& arguments) {
    const QDBusMessage reply = StandinBus::instance().control(method, arguments);
    EXPECT_NE(reply.type(), QDBusMessage::ErrorMessage)
        << method.toStdString() << ": " << reply.errorMessage().toStdString();
    return reply;
}

void BluezTest::addDesk(const QString& name, int type, const QVariantMap& options) {
    const QDBusMessage reply = control(QStringLiteral("AddDesk"), {name, type, options});
    m_deskPaths.insert(name, qvariant_cast<QDBusObjectPath>(reply.arguments().value(0)).path());
}

QVariantMap BluezTest::acquiredState(const QString& name) {
    using Objects = QMap<QDBusObjectPath, QMap<QString, QVariantMap>>;
    const QDBusMessage reply = StandinBus::instance().call(QDBusMessage::createMethodCall(
        QStringLiteral("org.bluez"), QStringLiteral("/"),
        QStringLiteral("org.freedesktop.DBus.ObjectManager"), QStringLiteral("GetManagedObjects")));
    const Objects objects = qdbus_cast<Objects>(reply.arguments().value(0));
    QVariantMap state;
    for (auto it = objects.begin(); it != objects.end(); ++it) {
        if (!it.key().path().startsWith(m_deskPaths.value(name) + '/'))
            continue;
        const QVariantMap properties =
            it.value().value(QStringLiteral("org.bluez.GattCharacteristic1"));
        for (const char* key : {"NotifyAcquired", "WriteAcquired"}) {
            if (properties.contains(QLatin1String(key)))
                state.insert(QLatin1String(key), properties.value(QLatin1String(key)));
        }
    }
    return state;
}

QVariant BluezTest::bluezProperty(const char* property, const QString& desk) {
    QDBusMessage get = QDBusMessage::createMethodCall(
        QStringLiteral("org.bluez"),
        desk.isEmpty() ? QStringLiteral("/org/bluez/hci0") : m_deskPaths.value(desk),
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    get.setArguments({desk.isEmpty() ? QStringLiteral("org.bluez.Adapter1")
                                     : QStringLiteral("org.bluez.Device1"),
                      QLatin1String(property)});
    return StandinBus::instance().call(get).arguments().value(0).value<QDBusVariant>().variant();
}

void BluezTest::offerSockets(bool offered) {
    control(QStringLiteral("SetAcquire"), {offered});
}

int BluezTest::deskHeight(const QString& name) {
    return control(QStringLiteral("DeskHeight"), {name}).arguments().value(0).toInt();
}

void BluezTest::startScan(BluetoothType type) {
    facade().scanWithType(
        type, [this](const PeripheralPtr& peripheral, int flags, const OptionalError& error) {
            scanEvents.push_back({peripheral, peripheral ? peripheral->name() : QString(), flags,
                                  error ? std::optional<int>(error->code) : std::nullopt});
        });
}

const ScanEvent* BluezTest::firstEvent(const QString& name, int flags) const {
    for (const ScanEvent& event : scanEvents) {
        if (event.name == name && event.flags == flags)
            return &event;
    }
    return nullptr;
}

PeripheralPtr BluezTest::discover(const QString& name) {
    startScan(BluetoothFilter::getBluetoothTypeWithPeriperalName(name));
    const bool found = waitFor([&] { return firstEvent(name, 8) != nullptr; });
    facade().stopScanDevice();
    EXPECT_TRUE(found) << name.toStdString() << " was not found";
    return found ? firstEvent(name, 8)->peripheral : nullptr;
}

void BluezTest::connectDesk(const PeripheralPtr& peripheral) {
    facade().connectDeviceWithPeripheral(
        peripheral,
        [this](const PeripheralPtr&, const OptionalError& error) {
            connectReports.push_back(error ? std::optional<int>(error->code) : std::nullopt);
        },
        [this](const std::optional<Bytes>& frame, const OptionalError&) {
            if (!frame)
                return;
            ++frames;
            handle().handleTableData(*frame);
        });
}

} // namespace ostrel::test
