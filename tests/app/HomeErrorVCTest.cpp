#include "app/HomeErrorVC.h"

#include "AppTestSupport.h"

#include <QDesktopServices>
#include <QFile>
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

// Help opens a page shipped with the application, never a web address; "understood" only
// hides the window, which the control screen brings back for later faults.
TEST_F(ErrorWindowTest, HelpOpensTheShippedPageAndUnderstoodHidesTheWindow) {
    std::unique_ptr<QWidget> window(HomeErrorVC::makeWindow(30));
    window->show();
    auto* screen = window->findChild<HomeErrorVC*>();
    ASSERT_TRUE(screen);
    EXPECT_EQ(services.deliveredRemovals, 1);
    EXPECT_EQ(screen->findChild<QLabel*>(QStringLiteral("errorCodeLabel"))->text(),
              QStringLiteral("升降桌故障,错误代码E30"));

    UrlRecorder browser;
    for (const char* scheme : {"file", "http", "https"})
        QDesktopServices::setUrlHandler(QString::fromLatin1(scheme), &browser, "open");
    QTest::mouseClick(screen->findChild<QPushButton*>(QStringLiteral("helpButton")),
                      Qt::LeftButton);
    for (const char* scheme : {"file", "http", "https"})
        QDesktopServices::unsetUrlHandler(QString::fromLatin1(scheme));
    ASSERT_EQ(browser.opened.size(), 1);
    ASSERT_TRUE(browser.opened[0].isLocalFile()) << browser.opened[0].toString().toStdString();
    QFile page(browser.opened[0].toLocalFile());
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QByteArray html = page.readAll();
    for (const char* code : {"RST", "LOC", "-0L", "E30"})
        EXPECT_TRUE(html.contains(code)) << code;

    QTest::mouseClick(screen->findChild<QPushButton*>(QStringLiteral("understoodButton")),
                      Qt::LeftButton);
    EXPECT_FALSE(window->isVisible());
}

} // namespace
} // namespace ostrel::test

#include "HomeErrorVCTest.moc"
