#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <optional>

namespace ostrel {

// Folder locations, file and folder utilities, and files holding a list of dictionaries.
// The folder utilities never leave the folder they are given through a symbolic link: a link is
// counted and deleted as the link itself, never as what it points to.
class DQDataCatchHelper {
public:
    static QString getHomePath();
    static QString getAppPath();
    static QString getDocPath(); // where every store file lives; the application creates it
    static QString getLibPrefPath();
    static QString getLibCatchesPath(); // the application's own cache folder
    static QString getTmpPath();

    static QStringList getFilesNameWithPath(const QString& path); // recursive, relative paths
    static QStringList getDirectWithPath(const QString& path);
    static bool createFolderWithPath(const QString& path, const QString& folderName);
    static bool createFileWithPath(const QString& path, const QString& fileName);
    static bool deleteFileWithPath(const QString& path);
    static qint64 getFileSizeWithPath(const QString& path);   // -1 when there is no such file
    static qint64 getFolderSizeWithPath(const QString& path); // -1 when there is no such folder
    static void deleteFolderWithPath(const QString& path);    // files only; folders stay

    static bool saveFileWithFileName(const QString& fileName, const QVariantList& dataSource);
    static QVariantList getFileWithFileName(const QString& fileName);
    // False, and nothing written, when an equal dictionary is already stored.
    static bool dataSaveDictWithDictSave(const QVariantMap& dictSave, const QString& fileName);
    static bool dataDeleteDictWithKey(const QString& key, const QString& keyValue,
                                      const QString& fileName);
    static std::optional<QVariantMap>
    dataGetDictWithKey(const QString& key, const QString& keyValue, const QString& fileName);
    // The modified entry moves to the end of the list.
    static bool dataModifyDictWithKey(const QString& key, const QString& keyValue,
                                      const QString& modifyKey, const QVariant& modifyValue,
                                      const QString& fileName);
};

} // namespace ostrel
