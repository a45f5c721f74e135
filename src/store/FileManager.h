#pragma once

#include <QString>
#include <QVariant>
#include <optional>

namespace ostrel {

// Whole files in the documents folder under a name used as given (no extension added): texts
// as UTF-8, dictionaries and arrays as property lists. It holds the current-device file.
class FileManager {
public:
    static void writeString(const QString& text, const QString& fileName);
    static void writeDictionary(const QVariantMap& dictionary, const QString& fileName);
    static void writeArray(const QVariantList& array, const QString& fileName);
    // Absent when the file is missing or not valid UTF-8.
    static std::optional<QString> readStringFileName(const QString& fileName);
    static std::optional<QVariantMap> readDictionaryFileName(const QString& fileName);
    static std::optional<QVariantList> readArrayFileName(const QString& fileName);
    static void deleteFileName(const QString& fileName);
};

} // namespace ostrel
