#include "DQDataCatchHelper.h"

#include "ListLookup.h"
#include "PlistFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QStandardPaths>
#include <sys/stat.h>

namespace ostrel {

namespace {

QString expandTilde(const QString& path) {
    if (path == QLatin1String("~"))
        return QDir::homePath();
    if (path.startsWith(QLatin1String("~/")))
        return QDir::homePath() + path.mid(1);
    return path;
}

QString firstLocation(QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location);
}

// lstat, so that a symbolic link is looked at as the link, never as its target.
bool linkStatus(const QString& path, struct stat& status) {
    return ::lstat(QFile::encodeName(path).constData(), &status) == 0;
}

bool isRealDirectory(const QString& path) {
    struct stat status {};
    return linkStatus(path, status) && S_ISDIR(status.st_mode);
}

QString docFile(const QString& fileName) {
    return DQDataCatchHelper::getDocPath() + QLatin1Char('/') + fileName;
}

// Every entry below `path` that is not a folder, as full paths.
QStringList filesBelow(const QString& path) {
    QStringList files;
    for (const QString& relative : DQDataCatchHelper::getFilesNameWithPath(path)) {
        const QString full = path + QLatin1Char('/') + relative;
        if (!isRealDirectory(full))
            files.append(full);
    }
    return files;
}

} // namespace

QString DQDataCatchHelper::getHomePath() {
    return QDir::homePath();
}

QString DQDataCatchHelper::getAppPath() {
    return firstLocation(QStandardPaths::ApplicationsLocation);
}

QString DQDataCatchHelper::getDocPath() {
    return firstLocation(QStandardPaths::AppDataLocation);
}

QString DQDataCatchHelper::getLibPrefPath() {
    return firstLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/Preferences");
}

QString DQDataCatchHelper::getLibCatchesPath() {
    return firstLocation(QStandardPaths::CacheLocation);
}

QString DQDataCatchHelper::getTmpPath() {
    return QDir::tempPath();
}

QStringList DQDataCatchHelper::getFilesNameWithPath(const QString& path) {
    // Without FollowSymlinks the walk never descends through a link to a folder.
    const QDir root(path);
    QStringList names;
    QDirIterator it(path, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        names.append(root.relativeFilePath(it.next()));
    return names;
}

QStringList DQDataCatchHelper::getDirectWithPath(const QString& path) {
    return QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                QDir::NoDotAndDotDot);
}

// The folder and file creators resolve the name against the given folder instead of changing
// the process's working directory, which the rest of the application relies on.
bool DQDataCatchHelper::createFolderWithPath(const QString& path, const QString& folderName) {
    QDir(expandTilde(path)).mkpath(folderName);
    return true;
}

bool DQDataCatchHelper::createFileWithPath(const QString& path, const QString& fileName) {
    QFile file(QDir(expandTilde(path)).filePath(fileName));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        file.close();
    return true;
}

bool DQDataCatchHelper::deleteFileWithPath(const QString& path) {
    // removeRecursively removes links it meets inside the folder, not their targets.
    if (isRealDirectory(path))
        QDir(path).removeRecursively();
    else
        QFile::remove(path);
    return true;
}

qint64 DQDataCatchHelper::getFileSizeWithPath(const QString& path) {
    struct stat status {};
    return linkStatus(path, status) ? qint64{status.st_size} : -1;
}

qint64 DQDataCatchHelper::getFolderSizeWithPath(const QString& path) {
    if (!QFileInfo::exists(path))
        return -1;
    qint64 total = 0;
    for (const QString& file : filesBelow(path))
        total += std::max<qint64>(getFileSizeWithPath(file), 0);
    return total;
}

void DQDataCatchHelper::deleteFolderWithPath(const QString& path) {
    if (!QFileInfo::exists(path))
        return;
    for (const QString& file : filesBelow(path))
        deleteFileWithPath(file);
}

bool DQDataCatchHelper::saveFileWithFileName(const QString& fileName,
                                             const QVariantList& dataSource) {
    PlistFile::write(docFile(fileName), dataSource);
    return true;
}

QVariantList DQDataCatchHelper::getFileWithFileName(const QString& fileName) {
    return PlistFile::readArray(docFile(fileName)).value_or(QVariantList{});
}

bool DQDataCatchHelper::dataSaveDictWithDictSave(const QVariantMap& dictSave,
                                                 const QString& fileName) {
    QVariantList list = getFileWithFileName(fileName);
    if (list.contains(QVariant(dictSave)))
        return false;
    list.append(dictSave);
    return saveFileWithFileName(fileName, list);
}

bool DQDataCatchHelper::dataDeleteDictWithKey(const QString& key, const QString& keyValue,
                                              const QString& fileName) {
    QVariantList list = getFileWithFileName(fileName);
    const qsizetype index = ListLookup::indexOf(list, key, keyValue);
    if (index >= 0)
        list.removeAt(index);
    return saveFileWithFileName(fileName, list);
}

std::optional<QVariantMap> DQDataCatchHelper::dataGetDictWithKey(const QString& key,
                                                                 const QString& keyValue,
                                                                 const QString& fileName) {
    const QVariantList list = getFileWithFileName(fileName);
    const qsizetype index = ListLookup::indexOf(list, key, keyValue);
    if (index < 0)
        return std::nullopt;
    return list[index].toMap();
}

bool DQDataCatchHelper::dataModifyDictWithKey(const QString& key, const QString& keyValue,
                                              const QString& modifyKey, const QVariant& modifyValue,
                                              const QString& fileName) {
    auto entry = dataGetDictWithKey(key, keyValue, fileName);
    dataDeleteDictWithKey(key, keyValue, fileName);
    if (!entry)
        return true;
    // A null value removes the key, as setting nil on a dictionary does.
    if (modifyValue.isNull())
        entry->remove(modifyKey);
    else
        entry->insert(modifyKey, modifyValue);
    dataSaveDictWithDictSave(*entry, fileName);
    return true;
}

} // namespace ostrel
