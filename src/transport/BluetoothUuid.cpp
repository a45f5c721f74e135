#include "BluetoothUuid.h"

#include <QRegularExpression>
#include <QUuid>

namespace ostrel {

QString BluetoothUuid::normalized(const QString& uuid) {
    static const QRegularExpression base(
        QStringLiteral("^\\{?0000([0-9A-F]{4})-0000-1000-8000-00805F9B34FB\\}?$"));
    QString upper = uuid.trimmed().toUpper();
    const QRegularExpressionMatch match = base.match(upper);
    if (match.hasMatch())
        return match.captured(1);
    if (upper.startsWith(u'{') && upper.endsWith(u'}'))
        return upper.mid(1, upper.size() - 2);
    return upper;
}

bool BluetoothUuid::isValidIdentifier(const QString& identifier) {
    static const QRegularExpression address(QStringLiteral("^[0-9A-Fa-f]{2}(:[0-9A-Fa-f]{2}){5}$"));
    return !QUuid::fromString(identifier).isNull() || address.match(identifier).hasMatch();
}

} // namespace ostrel
