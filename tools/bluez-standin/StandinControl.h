#pragma once

#include <QDBusMessage>
#include <QHash>
#include <functional>

namespace ostrel {

class BluezStandin;
class StandinDesk;

// The stand-in's knobs for tests and demos, at /control as org.ostrel.BluezStandin.Control:
//   SetPowered(b)                   the adapter's radio
//   SetRefuseAccess(b)              every BlueZ call answered AccessDenied, as for a user the
//                                   system's Bluetooth policy does not allow
//   SetAcquire(b)                   whether links set up from now on offer AcquireNotify and
//                                   AcquireWrite (on by default, as bluetoothd does)
//   AddDesk(s name, i type [, a{sv} options]) -> o
//                                   options: pollPeriod (ms), startHeight (tenths of a cm),
//                                   rssi, speed (cm/s), mtu (23..517, default 23)
//   RemoveDesk(s), SetInRange(s, b), DropLink(s)
//   HangUpSockets(s)                closes the host's acquired sockets, the link staying up
//   InjectFault(s name, s fault, i arg)
//                                   fault: error (E01..E37, 0 clears), childLock, resetNeeded,
//                                   slideDown, power (arg 0/1), obstacle
//   SetWriteError(s, b)             WriteValue replies org.bluez.Error.Failed
//   DeskHeight(s) -> i              tenths of a centimetre
//   SetPollPeriod(s, i)             milliseconds
//   PollRoundTrips(s) -> ax         microseconds from each poll to the host's answer, this link
class StandinControl {
public:
    static constexpr char kService[] = "org.ostrel.BluezStandin";
    static constexpr char kPath[] = "/control";
    static constexpr char kInterface[] = "org.ostrel.BluezStandin.Control";
    static constexpr char kErrorUnknownDesk[] = "org.ostrel.BluezStandin.Error.UnknownDesk";
    static constexpr char kErrorInvalidArgs[] = "org.freedesktop.DBus.Error.InvalidArgs";

    explicit StandinControl(BluezStandin& standin);

    QDBusMessage call(const QDBusMessage& message);
    static QString introspection();

private:
    using Handler = std::function<QDBusMessage(const QDBusMessage&, const QList<QVariant>&)>;
    using DeskHandler =
        std::function<QDBusMessage(const QDBusMessage&, StandinDesk&, const QList<QVariant>&)>;

    void add(const QString& member, const QString& signature, Handler handler);
    void addForDesk(const QString& member, const QString& signature, DeskHandler handler);
    QDBusMessage addDesk(const QDBusMessage& message, const QList<QVariant>& arguments);
    static QDBusMessage injectFault(const QDBusMessage& message, StandinDesk& desk,
                                    const QString& fault, int argument);

    BluezStandin& m_standin;
    QHash<QString, Handler> m_handlers; // keyed by member + '/' + signature
};

} // namespace ostrel
