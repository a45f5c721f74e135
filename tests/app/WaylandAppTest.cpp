// The application under a real Wayland compositor (headless sway, tools/headless-sway.sh), as users
// of today's desktops run it: a native window that maps and draws, no tray (so closing minimises
// and a second launch brings the window back), the shortcut page's commands where no portal offers
// global shortcuts, and a tray appearing later (a StatusNotifierWatcher stand-in) that brings the
// icon, its menu over DBusMenu and the usual behaviour back. Pictures come from grim, the
// compositor's own screenshot, and are checked against what the window drew, not pixel by pixel.
#include "RealTimeWait.h"
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
#include "app/DemoDesks.h"
#include "app/OMBaseModalWindow.h"
#include "app/SingleInstance.h"
#include "app/StatusMenu.h"
#include "session/DeskControlVC.h"
#include "session/DeskSession.h"
#include "settings/ShortcutCommandsView.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSystemSetting.h"
#include "sim/VirtualDesk.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QSet>
#include <QSignalSpy>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTimer>
#include <QWindow>
#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace ostrel::test {
namespace {

constexpr int kWaitMs = 20000;
constexpr char kAppId[] = "com.ostrel.motion";

bool waitFor(const std::function<bool()>& condition) {
    return waitUntil(condition, kWaitMs);
}

// Runs a tool to its end while the application keeps answering; its standard output.
QByteArray runTool(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(waitFor([&] { return process.state() == QProcess::NotRunning; }));
    EXPECT_EQ(process.exitCode(), 0)
        << program.toStdString() << " " << arguments.join(' ').toStdString()
        << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

std::optional<QJsonObject> findNode(const QJsonObject& node) {
    if (node.value(QStringLiteral("app_id")).toString() == QLatin1String(kAppId))
        return node;
    for (const char* children : {"nodes", "floating_nodes"})
        for (const QJsonValue& child : node.value(QLatin1String(children)).toArray())
            if (auto found = findNode(child.toObject()))
                return found;
    return std::nullopt;
}

// The application's window as the compositor sees it, if it is mapped.
std::optional<QJsonObject> swayWindow() {
    const QByteArray tree = runTool(QStringLiteral("swaymsg"), {"-r", "-t", "get_tree"});
    return findNode(QJsonDocument::fromJson(tree).object());
}

// The window's content, without what the compositor draws round it.
QImage grim(const QJsonObject& node) {
    const QJsonObject outer = node.value(QStringLiteral("rect")).toObject();
    const QJsonObject inner = node.value(QStringLiteral("window_rect")).toObject();
    const QString geometry = QStringLiteral("%1,%2 %3x%4")
                                 .arg(outer.value("x").toInt() + inner.value("x").toInt())
                                 .arg(outer.value("y").toInt() + inner.value("y").toInt())
                                 .arg(inner.value("width").toInt())
                                 .arg(inner.value("height").toInt());
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("shot.png"));
    runTool(QStringLiteral("grim"), {QStringLiteral("-g"), geometry, path});
    return QImage(path);
}

// The compositor shows what the window drew: its size, and a picture that matches the
// window's own rendering block by block (fonts and antialiasing may differ a little).
void expectShows(const QImage& shot, QWidget& window) {
    ASSERT_FALSE(shot.isNull());
    EXPECT_EQ(shot.size(), window.size());
    const QImage drawn = window.grab().toImage();
    constexpr int kBlocks = 16;
    const QImage a = shot.scaled(kBlocks, kBlocks, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage b =
        drawn.scaled(kBlocks, kBlocks, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double difference = 0;
    QSet<QRgb> colours;
    for (int y = 0; y < kBlocks; ++y)
        for (int x = 0; x < kBlocks; ++x) {
            difference += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y)));
            colours.insert(a.pixel(x, y));
        }
    EXPECT_LT(difference / (kBlocks * kBlocks), 12.0) << "the compositor shows something else";
    EXPECT_GT(colours.size(), 8) << "a blank picture";
}

class WaylandAppTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run under dbus-run-session";
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("wayland"))
            << "run under tools/headless-sway.sh";
        QGuiApplication::setDesktopFileName(QLatin1String(kAppId)); // the window's app id
        ASSERT_TRUE(instance.claim());
        runner = std::make_unique<AppRunner>(true);
        desk = runner->demo()->desks().first();
        QObject::connect(&instance, &SingleInstance::activated, &runner->delegate(),
                         &AppDelegate::applicationShouldHandleReopen);
    }
    void TearDown() override {
        watcher.terminate();
        watcher.waitForFinished();
    }

    void run(const std::function<void()>& scenario) {
        QTimer::singleShot(0, qApp, [&] {
            scenario();
            QApplication::quit();
        });
        runner->exec();
    }

    AppDelegate& delegate() const { return runner->delegate(); }
    OMBaseModalWindow& window() const { return *delegate().modalWindow(); }
    DeskControlVC* control() const { return qobject_cast<DeskControlVC*>(window().content()); }

    void pairDesk() {
        ASSERT_TRUE(waitFor([&] {
            auto* search = qobject_cast<BluetoothSearchVC*>(window().content());
            for (DeskSearchRowView* row : search ? search->rows() : QList<DeskSearchRowView*>{})
                if (row->title() == desk->name()) {
                    emit row->clicked();
                    return true;
                }
            return false;
        }));
        ASSERT_TRUE(waitFor([&] { return control() && control()->session().currentHeight() > 0; }));
    }

    ViewShortcutKeys* openShortcutPage() {
        emit control()->settingsRequested();
        if (auto* menu = qobject_cast<ViewSetting*>(control()->topView()))
            menu->actionPushToSysSetting();
        if (auto* page = qobject_cast<ViewSystemSetting*>(control()->topView()))
            page->actionSelectShortcut();
        return qobject_cast<ViewShortcutKeys*>(control()->topView());
    }

    // Lets the compositor catch up with what the window drew.
    void waitForFrame(const std::function<bool(const QJsonObject&)>& condition = {}) {
        EXPECT_TRUE(waitFor([&] {
            const auto node = swayWindow();
            return node && (!condition || condition(*node));
        }));
    }

    static QVariant property(const QString& service, const QString& path, const char* interface,
                             const char* name) {
        QDBusMessage get = QDBusMessage::createMethodCall(
            service, path, QStringLiteral("org.freedesktop.DBus.Properties"),
            QStringLiteral("Get"));
        get << QLatin1String(interface) << QLatin1String(name);
        const QDBusMessage reply = script.call(get, QDBus::BlockWithGui);
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    SingleInstance instance{QDBusConnection::sessionBus()};
    std::unique_ptr<AppRunner> runner;
    VirtualDesk* desk = nullptr;
    QProcess watcher;
    static inline QDBusConnection script =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("script"));
};

// The labels of a DBusMenu layout (ia{sv}av), depth first.
void collectLabels(const QDBusArgument& node, QStringList& labels) {
    int id = 0;
    QVariantMap properties;
    QList<QVariant> children;
    node.beginStructure();
    node >> id >> properties;
    node.beginArray();
    while (!node.atEnd()) {
        QDBusVariant child;
        node >> child;
        children << child.variant();
    }
    node.endArray();
    node.endStructure();
    if (properties.contains(QStringLiteral("label")))
        labels << properties.value(QStringLiteral("label")).toString().remove(u'&');
    for (const QVariant& child : children)
        collectLabels(child.value<QDBusArgument>(), labels);
}

TEST_F(WaylandAppTest, NativeWindowWithoutATrayThenWithOne) {
    run([&] {
        ASSERT_TRUE(waitFor([&] { return window().isVisible(); }));
        waitForFrame();
        const QJsonObject node = *swayWindow();
        EXPECT_EQ(node.value("shell").toString(), QStringLiteral("xdg_shell")) << "not XWayland";
        EXPECT_TRUE(node.value("visible").toBool());

        ASSERT_NO_FATAL_FAILURE(pairDesk());
        waitForFrame();
        expectShows(grim(*swayWindow()), window());

        // No tray: closing (the compositor asks, as its close button or shortcut does) keeps
        // the window mapped, minimised; launching again brings it back.
        // Sway has no minimised state: it keeps showing the window, and may report it normal
        // again at once; so the request to minimise is what counts here.
        EXPECT_EQ(delegate().statusItem(), nullptr);
        QSignalSpy states(window().windowHandle(), &QWindow::windowStateChanged);
        runTool(QStringLiteral("swaymsg"), {QStringLiteral("[app_id=%1] kill").arg(kAppId)});
        ASSERT_TRUE(waitFor([&] {
            return std::any_of(states.begin(), states.end(), [](const QList<QVariant>& state) {
                return state.value(0).value<Qt::WindowState>() == Qt::WindowMinimized;
            });
        }));
        EXPECT_TRUE(window().isVisible());
        EXPECT_TRUE(swayWindow().has_value()) << "unmapped: the task list would lose it";
        QSignalSpy activations(&instance, &SingleInstance::activated);
        QProcess second;
        second.start(QStringLiteral(OSTREL_MOTION_BINARY), {});
        ASSERT_TRUE(waitFor([&] { return second.state() == QProcess::NotRunning; }));
        EXPECT_EQ(second.exitCode(), 0);
        EXPECT_EQ(activations.count(), 1);
        EXPECT_FALSE(window().isMinimized());
        EXPECT_TRUE(window().isVisible());

        // No portal offers global shortcuts here: the page offers the commands instead.
        ViewShortcutKeys* page = openShortcutPage();
        ASSERT_NE(page, nullptr);
        EXPECT_FALSE(page->commandsView()->isHidden());

        // A tray appears: the icon registers, its menu is on the bus, a host that draws no menu
        // of its own gets the application's, and closing hides again.
        watcher.start(QStringLiteral(OSTREL_WATCHER_STANDIN), {});
        QString item;
        ASSERT_TRUE(waitFor([&] {
            item = property("org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                            "org.kde.StatusNotifierWatcher", "RegisteredStatusNotifierItems")
                       .toStringList()
                       .value(0);
            return !item.isEmpty();
        }));
        ASSERT_NE(delegate().statusItem(), nullptr);
        const auto menuPath =
            property(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "Menu")
                .value<QDBusObjectPath>();
        ASSERT_FALSE(menuPath.path().isEmpty());
        QDBusMessage getLayout = QDBusMessage::createMethodCall(
            item, menuPath.path(), QStringLiteral("com.canonical.dbusmenu"),
            QStringLiteral("GetLayout"));
        getLayout << 0 << -1 << QStringList();
        const QDBusMessage layout = script.call(getLayout, QDBus::BlockWithGui);
        ASSERT_EQ(layout.type(), QDBusMessage::ReplyMessage) << layout.errorMessage().toStdString();
        QStringList labels;
        collectLabels(layout.arguments().value(1).value<QDBusArgument>(), labels);
        StatusMenu& menu = *delegate().menu();
        for (const QAction* action :
             {menu.aboutOstrel.data(), menu.startAtLogin.data(), menu.QuitOstrelMotion.data()})
            EXPECT_TRUE(labels.contains(action->text().remove(u'&')))
                << labels.join(',').toStdString();

        QDBusMessage contextMenu = QDBusMessage::createMethodCall(
            item, QStringLiteral("/StatusNotifierItem"),
            QStringLiteral("org.kde.StatusNotifierItem"), QStringLiteral("ContextMenu"));
        contextMenu << 1200 << 10;
        script.call(contextMenu, QDBus::BlockWithGui);
        EXPECT_TRUE(waitFor([&] { return menu.isVisible(); }));
        menu.close();

        runTool(QStringLiteral("swaymsg"), {QStringLiteral("[app_id=%1] kill").arg(kAppId)});
        EXPECT_TRUE(waitFor([&] { return !window().isVisible(); }));
    });
}

} // namespace
} // namespace ostrel::test
