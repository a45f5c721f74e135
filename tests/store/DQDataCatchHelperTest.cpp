#include "StoreFixture.h"
#include "store/DQDataSessionHelper.h"
#include "store/FileManager.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace ostrel {
namespace {

using DQDataCatchHelperTest = StoreFixture;

// A folder with two files, a subfolder and links to a big file and a folder outside it.
struct FolderWithOutsideLinks {
    QTemporaryDir outside;
    QString folder;

    explicit FolderWithOutsideLinks(const QString& at) : folder(at) {
        QDir().mkpath(folder + "/sub");
        write(folder + "/a.bin", 100);
        write(folder + "/sub/b.bin", 23);
        write(outside.filePath("big.bin"), 100000);
        QDir().mkpath(outside.filePath("dir"));
        write(outside.filePath("dir/inner.bin"), 5000);
        QFile::link(outside.filePath("big.bin"), folder + "/sub/big-link");
        QFile::link(outside.filePath("dir"), folder + "/dir-link");
    }
    static void write(const QString& path, int size) {
        QFile file(path);
        file.open(QIODevice::WriteOnly);
        file.write(QByteArray(size, 'x'));
    }
    qint64 linkSizes() const {
        return outside.filePath("big.bin").toUtf8().size() +
               outside.filePath("dir").toUtf8().size();
    }
};

// Sizes count links, not what they point to; deleting removes files and links, never their
// targets.
TEST_F(DQDataCatchHelperTest, FolderSizesAndDeletionStopAtLinks) {
    EXPECT_EQ(DQDataCatchHelper::getFolderSizeWithPath(docFile("missing")), -1);
    QDir().mkpath(docFile("empty"));
    EXPECT_EQ(DQDataCatchHelper::getFolderSizeWithPath(docFile("empty")), 0);
    EXPECT_EQ(DQDataCatchHelper::getFileSizeWithPath(docFile("missing")), -1);

    FolderWithOutsideLinks tree(docFile("cache"));
    EXPECT_EQ(DQDataCatchHelper::getFolderSizeWithPath(tree.folder), 123 + tree.linkSizes());
    EXPECT_FALSE(
        DQDataCatchHelper::getFilesNameWithPath(tree.folder).contains("dir-link/inner.bin"));

    DQDataCatchHelper::deleteFolderWithPath(tree.folder);
    EXPECT_EQ(DQDataCatchHelper::getFilesNameWithPath(tree.folder), QStringList{"sub"});
    EXPECT_EQ(QFileInfo(tree.outside.filePath("big.bin")).size(), 100000);
    EXPECT_TRUE(QFile::exists(tree.outside.filePath("dir/inner.bin")));

    FolderWithOutsideLinks again(docFile("cache2"));
    EXPECT_TRUE(DQDataCatchHelper::deleteFileWithPath(again.folder));
    EXPECT_FALSE(QFileInfo::exists(again.folder));
    EXPECT_TRUE(QFile::exists(again.outside.filePath("dir/inner.bin")));
}

TEST_F(DQDataCatchHelperTest, ListOfDictionariesFile) {
    const QVariantMap first{{"id", "1"}, {"n", 5}};
    EXPECT_TRUE(DQDataCatchHelper::dataSaveDictWithDictSave(first, "list"));
    const QByteArray before = readRaw("list");
    // The stored copy comes back with 64-bit numbers; it is still the same dictionary.
    EXPECT_FALSE(DQDataCatchHelper::dataSaveDictWithDictSave(first, "list"));
    EXPECT_EQ(readRaw("list"), before);

    EXPECT_TRUE(DQDataCatchHelper::dataSaveDictWithDictSave({{"id", "2"}}, "list"));
    DQDataCatchHelper::dataModifyDictWithKey("id", "1", "n", 6, "list");
    EXPECT_EQ(DQDataCatchHelper::getFileWithFileName("list"),
              (QVariantList{QVariantMap{{"id", "2"}}, QVariantMap{{"id", "1"}, {"n", 6}}}));
    EXPECT_EQ(DQDataCatchHelper::dataGetDictWithKey("id", "2", "list"), (QVariantMap{{"id", "2"}}));
    EXPECT_FALSE(DQDataCatchHelper::dataGetDictWithKey("id", "3", "list"));

    DQDataCatchHelper::dataDeleteDictWithKey("id", "9", "other"); // writes an empty list
    EXPECT_EQ(FileManager::readArrayFileName("other"), QVariantList{});
}

TEST_F(DQDataCatchHelperTest, SessionFilesHoldOneDictionaryAndStringFilesText) {
    EXPECT_TRUE(DQDataSessionHelper::userGetSystemSettinginfo().isEmpty());
    EXPECT_FALSE(DQDataSessionHelper::userIsLoginSelf());
    DQDataSessionHelper::userSaveSystemSetting({{"unit", "0"}});
    DQDataSessionHelper::userSaveLightColor({{"open", 1}});
    EXPECT_EQ(DQDataSessionHelper::userGetSystemSettinginfo(), (QVariantMap{{"unit", "0"}}));
    // Another writer (a second instance) replaces the file: the next read sees its value.
    DQDataCatchHelper::saveFileWithFileName("SystemSetting.plist",
                                            QVariantList{QVariantMap{{"unit", "1"}}});
    EXPECT_EQ(DQDataSessionHelper::userGetSystemSettinginfo(), (QVariantMap{{"unit", "1"}}));
    EXPECT_EQ(FileManager::readArrayFileName("SystemSetting.plist")->size(), 1);
    DQDataSessionHelper::userClearSystemSettingData();
    EXPECT_FALSE(exists("SystemSetting.plist"));
    EXPECT_EQ(DQDataSessionHelper::userGetLightColorInfo(), (QVariantMap{{"open", 1}}));

    // String files are UTF-8; invalid bytes read as absent.
    FileManager::writeString("Höhe 72,5", "note");
    EXPECT_EQ(FileManager::readStringFileName("note"), "Höhe 72,5");
    writeRaw("note", "\xff\xfe broken");
    EXPECT_FALSE(FileManager::readStringFileName("note"));
    FileManager::deleteFileName("note");
    EXPECT_FALSE(FileManager::readStringFileName("note"));
}

} // namespace
} // namespace ostrel
