#include "BluezStandin.h"

#include "StandinDesk.h"
#include "core/Scheduler.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <algorithm>

namespace ostrel {

namespace {

constexpr char kRootPath[] = "/";
constexpr char kAdapterName[] = "ostrel-standin";
constexpr char kErrorUnknownObject[] = "org.freedesktop.DBus.Error.UnknownObject";
constexpr char kErrorUnknownProperty[] = "org.freedesktop.DBus.Error.UnknownProperty";
constexpr char kErrorReadOnly[] = "org.freedesktop.DBus.Error.PropertyReadOnly";

// Introspection data so that busctl and d-feet can browse the tree.
QString interfaceXml(const QString& interface) {
    static const QHash<QString, QString> methods{
        {QString::fromLatin1(bluez::kObjectManagerInterface),
         QStringLiteral("<method name=\"GetManagedObjects\"><arg type=\"a{oa{sa{sv}}}\" "
                        "direction=\"out\"/></method><signal name=\"InterfacesAdded\"><arg "
                        "type=\"o\"/><arg type=\"a{sa{sv}}\"/></signal><signal "
                        "name=\"InterfacesRemoved\"><arg type=\"o\"/><arg type=\"as\"/></signal>")},
        {QString::fromLatin1(bluez::kAdapterInterface),
         QStringLiteral("<method name=\"StartDiscovery\"/><method name=\"StopDiscovery\"/>"
                        "<method name=\"SetDiscoveryFilter\"><arg type=\"a{sv}\" "
                        "direction=\"in\"/></method><method name=\"GetDiscoveryFilters\"><arg "
                        "type=\"as\" direction=\"out\"/></method><method "
                        "name=\"RemoveDevice\"><arg type=\"o\" direction=\"in\"/></method>")},
        {QString::fromLatin1(bluez::kDeviceInterface),
         QStringLiteral("<method name=\"Connect\"/><method name=\"Disconnect\"/>")},
        {QString::fromLatin1(bluez::kServiceInterface), QString()},
        {QString::fromLatin1(bluez::kCharacteristicInterface),
         QStringLiteral("<method name=\"ReadValue\"><arg type=\"a{sv}\" direction=\"in\"/><arg "
                        "type=\"ay\" direction=\"out\"/></method><method name=\"WriteValue\"><arg "
                        "type=\"ay\" direction=\"in\"/><arg type=\"a{sv}\" "
                        "direction=\"in\"/></method><method name=\"StartNotify\"/><method "
                        "name=\"StopNotify\"/><method name=\"AcquireWrite\"><arg type=\"a{sv}\" "
                        "direction=\"in\"/><arg type=\"h\" direction=\"out\"/><arg type=\"q\" "
                        "direction=\"out\"/></method><method name=\"AcquireNotify\"><arg "
                        "type=\"a{sv}\" direction=\"in\"/><arg type=\"h\" direction=\"out\"/><arg "
                        "type=\"q\" direction=\"out\"/></method>")},
        {QString::fromLatin1(bluez::kDescriptorInterface),
         QStringLiteral("<method name=\"ReadValue\"><arg type=\"a{sv}\" direction=\"in\"/><arg "
                        "type=\"ay\" direction=\"out\"/></method>")},
    };
    return QStringLiteral("<interface name=\"%1\">%2</interface>")
        .arg(interface, methods.value(interface));
}

QString propertyXml(const QString& name, const QVariant& value) {
    return QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"read\"/>")
        .arg(name, QString::fromLatin1(QDBusMetaType::typeToSignature(value.metaType())));
}

} // namespace

BluezStandin::BluezStandin(const QDBusConnection& connection, QObject* parent)
    : QDBusVirtualObject(parent), m_connection(connection), m_control(*this) {
    bluez::registerTypes();
}

BluezStandin::~BluezStandin() {
    m_connection.unregisterObject(QString::fromLatin1(kRootPath), QDBusConnection::UnregisterTree);
}

bool BluezStandin::publish() {
    return m_connection.registerVirtualObject(QString::fromLatin1(kRootPath), this,
                                              QDBusConnection::SubPath) &&
           m_connection.registerService(QString::fromLatin1(bluez::kService)) &&
           m_connection.registerService(QString::fromLatin1(StandinControl::kService));
}

// ---- Adapter ----

QVariantMap BluezStandin::adapterProperties() const {
    return {{QStringLiteral("Address"), QString::fromLatin1(kAdapterAddress)},
            {QStringLiteral("AddressType"), QStringLiteral("public")},
            {QStringLiteral("Name"), QString::fromLatin1(kAdapterName)},
            {QStringLiteral("Alias"), QString::fromLatin1(kAdapterName)},
            {QStringLiteral("Class"), QVariant::fromValue(0u)},
            {QStringLiteral("Powered"), m_powered},
            {QStringLiteral("Discoverable"), false},
            {QStringLiteral("Pairable"), false},
            {QStringLiteral("Discovering"), m_discovering},
            {QStringLiteral("UUIDs"), QStringList()}};
}

void BluezStandin::adapterChanged(const QVariantMap& changed) {
    sendPropertiesChanged(QString::fromLatin1(kAdapterPath),
                          QString::fromLatin1(bluez::kAdapterInterface), changed);
}

void BluezStandin::setPowered(bool powered) {
    if (powered == m_powered)
        return;
    if (!powered) {
        setDiscovering(false);
        for (const auto& desk : m_desks)
            desk->dropLink();
    }
    m_powered = powered;
    adapterChanged({{QStringLiteral("Powered"), powered}});
}

void BluezStandin::setAcquireOffered(bool offered) {
    m_acquireOffered = offered;
    for (const auto& desk : m_desks)
        desk->setAcquireOffered(offered);
}

void BluezStandin::setDiscovering(bool discovering) {
    if (discovering == m_discovering)
        return;
    m_discovering = discovering;
    listen();
    adapterChanged({{QStringLiteral("Discovering"), discovering}});
}

void BluezStandin::setAdvertisingInterval(std::chrono::milliseconds interval) {
    m_advertisingInterval = std::max(interval, std::chrono::milliseconds(1));
    listen();
}

void BluezStandin::listen() {
    m_advertising.cancel();
    if (m_discovering)
        m_advertising = Scheduler::instance().every(m_advertisingInterval, this,
                                                    [this] { hearAdvertisements(); });
}

void BluezStandin::hearAdvertisements() {
    for (const auto& desk : m_desks) {
        if (desk->desk().isAdvertising())
            desk->sight();
    }
}

QDBusMessage BluezStandin::adapterCall(const QDBusMessage& message) {
    const QString member = message.member();
    if (member == QLatin1String("SetDiscoveryFilter"))
        return message.createReply();
    if (member == QLatin1String("GetDiscoveryFilters"))
        return message.createReply(QStringList{QStringLiteral("UUIDs"), QStringLiteral("RSSI"),
                                               QStringLiteral("Transport")});
    if (member == QLatin1String("StartDiscovery") || member == QLatin1String("StopDiscovery")) {
        if (!m_powered)
            return message.createErrorReply(QString::fromLatin1(bluez::kErrorNotReady),
                                            QStringLiteral("Resource Not Ready"));
        const bool start = member == QLatin1String("StartDiscovery");
        if (!start && !m_discovering)
            return message.createErrorReply(QString::fromLatin1(bluez::kErrorFailed),
                                            QStringLiteral("No discovery started"));
        setDiscovering(start);
        return message.createReply();
    }
    if (member == QLatin1String("RemoveDevice")) {
        const QList<QVariant> arguments = message.arguments();
        const QString path = arguments.isEmpty()
                                 ? QString()
                                 : qvariant_cast<QDBusObjectPath>(arguments.first()).path();
        StandinDesk* desk = deskOwning(path);
        if (!desk || desk->path() != path || !desk->isExported())
            return message.createErrorReply(QString::fromLatin1(bluez::kErrorDoesNotExist),
                                            QStringLiteral("Does Not Exist"));
        desk->forget();
        return message.createReply();
    }
    return message.createErrorReply(QString::fromLatin1(bluez::kErrorInvalidArguments),
                                    QStringLiteral("Unknown method ") + member);
}

// ---- Desks ----

StandinDesk* BluezStandin::addDesk(VirtualDeskConfig config) {
    const bool hasLayout = config.bluetoothType == 1 || config.bluetoothType == 2;
    if (config.name.empty() || !hasLayout || desk(QString::fromStdString(config.name)))
        return nullptr;
    const QString address = QStringLiteral("C0:DE:5E:00:%1:%2")
                                .arg(m_nextAddress / 256, 2, 16, QLatin1Char('0'))
                                .arg(m_nextAddress % 256, 2, 16, QLatin1Char('0'));
    ++m_nextAddress;
    auto created = std::make_unique<StandinDesk>(std::move(config), address,
                                                 QString::fromLatin1(kAdapterPath));
    created->setAcquireOffered(m_acquireOffered);
    connect(created.get(), &StandinDesk::propertiesChanged, this,
            &BluezStandin::sendPropertiesChanged);
    connect(created.get(), &StandinDesk::interfacesAdded, this, &BluezStandin::sendInterfacesAdded);
    connect(created.get(), &StandinDesk::interfacesRemoved, this,
            &BluezStandin::sendInterfacesRemoved);
    connect(created.get(), &StandinDesk::lateReply, this,
            [this](const QDBusMessage& reply) { m_connection.send(reply); });
    m_desks.push_back(std::move(created));
    return m_desks.back().get();
}

bool BluezStandin::removeDesk(const QString& name) {
    const auto found = std::find_if(m_desks.begin(), m_desks.end(),
                                    [&](const auto& desk) { return desk->name() == name; });
    if (found == m_desks.end())
        return false;
    (*found)->forget();
    m_desks.erase(found);
    return true;
}

StandinDesk* BluezStandin::desk(const QString& name) const {
    for (const auto& desk : m_desks) {
        if (desk->name() == name)
            return desk.get();
    }
    return nullptr;
}

StandinDesk* BluezStandin::deskOwning(const QString& path) const {
    for (const auto& desk : m_desks) {
        if (desk->owns(path))
            return desk.get();
    }
    return nullptr;
}

QDBusMessage BluezStandin::deskCall(StandinDesk& desk, const QDBusMessage& message) {
    if (!desk.isExported())
        return message.createErrorReply(QString::fromLatin1(kErrorUnknownObject),
                                        QStringLiteral("No such object ") + message.path());
    if (!m_powered && message.member() == QLatin1String("Connect"))
        return message.createErrorReply(QString::fromLatin1(bluez::kErrorNotReady),
                                        QStringLiteral("Resource Not Ready"));
    return desk.call(message);
}

// ---- Object tree ----

ManagedObjectList BluezStandin::managedObjects() const {
    ManagedObjectList objects;
    objects.insert(QDBusObjectPath(QString::fromLatin1(kAdapterPath)),
                   {{QString::fromLatin1(bluez::kAdapterInterface), adapterProperties()}});
    for (const auto& desk : m_desks)
        objects.insert(desk->objects());
    return objects;
}

InterfaceList BluezStandin::interfacesAt(const QString& path) const {
    if (path == QLatin1String(kRootPath))
        return {{QString::fromLatin1(bluez::kObjectManagerInterface), {}}};
    if (path == QLatin1String(StandinControl::kPath))
        return {{QString::fromLatin1(StandinControl::kInterface), {}}};
    return managedObjects().value(QDBusObjectPath(path));
}

QStringList BluezStandin::knownPaths() const {
    QStringList paths{QString::fromLatin1(StandinControl::kPath)};
    const ManagedObjectList objects = managedObjects();
    for (auto it = objects.begin(); it != objects.end(); ++it)
        paths.append(it.key().path());
    return paths;
}

QDBusMessage BluezStandin::propertiesCall(const QDBusMessage& message) {
    const QList<QVariant> arguments = message.arguments();
    const QString interface = arguments.value(0).toString();
    const QVariantMap properties = interfacesAt(message.path()).value(interface);
    const QString name = arguments.value(1).toString();
    if (message.member() == QLatin1String("GetAll"))
        return message.createReply(properties);
    if (message.member() == QLatin1String("Get")) {
        if (!properties.contains(name))
            return message.createErrorReply(QString::fromLatin1(kErrorUnknownProperty),
                                            QStringLiteral("No such property ") + name);
        return message.createReply(QVariant::fromValue(QDBusVariant(properties.value(name))));
    }
    if (message.member() == QLatin1String("Set") && message.path() == QLatin1String(kAdapterPath) &&
        interface == QLatin1String(bluez::kAdapterInterface) && name == QLatin1String("Powered")) {
        setPowered(qvariant_cast<QDBusVariant>(arguments.value(2)).variant().toBool());
        return message.createReply();
    }
    return message.createErrorReply(QString::fromLatin1(kErrorReadOnly),
                                    QStringLiteral("Property is read-only: ") + name);
}

QDBusMessage BluezStandin::dispatch(const QDBusMessage& message) {
    const QString path = message.path();
    const QString interface = message.interface();
    // As bluetoothd's bus policy does for a user outside the allowed group; the control
    // interface stays open so a test can lift it again.
    if (m_refuseAccess && path != QLatin1String(StandinControl::kPath))
        return message.createErrorReply(QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"),
                                        QStringLiteral("Rejected send message"));
    if (interface == QLatin1String(bluez::kPropertiesInterface))
        return propertiesCall(message);
    if (interface == QLatin1String(bluez::kIntrospectableInterface))
        return message.createReply(QStringLiteral("<node>%1</node>").arg(introspect(path)));
    if (path == QLatin1String(kRootPath) &&
        interface == QLatin1String(bluez::kObjectManagerInterface) &&
        message.member() == QLatin1String("GetManagedObjects"))
        return message.createReply(QVariant::fromValue(managedObjects()));
    if (path == QLatin1String(StandinControl::kPath))
        return m_control.call(message);
    if (path == QLatin1String(kAdapterPath) && interface == QLatin1String(bluez::kAdapterInterface))
        return adapterCall(message);
    if (StandinDesk* desk = deskOwning(path))
        return deskCall(*desk, message);
    return message.createErrorReply(QString::fromLatin1(kErrorUnknownObject),
                                    QStringLiteral("No such object ") + path);
}

bool BluezStandin::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    // QtDBus delivers calls on this object's thread, where the desks live.
    const QDBusMessage reply = dispatch(message);
    if (message.isReplyRequired() && !message.isDelayedReply())
        QDBusConnection(connection).send(reply);
    return true;
}

QString BluezStandin::introspect(const QString& path) const {
    QString xml;
    const InterfaceList interfaces = interfacesAt(path);
    for (auto it = interfaces.begin(); it != interfaces.end(); ++it) {
        if (it.key() == QLatin1String(StandinControl::kInterface)) {
            xml += StandinControl::introspection();
            continue;
        }
        QString properties;
        for (auto p = it.value().begin(); p != it.value().end(); ++p)
            properties += propertyXml(p.key(), p.value());
        xml += interfaceXml(it.key()).replace(QStringLiteral("</interface>"),
                                              properties + QStringLiteral("</interface>"));
    }
    const QString prefix = path == QLatin1String(kRootPath) ? path : path + '/';
    QStringList children;
    for (const QString& known : knownPaths()) {
        if (!known.startsWith(prefix) || known == path)
            continue;
        const QString child = known.mid(prefix.size()).section('/', 0, 0);
        if (!children.contains(child))
            children.append(child);
    }
    for (const QString& child : children)
        xml += QStringLiteral("<node name=\"%1\"/>").arg(child);
    return xml;
}

// ---- Signals ----

void BluezStandin::sendPropertiesChanged(const QString& path, const QString& interface,
                                         const QVariantMap& changed) {
    QDBusMessage signal =
        QDBusMessage::createSignal(path, QString::fromLatin1(bluez::kPropertiesInterface),
                                   QStringLiteral("PropertiesChanged"));
    signal << interface << changed << QStringList();
    m_connection.send(signal);
}

void BluezStandin::sendInterfacesAdded(const QString& path, const InterfaceList& interfaces) {
    QDBusMessage signal = QDBusMessage::createSignal(
        QString::fromLatin1(kRootPath), QString::fromLatin1(bluez::kObjectManagerInterface),
        QStringLiteral("InterfacesAdded"));
    signal << QVariant::fromValue(QDBusObjectPath(path)) << QVariant::fromValue(interfaces);
    m_connection.send(signal);
}

void BluezStandin::sendInterfacesRemoved(const QString& path, const QStringList& interfaces) {
    QDBusMessage signal = QDBusMessage::createSignal(
        QString::fromLatin1(kRootPath), QString::fromLatin1(bluez::kObjectManagerInterface),
        QStringLiteral("InterfacesRemoved"));
    signal << QVariant::fromValue(QDBusObjectPath(path)) << interfaces;
    m_connection.send(signal);
}

} // namespace ostrel
