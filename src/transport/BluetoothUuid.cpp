#include "BluetoothUuid.h"

#include <QRegularExpression>
#include <QUuid>
#include <algorithm>

namespace ostrel {

QString BluetoothUuid::normalized(const QString& uuid) {
    // Runs on every UUID look-up of the frame path: plain comparisons, no pattern matching.
    static const QString baseTail = QStringLiteral("-0000-1000-8000-00805F9B34FB");
    QString upper = uuid.trimmed().toUpper();
    if (upper.startsWith(u'{') && upper.endsWith(u'}'))
        upper = upper.mid(1, upper.size() - 2);
    const QStringView shortForm = QStringView(upper).mid(4, 4);
    const bool onBase =
        upper.size() == 36 && upper.startsWith(QLatin1String("0000")) && upper.endsWith(baseTail) &&
        std::all_of(shortForm.begin(), shortForm.end(),
                    [](QChar c) { return c.isDigit() || (c >= u'A' && c <= u'F'); });
    return onBase ? shortForm.toString() : upper;
}

bool BluetoothUuid::isValidIdentifier(const QString& identifier) {
    static const QRegularExpression address(QStringLiteral("^[0-9A-Fa-f]{2}(:[0-9A-Fa-f]{2}){5}$"));
    return !QUuid::fromString(identifier).isNull() || address.match(identifier).hasMatch();
}

} // namespace ostrel
