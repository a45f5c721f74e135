#include "PlistFile.h"

#include "AtomicFile.h"
#include "PlistCodec.h"

#include <QFile>

namespace ostrel {

QVariant PlistFile::read(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return PlistCodec::fromData(file.readAll());
}

std::optional<QVariantList> PlistFile::readArray(const QString& path) {
    const QVariant value = read(path);
    if (value.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    return value.toList();
}

std::optional<QVariantMap> PlistFile::readDictionary(const QString& path) {
    const QVariant value = read(path);
    if (value.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return value.toMap();
}

bool PlistFile::write(const QString& path, const QVariant& value) {
    const auto xml = PlistCodec::toXml(value);
    return xml && AtomicFile::write(path, *xml);
}

} // namespace ostrel
