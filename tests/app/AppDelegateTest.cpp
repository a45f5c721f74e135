#include "AppTestSupport.h"
#include "app/OMPersistentContainer.h"
#include "app/StatusMenu.h"
#include "platform/AutostartEntry.h"
#include "store/CurrentDeskModel.h"
#include "store/DQDataSessionHelper.h"
#include "store/FileManager.h"
#include "store/OMPlistManager.h"
#include "widgets/OMWindowIdentifier.h"

#include <QApplication>
#include <QFile>
#include <QProcess>
#include <QScreen>
#include <QScrollArea>
#include <QSignalSpy>

namespace ostrel::test {
namespace {

void bindDesk(const QString& model, const QString& name) {
    CurrentDeskModel::setName(model);
    OMPlistManager::saveBindDeviceWithDevice({{QStringLiteral("bluetoothName"), name}});
}

QStringList boundNames(const QString& model) {
    CurrentDeskModel::setName(model);
    QStringList names;
    for (const QVariant& device : OMPlistManager::getBindDevice())
        names.append(device.toMap().value(QStringLiteral("bluetoothName")).toString());
    return names;
}

using LaunchTest = AppTest;

TEST_F(LaunchTest, ClearsLegacyFilesKeepsBoundDesksAndStartsOnTheDefaultModel) {
    for (const QString& name : AppDelegate::legacyFileNames())
        FileManager::writeString(QStringLiteral("left over"), name);
    bindDesk(QStringLiteral("D5"), QStringLiteral("QWJ-0001"));
    bindDesk(QStringLiteral("D5Pro"), QStringLiteral("QWJ-0002"));

    delegate->applicationDidFinishLaunching();

    EXPECT_EQ(delegate->foldName(), QStringLiteral("D5"));
    for (const QString& name : AppDelegate::legacyFileNames())
        EXPECT_FALSE(FileManager::readStringFileName(name)) << name.toStdString();
    EXPECT_EQ(boundNames(QStringLiteral("D5")), QStringList{QStringLiteral("QWJ-0001")});
    EXPECT_EQ(boundNames(QStringLiteral("D5Pro")), QStringList{QStringLiteral("QWJ-0002")});
    EXPECT_TRUE(OMPlistManager::readPlistFileDataWithFileName(QStringLiteral("user")));
    EXPECT_TRUE(OMPlistManager::readPlistFileDataWithFileName(QStringLiteral("system_setting")));
    EXPECT_FALSE(QApplication::quitOnLastWindowClosed());
}

TEST_F(LaunchTest, ShowsSearchOnlyAfterTheSettlePause) {
    delegate->applicationDidFinishLaunching();
    QSignalSpy shown(delegate.get(), &AppDelegate::homeScreenShown);
    advance(AppDelegate::kBluetoothSettlePause - 1ms);
    EXPECT_EQ(shown.count(), 0);
    EXPECT_FALSE(delegate->modalWindow()->isVisible());

    advance(1ms);
    ASSERT_EQ(shown.count(), 1);
    EXPECT_EQ(screenName(), QLatin1String(screens::kBluetoothSearch));
    EXPECT_TRUE(delegate->modalWindow()->isVisible());
    EXPECT_EQ(OMWindowIdentifier::find(OMWindowIdentifier::home()), delegate->modalWindow());
}

// On a screen lower than the window wants (a small screen, a large text scale), the window keeps
// within the available area and the rest scrolls.
TEST_F(LaunchTest, TheWindowFitsTheAvailableAreaAndScrollsWhatDoesNot) {
    launch();
    OMBaseModalWindow* window = delegate->modalWindow();
    const QRect available = window->screen()->availableGeometry();
    EXPECT_EQ(window->height(), qMin(OMBaseModalWindow::kSize.height(),
                                     available.height() - OMBaseModalWindow::kFrameAllowance));
    EXPECT_TRUE(available.contains(window->frameGeometry()));
    EXPECT_FALSE(window->windowFlags() & Qt::WindowMaximizeButtonHint);
    EXPECT_GE(window->content()->height(), window->content()->minimumSizeHint().height());
    EXPECT_EQ(window->findChild<QScrollArea*>()->widget(), window->content());
}

TEST_F(LaunchTest, HiddenStartShowsOnlyTheTrayUntilTheTrayIsClicked) {
    delegate->setStartHidden(true);
    launch();
    EXPECT_EQ(screenName(), QLatin1String(screens::kBluetoothSearch));
    EXPECT_FALSE(delegate->modalWindow()->isVisible());
    delegate->statusOnClick();
    EXPECT_TRUE(delegate->modalWindow()->isVisible());
}

// Without a tray nothing may hide the window: the user would have no way back to it but a
// second launch. Closing without a tray, relaunching, and a tray that appears are the Wayland
// test's.
TEST_F(LaunchTest, WithoutATrayTheWindowMinimisesAndFollowsTheTrayComingAndGoing) {
    tray->setAvailable(false);
    launch();
    OMBaseModalWindow* window = delegate->modalWindow();
    delegate->menu()->HideOstrelMotion->trigger();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isMinimized());

    tray->setAvailable(true);
    window->close();
    EXPECT_FALSE(window->isVisible());
    tray->setAvailable(false); // the panel went away with the window hidden
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(window->isMinimized());

    QEvent quit(QEvent::Quit); // quitting closes every window; refusing would cancel the quit
    QCoreApplication::sendEvent(qApp, &quit);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(LaunchTest, HiddenStartWithoutATrayStartsMinimised) {
    tray->setAvailable(false);
    delegate->setStartHidden(true);
    launch();
    EXPECT_TRUE(delegate->modalWindow()->isVisible());
    EXPECT_TRUE(delegate->modalWindow()->isMinimized());
}

// The autostart file is the setting: the menu entry writes and removes it and shows what is on
// disk whenever the menu opens.
TEST_F(LaunchTest, StartAtLoginWritesAValidAutostartEntryThatStartsHidden) {
    launch();
    QAction* entry = delegate->menu()->startAtLogin;
    const QString path = AutostartEntry::filePath();
    ASSERT_FALSE(entry->isChecked());

    entry->trigger();
    ASSERT_TRUE(QFile::exists(path));
    EXPECT_TRUE(entry->isChecked());
    EXPECT_EQ(QProcess::execute(QStringLiteral("desktop-file-validate"), {path}), 0);

    QFile::remove(path); // removed behind the application's back
    emit delegate->menu()->aboutToShow();
    EXPECT_FALSE(entry->isChecked());
    entry->trigger();
    entry->trigger();
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(entry->isChecked());
}

// Quitting with nothing to save asks nothing and releases the hot key.
TEST_F(LaunchTest, MenuMinimisesHidesAndQuits) {
    launch();
    delegate->menu()->mainMenuMinisize->trigger();
    EXPECT_TRUE(delegate->modalWindow()->isMinimized());
    delegate->applicationShouldHandleReopen();
    EXPECT_FALSE(delegate->modalWindow()->isMinimized());
    delegate->menu()->HideOstrelMotion->trigger();
    EXPECT_FALSE(delegate->modalWindow()->isVisible());

    QSignalSpy terminated(delegate.get(), &AppDelegate::terminated);
    delegate->menu()->QuitOstrelMotion->trigger();
    EXPECT_EQ(terminated.count(), 1);
    EXPECT_EQ(services.hotKeyRemovals, 1);
    EXPECT_TRUE(alerts.empty());
}

// ---- Stored settings applied at launch ----

// The stored shortcut grabs at launch are the X11 tests'; the combinations the page's.
TEST_F(LaunchTest, NotificationsFollowTheStoredSwitch) {
    delegate->actionSetSystomSetting(); // nothing stored: closed
    DQDataSessionHelper::userSaveSystemSetting({{QStringLiteral("push"), QStringLiteral("1")}});
    delegate->actionSetSystomSetting();
    EXPECT_EQ(services.notifications, (std::vector<bool>{false, true}));
}

// ---- Quitting ----

// A store whose save fails, to reach the quit-anyway question.
struct FailingStore : OMPersistentContainer {
    bool hasChanges() const override { return true; }
    bool save(QString& error) override {
        error = QStringLiteral("disk full");
        return false;
    }
};

TEST_F(LaunchTest, FailedSaveAsksAndCancelKeepsRunning) {
    delegate->setPersistentContainer(std::make_unique<FailingStore>());
    QSignalSpy terminated(delegate.get(), &AppDelegate::terminated);

    alertAnswer = OMAlert::kFirstButton + 1;
    delegate->requestTermination();
    ASSERT_EQ(alerts.size(), 1U);
    EXPECT_EQ(alerts[0].message,
              QStringLiteral("Could not save changes while quitting. Quit anyway?"));
    EXPECT_EQ(alerts[0].buttons,
              (QStringList{QStringLiteral("Quit anyway"), QStringLiteral("Cancel")}));
    EXPECT_EQ(terminated.count(), 0);

    alertAnswer = OMAlert::kFirstButton;
    delegate->requestTermination();
    EXPECT_EQ(terminated.count(), 1);
}

} // namespace
} // namespace ostrel::test
