#include "BluezTestSupport.h"

namespace ostrel::test {
namespace {

using StandinControlTest = BluezTest;

// Scripts and tests steer the stand-in by hand: a bad request must come back as a named
// error and leave the desks as they were.
TEST_F(StandinControlTest, BadRequestsGetANamedErrorAndChangeNothing) {
    const QString invalid = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");
    const QString unknownDesk = QStringLiteral("org.ostrel.BluezStandin.Error.UnknownDesk");
    const QString desk = QStringLiteral("QWJ-4101");
    addDesk(desk, 2);
    struct Case {
        const char* method;
        QVariantList arguments;
        QString error;
    };
    const Case cases[] = {
        {"AddDesk", {desk, 2}, invalid},                      // the name is taken
        {"AddDesk", {QStringLiteral("Z5-4102"), 3}, invalid}, // no GATT layout for type 3
        {"AddDesk", {QString(), 2}, invalid},                 // no name
        {"AddDesk",
         {QStringLiteral("QWJ-4103"), 2, QVariantMap{{QStringLiteral("mtu"), 22}}},
         invalid}, // below the smallest MTU
        {"DeskHeight", {QStringLiteral("QWJ-4103")}, unknownDesk},
        {"HangUpSockets", {QStringLiteral("QWJ-4199")}, unknownDesk},
        {"DeskHeight", {QStringLiteral("Z5-4102")}, unknownDesk},
        {"DropLink", {QStringLiteral("QWJ-4199")}, unknownDesk},
        {"InjectFault", {desk, QStringLiteral("smoke"), 1}, invalid},
        {"SetPollPeriod", {desk, 0}, invalid},
        {"SetInRange", {desk}, invalid}, // argument missing
        {"Explode", {}, invalid},
    };
    for (const Case& c : cases) {
        const QDBusMessage reply =
            StandinBus::instance().control(QString::fromLatin1(c.method), c.arguments);
        EXPECT_EQ(reply.errorName(), c.error) << c.method;
    }
    EXPECT_EQ(deskHeight(desk), 720);
}

} // namespace
} // namespace ostrel::test
