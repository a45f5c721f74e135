#pragma once

// logind on a private bus of its own. Sleep: Inhibit hands out the write end of a real pipe and
// keeps the read end, so the test sees the moment the application closes its lock;
// PrepareForSleep is sent when the test says so. Sessions: GetSession names one session whose
// LockedHint the test sets.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QProcess>
#include <QSocketNotifier>
#include <memory>
#include <optional>
#include <unistd.h>

namespace ostrel::test {

class LogindStandin : public QDBusVirtualObject {
public:
    static constexpr const char* kSessionPath = "/org/freedesktop/login1/session/_31";

    explicit LogindStandin(const QElapsedTimer& clock) : m_clock(clock) {
        m_daemon.start(QStringLiteral("dbus-daemon"),
                       {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                        QStringLiteral("--config-file=" OSTREL_PRIVATE_BUS_CONFIG)});
        m_daemon.waitForReadyRead(10000);
        m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
        QDBusConnection service = bus(QStringLiteral("logind-standin"));
        service.registerService(QStringLiteral("org.freedesktop.login1"));
        service.registerVirtualObject(QStringLiteral("/org/freedesktop/login1"), this);
        service.registerVirtualObject(QLatin1String(kSessionPath), this);
    }
    ~LogindStandin() override {
        for (const char* name : {"logind-standin", "logind-client"})
            QDBusConnection::disconnectFromBus(QString::fromLatin1(name));
        m_daemon.terminate();
        m_daemon.waitForFinished();
        if (m_readEnd >= 0)
            ::close(m_readEnd);
    }

    // The connection the application's side uses.
    QDBusConnection client() const { return bus(QStringLiteral("logind-client")); }
    QDBusConnection service() const { return bus(QStringLiteral("logind-standin")); }

    void setLocked(bool locked) {
        m_locked = locked;
        QDBusMessage signal = QDBusMessage::createSignal(
            QLatin1String(kSessionPath), QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("PropertiesChanged"));
        signal << QStringLiteral("org.freedesktop.login1.Session")
               << QVariantMap{{QStringLiteral("LockedHint"), locked}} << QStringList();
        service().send(signal);
    }

    void announceSleep(bool starting) {
        QDBusMessage signal = QDBusMessage::createSignal(
            QStringLiteral("/org/freedesktop/login1"),
            QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"));
        signal << starting;
        bus(QStringLiteral("logind-standin")).send(signal);
    }

    int inhibitions() const { return m_inhibitions; }
    // When the last lock handed out was closed, on the test's clock.
    std::optional<qint64> releasedAtMs() const { return m_releasedAtMs; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (message.member() == u"GetSession")
            return connection.send(
                message.createReply(QVariant::fromValue(QDBusObjectPath(kSessionPath))));
        if (message.member() == u"Get" && message.arguments().value(1).toString() == u"LockedHint")
            return connection.send(
                message.createReply(QVariant::fromValue(QDBusVariant(m_locked))));
        if (message.member() != u"Inhibit" || message.arguments().value(3).toString() != u"delay")
            return false;
        int ends[2];
        if (::pipe(ends) != 0)
            return false;
        watch(ends[0]);
        ++m_inhibitions;
        connection.send(message.createReply(QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]))));
        ::close(ends[1]); // the reply carries its own copy
        return true;
    }
    QString introspect(const QString&) const override { return {}; }

private:
    QDBusConnection bus(const QString& name) const {
        return QDBusConnection::connectToBus(m_address, name);
    }

    // The read end sees the end of the file once every copy of the write end is closed.
    void watch(int readEnd) {
        if (m_readEnd >= 0)
            ::close(m_readEnd);
        m_readEnd = readEnd;
        m_releasedAtMs.reset();
        m_notifier = std::make_unique<QSocketNotifier>(readEnd, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] {
            m_releasedAtMs = m_clock.elapsed();
            m_notifier->setEnabled(false);
        });
    }

    const QElapsedTimer& m_clock;
    QProcess m_daemon;
    QString m_address;
    int m_readEnd = -1;
    int m_inhibitions = 0;
    bool m_locked = false;
    std::optional<qint64> m_releasedAtMs;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace ostrel::test
