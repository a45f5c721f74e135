#pragma once

#include "PacketSink.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <memory>
#include <utility>

class QSocketNotifier;

namespace ostrel {

// One end of a connected SOCK_SEQPACKET socket, as BlueZ hands out for an acquired
// characteristic: every send is one packet, every packet read arrives whole. Reading runs from
// the event loop; the end is closed with the object. A receiver of `received` or `hungUp` may
// drop the object only with deleteLater.
class PacketSocket : public QObject {
    Q_OBJECT
public:
    // Takes ownership of a connected descriptor and makes it non-blocking.
    explicit PacketSocket(int descriptor, QObject* parent = nullptr);
    ~PacketSocket() override;

    // Larger than any ATT payload BlueZ passes through (its MTU tops out at 517).
    static constexpr int kLargestPacket = 1024;

    // A connected pair of new descriptors, both close-on-exec; {-1, -1} when the system refuses.
    static std::pair<int, int> createPair();
    // Closes a socket `holder` keeps, safely even from within one of its signals: the holder
    // hears nothing more from it and the pointer is cleared.
    // Works for a PacketReader as well.
    template <class Socket> static void drop(QPointer<Socket>& socket, const QObject* holder) {
        if (!socket)
            return;
        socket->disconnect(holder);
        socket->deleteLater();
        socket = nullptr;
    }

    int descriptor() const { return m_descriptor; }
    // Sends one packet without blocking; 0, or the errno of the failure.
    int send(const void* data, std::size_t size);
    int send(const QByteArray& packet) {
        return send(packet.constData(), static_cast<std::size_t>(packet.size()));
    }
    // While a sink is set, packets go to it instead of `received`.
    void setSink(std::shared_ptr<PacketSink> sink) { m_sink = std::move(sink); }
    // Stops or resumes taking packets. While stopped, they queue up and the other end's sends
    // fail with EAGAIN once the queue is full; a hang-up goes unnoticed until reading resumes.
    void setReading(bool reading);

signals:
    void received(const QByteArray& packet);
    // The other end closed, or the socket failed; nothing more will arrive.
    void hungUp();

private:
    void readable();

    int m_descriptor;
    QSocketNotifier* m_notifier;
    std::shared_ptr<PacketSink> m_sink;
};

} // namespace ostrel
