// Letting go of the desk through BlueZ: the session ends the held key, and BlueZ shows the
// device disconnected within 3 s; nothing scans for it or links it again however much of the
// session's (virtual) time passes; Connect links it again within 20 s. Times are printed for the
// record.
#include "BluezTestSupport.h"
#include "core/ManualScheduler.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/CommandType.h"
#include "session/DeskSession.h"
#include "store/CurrentDeviceStore.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>
#include <cstdio>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;
using BluezReleaseTest = BluezTest;

TEST_F(BluezReleaseTest, ReleaseDisconnectsThroughBluezAndConnectLinksAgain) {
    const QString name = QStringLiteral("QWJ-4101");
    QDir documents(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    documents.removeRecursively();
    ASSERT_TRUE(documents.mkpath(QStringLiteral(".")));
    addDesk(name, 2, {{QStringLiteral("startHeight"), 800}});
    const PeripheralPtr peripheral = discover(name);
    ASSERT_TRUE(peripheral);
    // Linked as desk search leaves it, for the session to take over.
    facade().connectDeviceWithPeripheral(peripheral, {});
    ASSERT_TRUE(waitFor([] { return facade().isConnect(); }));
    CurrentDeviceStore::bindDevice(name, peripheral->identifierString());
    DeskSession session;
    bool linked = false;
    QObject::connect(&session, &DeskSession::deskLinkChanged,
                     [&linked](const QString& desk) { linked = !desk.isEmpty(); });
    session.setLoadViewAction();
    session.registerObservers();
    ASSERT_TRUE(waitFor([&] { return session.currentHeight() > 0; }));

    session.holdKey(command::kUpKey);
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) >= 820; }));
    clock.restart();
    session.releaseDesk();
    ASSERT_TRUE(waitFor([&] { return !deviceProperty(name, "Connected").toBool(); }, 3000));
    const qint64 releasedMs = clock.elapsed();
    const int stopped = deskHeight(name);

    // Minutes of the session's time, a write that found no link among them.
    ManualScheduler virtualTime;
    Scheduler* realTime = Scheduler::setInstance(&virtualTime);
    NotificationCenter::defaultCenter().post(QLatin1String(notifications::kReconnect));
    bool scanned = false;
    for (int second = 0; second < 120; ++second) {
        virtualTime.advance(1s);
        QCoreApplication::processEvents();
        scanned = scanned || adapterProperty("Discovering").toBool();
    }
    Scheduler::setInstance(realTime);
    EXPECT_FALSE(scanned) << "a reconnection scan ran while released";
    EXPECT_FALSE(deviceProperty(name, "Connected").toBool());
    EXPECT_EQ(deskHeight(name), stopped);

    clock.restart();
    session.connectDesk();
    ASSERT_TRUE(waitFor([&] { return linked; }, 20000));
    const qint64 linkedMs = clock.elapsed();
    EXPECT_TRUE(deviceProperty(name, "Connected").toBool());
    EXPECT_TRUE(session.isConnected());
    std::printf("release to Connected=false: %lld ms; connect to linked: %lld ms\n",
                static_cast<long long>(releasedMs), static_cast<long long>(linkedMs));
    RecordProperty("release_to_disconnected_ms", static_cast<int>(releasedMs));
    RecordProperty("connect_to_linked_ms", static_cast<int>(linkedMs));
}

} // namespace
} // namespace ostrel::test
