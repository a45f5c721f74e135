#include "ListLookup.h"

#include <QVariantMap>

namespace ostrel {

QString ListLookup::text(const QVariant& value) {
    if (value.isNull())
        return QStringLiteral("(null)");
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    return value.toString();
}

qsizetype ListLookup::indexOf(const QVariantList& list, const QString& key, const QString& text) {
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (list[i].typeId() != QMetaType::QVariantMap)
            continue;
        const QVariant value = list[i].toMap().value(key);
        if (!value.isNull() && ListLookup::text(value) == text)
            return i;
    }
    return -1;
}

} // namespace ostrel
