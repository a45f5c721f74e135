#include "FieldValue.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace ostrel {

namespace {

bool isScalar(const QVariant& value) {
    if (value.isNull())
        return false;
    const int type = value.typeId();
    return type != QMetaType::QVariantList && type != QMetaType::QVariantMap &&
           type != QMetaType::QStringList;
}

// Texts become numbers the way the platform reads them: "12" and " 12.7" give 12.
int intFromText(const QString& text) {
    bool ok = false;
    const double number = text.trimmed().toDouble(&ok);
    if (!ok || !std::isfinite(number))
        return 0;
    constexpr double lowest = std::numeric_limits<int>::min();
    constexpr double highest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::trunc(number), lowest, highest));
}

} // namespace

QVariant FieldValue::box(const std::optional<std::string>& text) {
    return text ? QVariant(QString::fromStdString(*text)) : QVariant();
}

QVariant FieldValue::box(int number) {
    return QVariant(number);
}

QVariant FieldValue::box(bool flag) {
    return QVariant(flag);
}

void FieldValue::unbox(const QVariant& value, std::optional<std::string>& member) {
    if (!isScalar(value))
        return;
    // A boxed boolean prints as the number it is.
    if (value.typeId() == QMetaType::Bool)
        member.emplace(1, value.toBool() ? '1' : '0');
    else
        member = value.toString().toStdString();
}

void FieldValue::unbox(const QVariant& value, int& member) {
    if (!isScalar(value))
        return;
    if (value.typeId() == QMetaType::QString)
        member = intFromText(value.toString());
    else
        member = static_cast<int>(value.toLongLong());
}

void FieldValue::unbox(const QVariant& value, bool& member) {
    if (!isScalar(value))
        return;
    if (value.typeId() != QMetaType::QString) {
        member = value.toDouble() != 0;
        return;
    }
    const QString text = value.toString().trimmed().toLower();
    member =
        text == QLatin1String("true") || text == QLatin1String("yes") || intFromText(text) != 0;
}

} // namespace ostrel
