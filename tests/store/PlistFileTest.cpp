#include "store/PlistFile.h"

#include "PythonPlist.h"
#include "StoreFixture.h"
#include "store/DQDataSessionHelper.h"
#include "store/FileManager.h"
#include "store/OMBluetoothModel.h"
#include "store/OMPlistManager.h"
#include "store/Object_SystemSetting.h"
#include "store/PlistCodec.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QProcess>
#include <functional>
#include <random>

namespace ostrel {
namespace {

using PlistFileTest = StoreFixture;

OMBluetoothModel boundDesk() {
    OMBluetoothModel desk;
    desk.bluetoothName = "QWJ-1042";
    desk.deviceName = "Büro & <desk>"; // markup and non-ASCII must survive
    desk.memoryHeight = "72,110,0,0";
    desk.relationId = -7;
    desk.deleteFlag = true;
    desk.isRepeat = 1;
    return desk;
}

TEST_F(PlistFileTest, EveryStoreFileReadsTheSameInAnIndependentReader) {
    struct Case {
        const char* file;
        std::function<void()> write;
        QVariant expected;
    };
    const QVariantMap desk = toPropertyForm(boundDesk());
    const QVariantMap settings = toPropertyForm(Object_SystemSetting{});
    const std::vector<Case> cases = {
        {"D5system_binddevice.plist", [&] { OMPlistManager::saveBindDeviceWithDevice(desk); },
         QVariantList{desk}},
        {"FileName_Current_BluetoothModel",
         [&] { FileManager::writeDictionary(desk, "FileName_Current_BluetoothModel"); }, desk},
        {"SystemSetting.plist", [&] { DQDataSessionHelper::userSaveSystemSetting(settings); },
         QVariantList{settings}},
        {"user_id.plist", [] { OMPlistManager::getUserID(); }, QVariantMap{{"auto_id", 0}}},
        {"control.plist", [] { OMPlistManager::createControlListWithUserID("3"); },
         QVariantList{QVariantMap{{"user_id", "3"},
                                  {"sit_height", 0},
                                  {"stand_height", 0},
                                  {"mem_height1", 0},
                                  {"mem_height2", 0}}}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        c.write();
        EXPECT_EQ(PythonPlist::read(docFile(c.file)), PythonPlist::tagged(c.expected));
    }
}

TEST_F(PlistFileTest, ReadsXmlAndBinaryWrittenByAnIndependentWriter) {
    const QVariant value = QVariantList{
        QVariantMap{{"bluetoothName", "QWJ-7"}, {"relationId", -3}, {"deleteFlag", true}},
        QVariantMap{{"big", qint64{1} << 40}, {"ratio", 0.25}, {"text", "星期一"}}};
    for (bool binary : {false, true}) {
        SCOPED_TRACE(binary ? "binary" : "xml");
        ASSERT_TRUE(PythonPlist::write(docFile("in.plist"), PythonPlist::tagged(value), binary));
        EXPECT_EQ(PythonPlist::tagged(PlistFile::read(docFile("in.plist"))),
                  PythonPlist::tagged(value));
    }
}

TEST_F(PlistFileTest, DamagedFilesReadAsAbsentAndAreReplacedButABadValueWritesNothing) {
    const QByteArray dictXml = *PlistCodec::toXml(QVariantMap{{"auto_id", 4}});
    const std::vector<std::pair<const char*, QByteArray>> cases = {
        {"empty", {}},
        {"truncated", dictXml.left(dictXml.size() / 2)},
        {"not a plist", "<html><body>hello</body></html>"},
        {"text", "auto_id = 4"},
        {"array instead of dictionary", *PlistCodec::toXml(QVariantList{1, 2})},
        {"string instead of dictionary", *PlistCodec::toXml(QString("4"))},
    };
    for (const auto& [label, bytes] : cases) {
        SCOPED_TRACE(label);
        writeRaw("user_id.plist", bytes);
        EXPECT_FALSE(OMPlistManager::readPlistDictionaryWithFileName("user_id"));
        EXPECT_EQ(OMPlistManager::getUserID(), "0"); // the counter restarts and is rewritten
        EXPECT_EQ(OMPlistManager::getUserID(), "1");
    }
    // A value no property list can hold writes nothing over what is there.
    FileManager::writeDictionary({{"kept", 1}}, "FileName_Current_BluetoothModel");
    FileManager::writeDictionary({{"bluetoothName", QVariant::fromValue(nullptr)}},
                                 "FileName_Current_BluetoothModel");
    EXPECT_EQ(FileManager::readDictionaryFileName("FileName_Current_BluetoothModel"),
              (QVariantMap{{"kept", 1}}));
}

// Every prefix of a valid file and a batch of random buffers: the parser must neither crash nor
// return part of a value.
TEST_F(PlistFileTest, NoPrefixOrRandomBufferYieldsAPartialValue) {
    const QVariant whole = QVariantList{toPropertyForm(boundDesk()), QVariantMap{{"n", 1}}};
    const QByteArray xml = *PlistCodec::toXml(whole);
    ASSERT_TRUE(PythonPlist::write(docFile("bin.plist"), PythonPlist::tagged(whole), true));
    const QByteArray binary = readRaw("bin.plist");
    for (const QByteArray& full : {xml, binary}) {
        for (qsizetype length = 0; length < full.size(); ++length) {
            const QVariant read = PlistCodec::fromData(full.left(length));
            if (read.isValid()) {
                EXPECT_EQ(read, whole) << "prefix of " << length << " bytes";
            }
        }
    }
    std::mt19937 random(20240101);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int round = 0; round < 300; ++round) {
        QByteArray noise = round % 2 ? QByteArray("bplist00") : QByteArray("<?xml ");
        noise.resize(8 + round);
        for (qsizetype i = 8; i < noise.size(); ++i)
            noise[i] = static_cast<char>(byte(random));
        EXPECT_FALSE(PlistCodec::fromData(noise).isValid()) << "round " << round;
    }
    const QByteArray deep = "<plist version=\"1.0\">" + QByteArray("<array>").repeated(50000) +
                            QByteArray("</array>").repeated(50000) + "</plist>";
    EXPECT_FALSE(PlistCodec::fromData(deep).isValid())
        << "nesting is bounded, not a stack overflow";
}

// A generation written by the writer program is whole when every item matches its number.
bool isWholeGeneration(const QVariant& value) {
    const QVariantMap map = value.toMap();
    const QVariantList items = map.value("items").toList();
    return map.size() == 3 && items.size() == map.value("count").toInt() &&
           std::all_of(items.cbegin(), items.cend(),
                       [&](const QVariant& item) { return item == map.value("generation"); });
}

TEST_F(PlistFileTest, AWriterKilledMidLoopNeverLeavesATornFile) {
    constexpr int kKills = 150;
    const QString target = docFile("race.plist");
    std::mt19937 random(7);
    std::uniform_int_distribution<int> writesBeforeKill(1, 6);
    int readsWhileWriting = 0;
    for (int kill = 0; kill < kKills; ++kill) {
        QProcess writer;
        writer.start(QStringLiteral(OSTREL_STORE_WRITER), {target});
        ASSERT_TRUE(writer.waitForStarted());
        const int wanted = writesBeforeKill(random);
        for (int seen = 0; seen < wanted;) {
            ASSERT_TRUE(writer.waitForReadyRead());
            while (writer.canReadLine() && seen < wanted) {
                writer.readLine();
                ++seen;
            }
            ASSERT_TRUE(isWholeGeneration(PlistFile::read(target))) << "kill " << kill;
            ++readsWhileWriting;
        }
        writer.kill(); // SIGKILL, wherever the writer happens to be
        writer.waitForFinished();
        ASSERT_TRUE(isWholeGeneration(PlistFile::read(target))) << "after kill " << kill;
    }
    EXPECT_GE(readsWhileWriting, kKills);
}

} // namespace
} // namespace ostrel
