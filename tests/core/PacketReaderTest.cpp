#include "core/PacketReader.h"

#include "core/PacketSender.h"
#include "core/PacketSocket.h"

#include <QTest>
#include <chrono>
#include <future>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <unistd.h>

namespace ostrel {
namespace {

// Takes the one packet a test sends while it is set, with the thread that handled it.
struct OnePacketSink : PacketSink {
    void received(std::span<const std::uint8_t> packet) override {
        taken.set_value({std::string(packet.begin(), packet.end()), std::this_thread::get_id()});
    }
    std::promise<std::pair<std::string, std::thread::id>> taken;
};

// The reader's sink answers even while this thread takes no events; without a sink packets
// come as signals; a hang-up is reported once, and stopping the reader is no hang-up. The
// sender keeps its own descriptor, so the holder of the original may close it first.
TEST(PacketReaderTest, SinkTakesPacketsOnTheReadersThreadSignalsTheRestAndTheHangUp) {
    const auto [ours, theirs] = PacketSocket::createPair();
    PacketReader reader(ours);
    QList<QByteArray> signalled;
    int hangUps = 0;
    QObject::connect(&reader, &PacketReader::received, [&](auto packet) { signalled << packet; });
    QObject::connect(&reader, &PacketReader::hungUp, [&] { ++hangUps; });
    auto sink = std::make_shared<OnePacketSink>();
    auto taken = sink->taken.get_future();
    reader.setSink(sink);
    reader.start();

    auto sender = std::make_unique<PacketSender>(theirs);
    ::close(theirs);
    ASSERT_TRUE(sender->send("poll", 4));
    ASSERT_EQ(taken.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    const auto [packet, thread] = taken.get();
    EXPECT_TRUE(packet == "poll" && thread != std::this_thread::get_id());

    reader.setSink(nullptr);
    ASSERT_TRUE(sender->send("display", 7));
    ASSERT_TRUE(QTest::qWaitFor([&] { return !signalled.isEmpty(); }));
    EXPECT_EQ(signalled, QList<QByteArray>{"display"});

    sender.reset();
    ASSERT_TRUE(QTest::qWaitFor([&] { return hangUps > 0; }));
    // Stopped while it waits, the other end still open: that hang-up is its own, unreported.
    const auto [idle, peer] = PacketSocket::createPair();
    {
        PacketReader waiting(idle);
        QObject::connect(&waiting, &PacketReader::hungUp, [&] { ++hangUps; });
        waiting.start();
    }
    ::close(peer);
    for (int pass = 0; pass < 5; ++pass)
        QCoreApplication::processEvents();
    EXPECT_EQ(hangUps, 1);
}

} // namespace
} // namespace ostrel
