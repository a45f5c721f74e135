#include "app/HomeErrorVC.h"

#include "AppTestSupport.h"
#include "widgets/OMWindowIdentifier.h"

#include <QDesktopServices>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QUrl>
#include <set>

namespace ostrel::test {
namespace {

struct ErrorCase {
    long code;
    const char* codeLine;
    const char* title;
};

const char* const kAbnormal = "设备状态异常";
const char* const kReset = "设备需要进行“复位”操作";

class ErrorTextTest : public ::testing::TestWithParam<ErrorCase> {};

TEST_P(ErrorTextTest, CodeLineAndTitle) {
    EXPECT_EQ(HomeErrorVC::errorCodeText(GetParam().code), QString::fromUtf8(GetParam().codeLine));
    EXPECT_EQ(HomeErrorVC::titleText(GetParam().code), QString::fromUtf8(GetParam().title));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, ErrorTextTest,
    ::testing::Values(ErrorCase{30, "升降桌故障,错误代码E30", "六轴传感器故障"},
                      ErrorCase{0xCCCC, "升降桌故障,错误代码LOC", "设备处于童锁状态"},
                      ErrorCase{0xFFFF, "升降桌故障,错误代码RST", kAbnormal},
                      ErrorCase{0xEEEE, "升降桌故障,错误代码-0L", "设备下滑故障"},
                      ErrorCase{5, "升降桌故障,错误代码E05", kAbnormal},
                      ErrorCase{2, "升降桌故障,错误代码E02", "设备温度异常，等待18分钟后再使用"},
                      ErrorCase{3, "升降桌故障,错误代码E03", "设备需要进行“自动回退”操作"},
                      ErrorCase{-3, "升降桌故障,错误代码E-3", kAbnormal},
                      ErrorCase{100, "升降桌故障,错误代码E100", kAbnormal}));

TEST(ErrorResetSet, IsExactlyTheMaskedCodes) {
    const std::set<long> reset{7,  8,  9,  11, 12, 13, 14, 15, 20, 21, 22,
                               23, 24, 25, 26, 32, 33, 34, 35, 36, 37};
    for (long code = -2; code <= 70; ++code) {
        const bool expected = reset.count(code) > 0;
        EXPECT_EQ(HomeErrorVC::isResetCode(code), expected) << code;
        if (code > 4 && code != 30) {
            EXPECT_EQ(HomeErrorVC::titleText(code) == QString::fromUtf8(kReset), expected) << code;
        }
    }
}

// Takes the URLs the help button opens instead of a browser.
class UrlRecorder : public QObject {
    Q_OBJECT
public:
    QList<QUrl> opened;
public slots:
    void open(const QUrl& url) { opened.append(url); }
};

using ErrorWindowTest = AppTest;

TEST_F(ErrorWindowTest, OneWindowKeepsItsFirstCodeAndClosesOnUnderstood) {
    HomeErrorVC* first = HomeErrorVC::showError(30);
    ASSERT_TRUE(first);
    EXPECT_EQ(services.deliveredRemovals, 1);

    HomeErrorVC* again = HomeErrorVC::showError(5);
    EXPECT_EQ(again, first);
    EXPECT_EQ(first->findChild<QLabel*>(QStringLiteral("errorCodeLabel"))->text(),
              QStringLiteral("升降桌故障,错误代码E30"));

    UrlRecorder browser;
    QDesktopServices::setUrlHandler(QStringLiteral("https"), &browser, "open");
    QTest::mouseClick(first->findChild<QPushButton*>(QStringLiteral("helpButton")), Qt::LeftButton);
    QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    ASSERT_EQ(browser.opened.size(), 1);
    EXPECT_TRUE(browser.opened[0].isValid());

    QPointer<QWidget> window = first->window();
    QTest::mouseClick(first->findChild<QPushButton*>(QStringLiteral("understoodButton")),
                      Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
    EXPECT_FALSE(OMWindowIdentifier::find(HomeErrorVC::windowIdentifier()));
}

} // namespace
} // namespace ostrel::test

#include "HomeErrorVCTest.moc"
