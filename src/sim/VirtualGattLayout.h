#pragma once

#include "transport/PlatformCentral.h"

#include <QList>
#include <QStringList>

namespace ostrel {

class VirtualDesk;

// The GATT table a virtual desk carries, as its layout type makes it: one service with a notify
// and a write characteristic (one characteristic both ways on type 1 desks), and the notify
// characteristic's client configuration descriptor. Apart from the central, which only decides
// when a lookup is answered, so that the table reads in one place.
class VirtualGattLayout {
public:
    static const QString kClientConfiguration;

    explicit VirtualGattLayout(const VirtualDesk& desk) : m_desk(desk) {}

    QString service() const;
    QList<PlatformCharacteristicInfo> characteristics(const QString& service) const;
    QStringList descriptors(const GattPath& path) const;
    bool isNotify(const GattPath& path) const;
    bool isWritable(const GattPath& path) const;
    // Where `identifier`'s notifications come from.
    GattPath notifyPath(const QString& identifier) const;

private:
    const VirtualDesk& m_desk;
};

} // namespace ostrel
