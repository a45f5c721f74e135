#include "AppTestSupport.h"
#include "app/CacheRule.h"
#include "store/DQDataSessionHelper.h"

#include <QFile>

namespace ostrel::test {
namespace {

constexpr qint64 kLimitBytes = 200LL * 1024 * 1024;

// Sparse files: the size counts, the disk stays empty.
void makeFile(const QString& path, qint64 size) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(size));
}

class CacheAtLaunchTest : public AppTest {
protected:
    static QString cache() { return DQDataCatchHelper::getLibCatchesPath(); }
    // A sibling of the application's cache folder that must never be touched.
    static QString foreign() { return QFileInfo(cache()).absolutePath() + "/someone-else/big"; }

    void launchWith(const char* autoClean) {
        DQDataSessionHelper::userSaveSystemSetting(
            {{QStringLiteral("autocatchclean"), QString::fromLatin1(autoClean)}});
        delegate->applicationDidFinishLaunching();
    }
};

TEST_F(CacheAtLaunchTest, ExactlyTheLimitIsKept) {
    makeFile(cache() + "/blob", kLimitBytes);
    launchWith("1");
    EXPECT_TRUE(QFile::exists(cache() + "/blob"));
}

TEST_F(CacheAtLaunchTest, OneByteOverIsCleanedButNothingOutsideTheApplicationsFolder) {
    makeFile(cache() + "/blob", kLimitBytes + 1);
    makeFile(foreign(), kLimitBytes * 2);
    launchWith("1");
    EXPECT_FALSE(QFile::exists(cache() + "/blob"));
    EXPECT_TRUE(QDir(cache()).exists());
    EXPECT_TRUE(QFile::exists(foreign()));
}

TEST_F(CacheAtLaunchTest, SwitchedOffKeepsAnySize) {
    makeFile(cache() + "/blob", kLimitBytes * 2);
    launchWith("0");
    EXPECT_TRUE(QFile::exists(cache() + "/blob"));
}

TEST_F(CacheAtLaunchTest, MeasuresFoldersAndCleansNestedEntries) {
    makeFile(cache() + "/a/b/c", 1024 * 1024);
    makeFile(cache() + "/d", 1024 * 1024);
    const double folders =
        double(QFileInfo(cache() + "/a").size() + QFileInfo(cache() + "/a/b").size()) /
        (1024 * 1024);
    EXPECT_DOUBLE_EQ(CacheRule::actionCalculateCache(cache()), 2.0 + folders);

    CacheRule::actionClearCache(cache());
    EXPECT_TRUE(QDir(cache()).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden));
    EXPECT_DOUBLE_EQ(CacheRule::actionCalculateCache(cache()), 0.0);
}

} // namespace
} // namespace ostrel::test
