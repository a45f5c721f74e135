#pragma once

#include "protocol/Bytes.h"
#include "transport/PlatformCentral.h"

#include <QPointer>
#include <QStringList>
#include <map>
#include <memory>

namespace ostrel {

class PacketSink;
class VirtualDesk;

// What the virtual central knows of one desk: how far its link has come and what the tests
// asked to go wrong with it.
struct VirtualLink {
    QPointer<VirtualDesk> desk;
    int state = PlatformCentral::PeripheralDisconnected;
    bool notifying = false;
    QString connectFailure;
    QString writeRefusal;
    Bytes lastValue;
    std::shared_ptr<PacketSink> sink;
};

// The virtual central's desks by identifier. An identifier is stable per desk name and
// position, so a demo desk keeps its identity across runs; a desk that is destroyed is no
// longer found.
class VirtualLinkTable {
public:
    // Answers the new desk's identifier.
    QString add(VirtualDesk* desk);
    QString identifierOf(const VirtualDesk* desk) const;
    // Every identifier, a snapshot that stays valid while links come and go.
    QStringList identifiers() const;
    VirtualLink* find(const QString& identifier);
    const VirtualLink* find(const QString& identifier) const;
    // Only a connected link.
    const VirtualLink* connected(const QString& identifier) const;

private:
    std::map<QString, VirtualLink> m_links;
};

} // namespace ostrel
