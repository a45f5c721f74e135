#include "FileManager.h"

#include "AtomicFile.h"
#include "DQDataCatchHelper.h"
#include "PlistFile.h"

#include <QFile>
#include <QStringDecoder>

namespace ostrel {

namespace {
QString pathOf(const QString& fileName) {
    return DQDataCatchHelper::getDocPath() + QLatin1Char('/') + fileName;
}
} // namespace

void FileManager::writeString(const QString& text, const QString& fileName) {
    AtomicFile::write(pathOf(fileName), text.toUtf8());
}

void FileManager::writeDictionary(const QVariantMap& dictionary, const QString& fileName) {
    PlistFile::write(pathOf(fileName), dictionary);
}

void FileManager::writeArray(const QVariantList& array, const QString& fileName) {
    PlistFile::write(pathOf(fileName), array);
}

std::optional<QString> FileManager::readStringFileName(const QString& fileName) {
    QFile file(pathOf(fileName));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(file.readAll());
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

std::optional<QVariantMap> FileManager::readDictionaryFileName(const QString& fileName) {
    return PlistFile::readDictionary(pathOf(fileName));
}

std::optional<QVariantList> FileManager::readArrayFileName(const QString& fileName) {
    return PlistFile::readArray(pathOf(fileName));
}

void FileManager::deleteFileName(const QString& fileName) {
    QFile::remove(pathOf(fileName));
}

} // namespace ostrel
