#include "core/PacketSocket.h"

#include <QCoreApplication>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>
#include <memory>

namespace ostrel {
namespace {

// Both ends of a fresh pair, with what the second receives and the hang-ups of either.
struct Pair {
    Pair() {
        const auto [first, second] = PacketSocket::createPair();
        a = std::make_unique<PacketSocket>(first);
        b = std::make_unique<PacketSocket>(second);
        QObject::connect(b.get(), &PacketSocket::received,
                         [this](const QByteArray& packet) { atB.append(packet); });
        for (PacketSocket* end : {a.get(), b.get()})
            QObject::connect(end, &PacketSocket::hungUp, [this] { ++hangUps; });
    }
    std::unique_ptr<PacketSocket> a, b;
    QList<QByteArray> atB;
    int hangUps = 0;
};

// Packets both ways over BlueZ's sockets are the BlueZ link tests'; here the edges.
TEST(PacketSocketTest, ClosingOneEndHangsUpTheOtherOnceAndItsSendsFail) {
    Pair pair;
    pair.a.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pair.hangUps > 0; }));
    // A hung-up socket stays readable; it must not report again on every pass of the loop.
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
    EXPECT_EQ(pair.hangUps, 1);
    EXPECT_EQ(pair.b->send(QByteArray("late")), EPIPE);
}

TEST(PacketSocketTest, EndThatStopsReadingFailsTheSenderOnceFullAndCatchesUpLater) {
    Pair pair;
    pair.b->setReading(false);
    int sent = 0, failure = 0;
    while (sent < 10000 && (failure = pair.a->send(QByteArray::number(sent))) == 0)
        ++sent;
    EXPECT_EQ(failure, EAGAIN);
    QCoreApplication::processEvents();
    EXPECT_TRUE(pair.atB.isEmpty());

    pair.b->setReading(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return pair.atB.size() == sent; }));
    EXPECT_EQ(pair.atB.front(), QByteArray("0"));
    EXPECT_TRUE(pair.a->send(QByteArray("again")) == 0 && pair.hangUps == 0);
}

} // namespace
} // namespace ostrel
