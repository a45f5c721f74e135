#include "core/PacketSocket.h"

#include <QCoreApplication>
#include <QTest>
#include <cerrno>
#include <gtest/gtest.h>
#include <memory>

namespace ostrel {
namespace {

// Both ends of a fresh pair, with what each one reports.
struct Pair {
    Pair() {
        const auto [first, second] = PacketSocket::createPair();
        a = std::make_unique<PacketSocket>(first);
        b = std::make_unique<PacketSocket>(second);
        for (PacketSocket* end : {a.get(), b.get()}) {
            QObject::connect(end, &PacketSocket::received, [this, end](const QByteArray& p) {
                (end == a.get() ? atA : atB).append(p);
            });
            QObject::connect(end, &PacketSocket::hungUp,
                             [this, end] { ++(end == a.get() ? hangUpsA : hangUpsB); });
        }
    }
    std::unique_ptr<PacketSocket> a;
    std::unique_ptr<PacketSocket> b;
    QList<QByteArray> atA;
    QList<QByteArray> atB;
    int hangUpsA = 0;
    int hangUpsB = 0;
};

// Packets both ways over BlueZ's sockets are the BlueZ link tests'; here the edges.
TEST(PacketSocketTest, ClosingOneEndHangsUpTheOtherOnceAndItsSendsFail) {
    Pair pair;
    pair.a.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return pair.hangUpsB > 0; }));
    // A hung-up socket stays readable; it must not report again on every pass of the loop.
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
    EXPECT_EQ(pair.hangUpsB, 1);
    EXPECT_EQ(pair.b->send(QByteArray("late")), EPIPE);
}

TEST(PacketSocketTest, EndThatStopsReadingFailsTheSenderOnceFullAndCatchesUpLater) {
    Pair pair;
    pair.b->setReading(false);
    int sent = 0;
    int failure = 0;
    while (sent < 10000 && (failure = pair.a->send(QByteArray::number(sent))) == 0)
        ++sent;
    EXPECT_EQ(failure, EAGAIN);
    QCoreApplication::processEvents();
    EXPECT_TRUE(pair.atB.isEmpty());

    pair.b->setReading(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return pair.atB.size() == sent; }));
    EXPECT_EQ(pair.atB.front(), QByteArray("0"));
    EXPECT_EQ(pair.a->send(QByteArray("again")), 0);
    EXPECT_EQ(pair.hangUpsA + pair.hangUpsB, 0);
}

} // namespace
} // namespace ostrel
