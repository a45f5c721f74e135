#pragma once

#include <QString>
#include <QVariant>
#include <optional>

namespace ostrel {

// A property-list file read and written whole. A file that is missing, unreadable, not a
// property list or of another top-level kind reads as absent; nothing is ever reported.
class PlistFile {
public:
    static QVariant read(const QString& path);
    static std::optional<QVariantList> readArray(const QString& path);
    static std::optional<QVariantMap> readDictionary(const QString& path);
    // Replaces the file atomically with the XML form of `value`. False, and nothing written,
    // when `value` cannot be a property list or the write failed.
    static bool write(const QString& path, const QVariant& value);
};

} // namespace ostrel
