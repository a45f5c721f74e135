#include "sim/VirtualLinkTable.h"

#include "sim/VirtualDesk.h"

#include <QUuid>

namespace ostrel {

QString VirtualLinkTable::add(VirtualDesk* desk) {
    static const QUuid kNamespace =
        QUuid::fromString(QStringLiteral("6f1c5f0e-3a57-4b52-9d0e-8a1f00c0ffee"));
    const QString identifier =
        QUuid::createUuidV5(kNamespace, desk->name() + u'#' + QString::number(m_links.size()))
            .toString(QUuid::WithoutBraces)
            .toUpper();
    m_links[identifier].desk = desk;
    return identifier;
}

QString VirtualLinkTable::identifierOf(const VirtualDesk* desk) const {
    for (const auto& [identifier, link] : m_links) {
        if (link.desk == desk)
            return identifier;
    }
    return {};
}

QStringList VirtualLinkTable::identifiers() const {
    QStringList identifiers;
    for (const auto& [identifier, link] : m_links)
        identifiers.append(identifier);
    return identifiers;
}

VirtualLink* VirtualLinkTable::find(const QString& identifier) {
    const auto found = m_links.find(identifier);
    return found == m_links.end() || !found->second.desk ? nullptr : &found->second;
}

const VirtualLink* VirtualLinkTable::find(const QString& identifier) const {
    const auto found = m_links.find(identifier);
    return found == m_links.end() || !found->second.desk ? nullptr : &found->second;
}

const VirtualLink* VirtualLinkTable::connected(const QString& identifier) const {
    const VirtualLink* link = find(identifier);
    return link && link->state == PlatformCentral::PeripheralConnected ? link : nullptr;
}

} // namespace ostrel
