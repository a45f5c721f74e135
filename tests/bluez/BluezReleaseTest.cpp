// Letting go of the desk through BlueZ: BlueZ shows the device disconnected within 3 s of the
// release, nothing scans for it or links it again over minutes of the session's (virtual) time,
// and Connect links it again within 20 s. The times are printed for the record.
#include "BluezTestSupport.h"
#include "core/ManualScheduler.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "protocol/CommandType.h"
#include "session/DeskLink.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataCatchHelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <cstdio>

namespace ostrel::test {
namespace {

using namespace std::chrono_literals;

TEST_F(BluezTest, ReleaseDisconnectsThroughBluezAndConnectLinksAgain) {
    const QString name = QStringLiteral("QWJ-4101");
    QDir().mkpath(DQDataCatchHelper::getDocPath());
    addDesk(name, 2);
    const PeripheralPtr peripheral = discover(name);
    ASSERT_TRUE(peripheral);
    facade().connectDeviceWithPeripheral(peripheral, {}); // as desk search leaves it
    ASSERT_TRUE(waitFor([] { return facade().isConnect(); }));
    CurrentDeviceStore::bindDevice(name, peripheral->identifierString());
    DeskSession session;
    int links = 0;
    QObject::connect(&session.link(), &DeskLink::linked, [&links] { ++links; });
    session.setLoadViewAction();
    session.registerObservers();
    ASSERT_TRUE(waitFor([&] { return session.currentHeight() > 0; }));
    const int start = deskHeight(name);
    session.holdKey(command::kUpKey); // released while moving: the desk hears no key first
    ASSERT_TRUE(waitFor([&] { return deskHeight(name) > start + 10; }));

    QElapsedTimer clock;
    clock.start();
    session.release().releaseDesk();
    ASSERT_TRUE(waitFor([&] { return !bluezProperty("Connected", name).toBool(); }, 3000));
    const qint64 releasedMs = clock.elapsed();
    const int stopped = deskHeight(name);

    ManualScheduler virtualTime;
    Scheduler* realTime = Scheduler::setInstance(&virtualTime);
    NotificationCenter::defaultCenter().post(QLatin1String(notifications::kReconnect));
    bool scanned = false;
    for (int second = 0; second < 120; ++second) {
        virtualTime.advance(1s);
        QCoreApplication::processEvents();
        scanned = scanned || bluezProperty("Discovering").toBool();
    }
    Scheduler::setInstance(realTime);
    EXPECT_FALSE(scanned) << "a reconnection scan ran while released";
    EXPECT_EQ(links, 0) << "linked again while released";
    EXPECT_FALSE(bluezProperty("Connected", name).toBool());
    EXPECT_EQ(deskHeight(name), stopped);

    clock.restart();
    session.release().connectDesk();
    ASSERT_TRUE(waitFor([&] { return links == 1; }, 20000));
    const qint64 linkedMs = clock.elapsed();
    EXPECT_TRUE(bluezProperty("Connected", name).toBool());
    std::printf("release to Connected=false: %lld ms; connect to linked: %lld ms\n",
                static_cast<long long>(releasedMs), static_cast<long long>(linkedMs));
    RecordProperty("release_to_disconnected_ms", static_cast<int>(releasedMs));
    RecordProperty("connect_to_linked_ms", static_cast<int>(linkedMs));
}

} // namespace
} // namespace ostrel::test
