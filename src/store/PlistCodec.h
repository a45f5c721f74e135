#pragma once

#include <QByteArray>
#include <QVariant>
#include <optional>

namespace ostrel {

// Property lists <-> Qt values. Dictionaries are QVariantMap, arrays QVariantList, and the
// scalars QString, bool, integers (read back as qint64), double, QByteArray and QDateTime.
class PlistCodec {
public:
    // XML text of `value`; nullopt when it holds something a property list cannot (a null,
    // an unknown type), in which case nothing should be written at all.
    static std::optional<QByteArray> toXml(const QVariant& value);
    // Reads XML or binary property lists; an invalid QVariant when `data` is neither.
    static QVariant fromData(const QByteArray& data);
};

} // namespace ostrel
