#include "StandinControl.h"

#include "BluezStandin.h"
#include "StandinDesk.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace ostrel {

namespace {

// The ATT MTU range of an LE link.
constexpr int kSmallestMtu = 23;
constexpr int kLargestMtu = 517;

QDBusMessage invalidArguments(const QDBusMessage& message, const QString& why) {
    return message.createErrorReply(QString::fromLatin1(StandinControl::kErrorInvalidArgs), why);
}

// a{sv} arrives as a QDBusArgument when the caller's variant types are not known up front.
QVariantMap optionsFrom(const QVariant& value) {
    if (value.canConvert<QDBusArgument>())
        return qdbus_cast<QVariantMap>(value.value<QDBusArgument>());
    return value.toMap();
}

} // namespace

StandinControl::StandinControl(BluezStandin& standin) : m_standin(standin) {
    add(QStringLiteral("SetPowered"), QStringLiteral("b"),
        [this](const auto& message, const auto& a) {
            m_standin.setPowered(a.at(0).toBool());
            return message.createReply();
        });
    add(QStringLiteral("SetRefuseAccess"), QStringLiteral("b"),
        [this](const auto& message, const auto& a) {
            m_standin.setRefuseAccess(a.at(0).toBool());
            return message.createReply();
        });
    add(QStringLiteral("SetAcquire"), QStringLiteral("b"),
        [this](const auto& message, const auto& a) {
            m_standin.setAcquireOffered(a.at(0).toBool());
            return message.createReply();
        });
    add(QStringLiteral("AddDesk"), QStringLiteral("si"),
        [this](const auto& message, const auto& a) { return addDesk(message, a); });
    add(QStringLiteral("AddDesk"), QStringLiteral("sia{sv}"),
        [this](const auto& message, const auto& a) { return addDesk(message, a); });
    add(QStringLiteral("RemoveDesk"), QStringLiteral("s"),
        [this](const auto& message, const auto& a) {
            if (!m_standin.removeDesk(a.at(0).toString()))
                return message.createErrorReply(QString::fromLatin1(kErrorUnknownDesk),
                                                a.at(0).toString());
            return message.createReply();
        });
    addForDesk(QStringLiteral("SetInRange"), QStringLiteral("sb"),
               [](const auto& message, StandinDesk& desk, const auto& a) {
                   desk.desk().setInRange(a.at(1).toBool());
                   return message.createReply();
               });
    addForDesk(QStringLiteral("DropLink"), QStringLiteral("s"),
               [](const auto& message, StandinDesk& desk, const auto&) {
                   desk.desk().dropLink();
                   return message.createReply();
               });
    addForDesk(QStringLiteral("HangUpSockets"), QStringLiteral("s"),
               [](const auto& message, StandinDesk& desk, const auto&) {
                   desk.hangUpSockets();
                   return message.createReply();
               });
    addForDesk(QStringLiteral("InjectFault"), QStringLiteral("ssi"),
               [](const auto& message, StandinDesk& desk, const auto& a) {
                   return injectFault(message, desk, a.at(1).toString(), a.at(2).toInt());
               });
    addForDesk(QStringLiteral("SetWriteError"), QStringLiteral("sb"),
               [](const auto& message, StandinDesk& desk, const auto& a) {
                   desk.setWriteError(a.at(1).toBool());
                   return message.createReply();
               });
    addForDesk(QStringLiteral("DeskHeight"), QStringLiteral("s"),
               [](const auto& message, StandinDesk& desk, const auto&) {
                   return message.createReply(desk.desk().heightTenths());
               });
    addForDesk(QStringLiteral("PollRoundTrips"), QStringLiteral("s"),
               [](const auto& message, StandinDesk& desk, const auto&) {
                   return message.createReply(QVariant::fromValue(desk.pollRoundTrips()));
               });
    addForDesk(QStringLiteral("SetPollPeriod"), QStringLiteral("si"),
               [](const auto& message, StandinDesk& desk, const auto& a) {
                   if (a.at(1).toInt() <= 0)
                       return invalidArguments(message, QStringLiteral("period must be positive"));
                   desk.setPollPeriod(std::chrono::milliseconds(a.at(1).toInt()));
                   return message.createReply();
               });
}

void StandinControl::add(const QString& member, const QString& signature, Handler handler) {
    m_handlers.insert(member + '/' + signature, std::move(handler));
}

void StandinControl::addForDesk(const QString& member, const QString& signature,
                                DeskHandler handler) {
    add(member, signature,
        [this, handler = std::move(handler)](const QDBusMessage& message,
                                             const QList<QVariant>& a) {
            StandinDesk* desk = m_standin.desk(a.at(0).toString());
            if (!desk)
                return message.createErrorReply(QString::fromLatin1(kErrorUnknownDesk),
                                                QStringLiteral("No desk named ") +
                                                    a.at(0).toString());
            return handler(message, *desk, a);
        });
}

QDBusMessage StandinControl::call(const QDBusMessage& message) {
    const auto handler = m_handlers.constFind(message.member() + '/' + message.signature());
    if (message.interface() != QLatin1String(kInterface) || handler == m_handlers.constEnd())
        return invalidArguments(
            message,
            QStringLiteral("Unknown method %1(%2)").arg(message.member(), message.signature()));
    return (*handler)(message, message.arguments());
}

QDBusMessage StandinControl::addDesk(const QDBusMessage& message,
                                     const QList<QVariant>& arguments) {
    VirtualDeskConfig config;
    config.name = arguments.at(0).toString().toStdString();
    config.bluetoothType = arguments.at(1).toInt();
    const QVariantMap options = optionsFrom(arguments.value(2));
    config.pollPeriod = std::chrono::milliseconds(
        options.value(QStringLiteral("pollPeriod"), int(config.pollPeriod.count())).toInt());
    config.startHeight = options.value(QStringLiteral("startHeight"), config.startHeight).toInt();
    config.rssi = options.value(QStringLiteral("rssi"), config.rssi).toInt();
    config.speedCmPerSecond =
        options.value(QStringLiteral("speed"), config.speedCmPerSecond).toDouble();
    const int mtu = options.value(QStringLiteral("mtu"), kSmallestMtu).toInt();
    if (mtu < kSmallestMtu || mtu > kLargestMtu)
        return invalidArguments(message, QStringLiteral("the MTU lies from 23 to 517"));
    StandinDesk* desk = m_standin.addDesk(std::move(config));
    if (!desk)
        return invalidArguments(message,
                                QStringLiteral("a desk needs a name of its own and type 1 or 2"));
    desk->setMtu(static_cast<quint16>(mtu));
    return message.createReply(QVariant::fromValue(QDBusObjectPath(desk->path())));
}

QDBusMessage StandinControl::injectFault(const QDBusMessage& message, StandinDesk& desk,
                                         const QString& fault, int argument) {
    VirtualDesk& model = desk.desk();
    const bool on = argument != 0;
    if (fault == QLatin1String("error"))
        model.injectError(argument);
    else if (fault == QLatin1String("childLock"))
        model.setChildLock(on);
    else if (fault == QLatin1String("resetNeeded"))
        model.setResetNeeded(on);
    else if (fault == QLatin1String("slideDown"))
        model.setSlideDown(on);
    else if (fault == QLatin1String("power"))
        model.setPowered(on);
    else if (fault == QLatin1String("obstacle"))
        model.placeObstacle();
    else
        return invalidArguments(message, QStringLiteral("Unknown fault ") + fault);
    return message.createReply();
}

QString StandinControl::introspection() {
    return QStringLiteral(
        "<interface name=\"org.ostrel.BluezStandin.Control\">"
        "<method name=\"SetPowered\"><arg type=\"b\" direction=\"in\"/></method>"
        "<method name=\"SetRefuseAccess\"><arg type=\"b\" direction=\"in\"/></method>"
        "<method name=\"SetAcquire\"><arg type=\"b\" direction=\"in\"/></method>"
        "<method name=\"AddDesk\"><arg name=\"name\" type=\"s\" direction=\"in\"/>"
        "<arg name=\"type\" type=\"i\" direction=\"in\"/>"
        "<arg name=\"options\" type=\"a{sv}\" direction=\"in\"/>"
        "<arg type=\"o\" direction=\"out\"/></method>"
        "<method name=\"RemoveDesk\"><arg type=\"s\" direction=\"in\"/></method>"
        "<method name=\"SetInRange\"><arg type=\"s\" direction=\"in\"/>"
        "<arg type=\"b\" direction=\"in\"/></method>"
        "<method name=\"DropLink\"><arg type=\"s\" direction=\"in\"/></method>"
        "<method name=\"HangUpSockets\"><arg type=\"s\" direction=\"in\"/></method>"
        "<method name=\"InjectFault\"><arg name=\"name\" type=\"s\" direction=\"in\"/>"
        "<arg name=\"fault\" type=\"s\" direction=\"in\"/>"
        "<arg name=\"arg\" type=\"i\" direction=\"in\"/></method>"
        "<method name=\"SetWriteError\"><arg type=\"s\" direction=\"in\"/>"
        "<arg type=\"b\" direction=\"in\"/></method>"
        "<method name=\"DeskHeight\"><arg type=\"s\" direction=\"in\"/>"
        "<arg type=\"i\" direction=\"out\"/></method>"
        "<method name=\"PollRoundTrips\"><arg type=\"s\" direction=\"in\"/>"
        "<arg name=\"microseconds\" type=\"ax\" direction=\"out\"/></method>"
        "<method name=\"SetPollPeriod\"><arg type=\"s\" direction=\"in\"/>"
        "<arg name=\"ms\" type=\"i\" direction=\"in\"/></method>"
        "</interface>");
}

} // namespace ostrel
