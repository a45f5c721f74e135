// ostrel-bluez-standin: serves virtual desks as BlueZ would, on the bus it is pointed at.
#include "BluezStandin.h"
#include "StandinDesk.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDBusConnection>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

using namespace ostrel;

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("ostrel-bluez-standin"));

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Serves virtual desks over D-Bus in place of bluetoothd."));
    parser.addHelpOption();
    const QCommandLineOption busOption(
        QStringLiteral("bus"), QStringLiteral("Bus address (default: DBUS_SYSTEM_BUS_ADDRESS)."),
        QStringLiteral("address"));
    const QCommandLineOption deskOption(QStringLiteral("desk"),
                                        QStringLiteral("Adds a desk; TYPE is 1 or 2 (default 2)."),
                                        QStringLiteral("name[:type]"));
    const QCommandLineOption pollOption(QStringLiteral("poll-period"),
                                        QStringLiteral("Poll period of the desks, ms."),
                                        QStringLiteral("ms"), QStringLiteral("50"));
    const QCommandLineOption advertisingOption(
        QStringLiteral("advertising-interval"),
        QStringLiteral("How often a discovering adapter hears each desk, ms."),
        QStringLiteral("ms"), QStringLiteral("100"));
    const QCommandLineOption offOption(QStringLiteral("powered-off"),
                                       QStringLiteral("Start with the radio off."));
    const QCommandLineOption noAcquireOption(
        QStringLiteral("no-acquire"),
        QStringLiteral("Offer no AcquireNotify/AcquireWrite sockets, as an older bluetoothd."));
    const QCommandLineOption parentOption(QStringLiteral("die-with-parent"),
                                          QStringLiteral("Exit when the starting process ends."));
    parser.addOptions({busOption, deskOption, pollOption, advertisingOption, offOption,
                       noAcquireOption, parentOption});
    parser.process(app);

    if (parser.isSet(parentOption))
        prctl(PR_SET_PDEATHSIG, SIGTERM);

    const QDBusConnection connection =
        parser.isSet(busOption)
            ? QDBusConnection::connectToBus(parser.value(busOption), QStringLiteral("standin"))
            : QDBusConnection::systemBus();
    if (!connection.isConnected()) {
        std::fprintf(stderr, "cannot reach the bus: %s\n",
                     qPrintable(connection.lastError().message()));
        return 1;
    }

    BluezStandin standin(connection);
    standin.setAcquireOffered(!parser.isSet(noAcquireOption));
    standin.setAdvertisingInterval(
        std::chrono::milliseconds(parser.value(advertisingOption).toInt()));
    for (const QString& entry : parser.values(deskOption)) {
        VirtualDeskConfig config;
        config.name = entry.section(':', 0, 0).toStdString();
        config.bluetoothType =
            entry.section(':', 1, 1).isEmpty() ? 2 : entry.section(':', 1, 1).toInt();
        config.pollPeriod = std::chrono::milliseconds(parser.value(pollOption).toInt());
        if (!standin.addDesk(config)) {
            std::fprintf(stderr, "cannot add desk %s (taken name, or type not 1 or 2)\n",
                         qPrintable(entry));
            return 2;
        }
    }
    standin.setPowered(!parser.isSet(offOption));
    if (!standin.publish()) {
        std::fprintf(stderr, "cannot own org.bluez: %s\n",
                     qPrintable(connection.lastError().message()));
        return 1;
    }
    // Scripts and tests wait for this line before they use the bus.
    std::printf("ready\n");
    std::fflush(stdout);
    return app.exec();
}
