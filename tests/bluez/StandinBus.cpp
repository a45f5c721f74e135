#include "StandinBus.h"

namespace ostrel::test {

namespace {

constexpr int kStartTimeOutMs = 10000;
constexpr char kControlConnection[] = "ostrel-standin-control";

StandinBus* const environment = [] {
    auto* bus = new StandinBus; // owned by GoogleTest
    ::testing::AddGlobalTestEnvironment(bus);
    return bus;
}();

} // namespace

StandinBus& StandinBus::instance() {
    return *environment;
}

QString StandinBus::readLine(QProcess& process) {
    if (!process.canReadLine())
        process.waitForReadyRead(kStartTimeOutMs);
    return QString::fromUtf8(process.readLine()).trimmed();
}

void StandinBus::SetUp() {
    m_bus.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_bus.start(QStringLiteral(OSTREL_DBUS_DAEMON),
                {QStringLiteral("--nofork"), QStringLiteral("--print-address=1"),
                 QStringLiteral("--config-file=" OSTREL_STANDIN_BUS_CONFIG)});
    m_address = readLine(m_bus);
    ASSERT_FALSE(m_address.isEmpty()) << "the private bus did not start";

    m_standin.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_standin.start(QStringLiteral(OSTREL_STANDIN_PROGRAM),
                    {QStringLiteral("--bus"), m_address, QStringLiteral("--die-with-parent")});
    ASSERT_EQ(readLine(m_standin), QStringLiteral("ready")) << "the stand-in did not start";

    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_address.toUtf8());
    qputenv("BLUETOOTH_FORCE_DBUS_LE_VERSION", "5.66");
}

void StandinBus::TearDown() {
    QDBusConnection::disconnectFromBus(QString::fromLatin1(kControlConnection));
    for (QProcess* process : {&m_standin, &m_bus}) {
        process->terminate();
        process->waitForFinished(kStartTimeOutMs);
    }
}

QDBusMessage StandinBus::control(const QString& method, const QVariantList& arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.ostrel.BluezStandin"), QStringLiteral("/control"),
        QStringLiteral("org.ostrel.BluezStandin.Control"), method);
    message.setArguments(arguments);
    return call(message);
}

QDBusMessage StandinBus::call(const QDBusMessage& message) const {
    return QDBusConnection::connectToBus(m_address, QString::fromLatin1(kControlConnection))
        .call(message);
}

} // namespace ostrel::test
