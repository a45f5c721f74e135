// The application under a real Wayland compositor (headless sway, tools/headless-sway.sh), as users
// of today's desktops run it: a native window that maps and draws, no tray (so closing minimises
// and a second launch brings the window back), the shortcut page's commands where no portal offers
// global shortcuts, and a tray appearing later (a StatusNotifierWatcher stand-in) that brings the
// icon, its menu on the bus and the usual behaviour back. Pictures come from grim, the
// compositor's own screenshot, and are checked against what the window drew, not pixel by pixel.
#include "RunningAppTest.h"
#include "app/SingleInstance.h"
#include "app/StatusMenu.h"
#include "settings/ShortcutCommandsView.h"
#include "settings/ViewSetting.h"
#include "settings/ViewShortcutKeys.h"
#include "settings/ViewSystemSetting.h"

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
#include <QTemporaryDir>
#include <QWindow>
#include <algorithm>
#include <optional>

namespace ostrel::test {
namespace {

constexpr char kAppId[] = "com.ostrel.motion";

// Runs a tool to its end while the application keeps answering; its standard output.
QByteArray runTool(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }, kAppWaitMs));
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
    constexpr int kBlocks = 16;
    const auto blocks = [](const QImage& image) {
        return image.scaled(kBlocks, kBlocks, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    const QImage a = blocks(shot);
    const QImage b = blocks(window.grab().toImage());
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

class WaylandAppTest : public RunningAppTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDBusConnection::sessionBus().isConnected()) << "run under dbus-run-session";
        ASSERT_EQ(QGuiApplication::platformName(), QStringLiteral("wayland"))
            << "run under tools/headless-sway.sh";
        QGuiApplication::setDesktopFileName(QLatin1String(kAppId)); // the window's app id
        ASSERT_TRUE(instance.claim());
        RunningAppTest::SetUp();
        QObject::connect(&instance, &SingleInstance::activated, &delegate(),
                         &AppDelegate::applicationShouldHandleReopen);
    }
    void TearDown() override {
        watcher.terminate();
        watcher.waitForFinished();
        RunningAppTest::TearDown();
    }

    OMBaseModalWindow& window() const { return *delegate().modalWindow(); }

    // Lets the compositor catch up with what the window drew.
    static void waitForFrame() {
        EXPECT_TRUE(waitFor([] { return swayWindow().has_value(); }));
    }

    static QDBusMessage call(const QString& service, const QString& path, const char* interface,
                             const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            service, path, QLatin1String(interface), QLatin1String(method));
        message.setArguments(arguments);
        return script.call(message, QDBus::BlockWithGui);
    }
    static QVariant property(const QString& service, const QString& path, const char* interface,
                             const char* name) {
        const QDBusMessage reply = call(service, path, "org.freedesktop.DBus.Properties", "Get",
                                        {QLatin1String(interface), QLatin1String(name)});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }

    SingleInstance instance{QDBusConnection::sessionBus()};
    QProcess watcher;
    static inline QDBusConnection script =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("script"));
};

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
        runTool(QStringLiteral(OSTREL_MOTION_BINARY), {}); // a second launch
        EXPECT_EQ(activations.count(), 1);
        EXPECT_FALSE(window().isMinimized());
        EXPECT_TRUE(window().isVisible());

        // No portal offers global shortcuts here: the page offers the commands instead.
        emit control()->settingsRequested();
        if (auto* menu = qobject_cast<ViewSetting*>(control()->topView()))
            menu->actionPushToSysSetting();
        if (auto* system = qobject_cast<ViewSystemSetting*>(control()->topView()))
            system->actionSelectShortcut();
        auto* page = qobject_cast<ViewShortcutKeys*>(control()->topView());
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
        StatusMenu& menu = *delegate().menu();

        call(item, "/StatusNotifierItem", "org.kde.StatusNotifierItem", "ContextMenu", {1200, 10});
        EXPECT_TRUE(waitFor([&] { return menu.isVisible(); }));
        menu.close();

        runTool(QStringLiteral("swaymsg"), {QStringLiteral("[app_id=%1] kill").arg(kAppId)});
        EXPECT_TRUE(waitFor([&] { return !window().isVisible(); }));
    });
}

} // namespace
} // namespace ostrel::test
