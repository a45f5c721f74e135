#pragma once

#include "PacketSink.h"

#include <QByteArray>
#include <QObject>
#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

namespace ostrel {

// The reading end of a connected SOCK_SEQPACKET socket, read on a thread of its own so that a
// sink can answer a packet at once whatever the GUI thread is busy with (drawing, a slot that
// takes a while, a modal dialog's setup). Packets go to the sink on that thread; without a sink
// they are emitted as `received`, and a hang-up as `hungUp`, to receivers on their own threads.
// The end is closed with the object, after the thread has stopped.
class PacketReader : public QObject {
    Q_OBJECT
public:
    // Takes ownership of a connected descriptor.
    explicit PacketReader(int descriptor, QObject* parent = nullptr);
    ~PacketReader() override;

    // Starts reading: connect and set the sink first, or the first packets go unheard.
    void start();

    // A sink is called with the reader's lock held: replacing it waits for a packet being
    // handled, and the old sink is let go on the replacing thread.
    void setSink(std::shared_ptr<PacketSink> sink);

signals:
    void received(const QByteArray& packet);
    // The other end closed, or the socket failed; nothing more will arrive.
    void hungUp();

private:
    void run();
    void deliver(std::span<const std::uint8_t> packet);

    int m_descriptor;
    std::atomic<bool> m_stopping = false; // a hang-up of our own making goes unreported
    std::mutex m_sinkLock;
    std::shared_ptr<PacketSink> m_sink;
    std::thread m_thread;
};

} // namespace ostrel
