#include "AppTestSupport.h"
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

struct CacheCase {
    const char* name;
    const char* autoClean;
    qint64 size;
    bool kept;
};

// How folders are measured and emptied is DQDataCatchHelperTest's; here the limit and the switch.
class CacheAtLaunchTest : public AppTest, public ::testing::WithParamInterface<CacheCase> {};

TEST_P(CacheAtLaunchTest, OnlyAnOversizedCacheIsCleanedAndNothingOutsideTheApplicationsFolder) {
    const QString cache = DQDataCatchHelper::getLibCatchesPath();
    // A sibling of the application's cache folder that must never be touched.
    const QString foreign = QFileInfo(cache).absolutePath() + "/someone-else/big";
    makeFile(cache + "/blob", GetParam().size);
    makeFile(foreign, kLimitBytes * 2);
    DQDataSessionHelper::userSaveSystemSetting(
        {{QStringLiteral("autocatchclean"), QString::fromLatin1(GetParam().autoClean)}});
    delegate->applicationDidFinishLaunching();
    EXPECT_EQ(QFile::exists(cache + "/blob"), GetParam().kept);
    EXPECT_TRUE(QDir(cache).exists());
    EXPECT_TRUE(QFile::exists(foreign));
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, CacheAtLaunchTest,
    ::testing::Values(CacheCase{"ExactlyTheLimitIsKept", "1", kLimitBytes, true},
                      CacheCase{"OneByteOverIsCleaned", "1", kLimitBytes + 1, false},
                      CacheCase{"SwitchedOffKeepsAnySize", "0", kLimitBytes * 2, true}),
    [](const auto& tested) { return std::string(tested.param.name); });

} // namespace
} // namespace ostrel::test
