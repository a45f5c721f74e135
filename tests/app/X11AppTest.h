#pragma once

// The application on a virtual desk on a real X server, driven with xdotool as a user would.
// Each test starts the whole application and quits it, so each needs a process of its own, as
// CTest runs them.
#include "RunningAppTest.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "store/CurrentDeviceStore.h"

#include <QProcess>

namespace ostrel::test {

constexpr int kX11WaitMs = 15000;

inline bool waitUntil(const std::function<bool()>& condition) {
    return waitUntil(condition, kX11WaitMs);
}

// One xdotool command; it talks to the X server, never to the application.
inline void xdotool(const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(QStringLiteral("xdotool"), arguments), 0)
        << arguments.join(' ').toStdString();
}

inline void key(const char* keys) {
    xdotool({QStringLiteral("key"), QLatin1String(keys)});
}

inline void focusWindow(WId window) {
    xdotool({QStringLiteral("windowfocus"), QString::number(window)});
}

inline QStringList pointAt(QPoint at) {
    return {QStringLiteral("mousemove"), QString::number(at.x()), QString::number(at.y())};
}
inline QStringList pointAt(const QWidget* widget) {
    return pointAt(widget->mapToGlobal(widget->rect().center()));
}

// `mousedown`, `mouseup` or `click` with the first button, over `widget` unless none is given.
inline void mouse(const char* action, const QWidget* widget = nullptr) {
    xdotool((widget ? pointAt(widget) : QStringList())
            << QLatin1String(action) << QStringLiteral("1"));
}

// Presses Tab; whether the focus moved within `timeoutMs`.
inline bool tab(int timeoutMs = kX11WaitMs) {
    QWidget* before = QApplication::focusWidget();
    key("Tab");
    return waitUntil([&] { return QApplication::focusWidget() != before; }, timeoutMs);
}

// Runs `action` and waits for the window it brings in front of the one that was active.
inline QWidget* windowAfter(const std::function<void()>& action) {
    QWidget* const main = QApplication::activeWindow();
    action();
    EXPECT_TRUE(waitUntil([&] { return QApplication::activeWindow() != main; }));
    return QApplication::activeWindow() != main ? QApplication::activeWindow() : nullptr;
}

// Names a parameterised test after its row's `name`, also where the test's parameter is printed.
inline constexpr auto kRowName = [](const auto& row) { return std::string(row.param.name); };
namespace {
template <class Row>
requires requires(Row row) {
    row.name;
}
void PrintTo(const Row& row, std::ostream* out) {
    *out << row.name;
}
} // namespace

class X11AppTest : public RunningAppTest {
protected:
    void focusApp() const { focusWindow(delegate().modalWindow()->winId()); }

    // Pairs the first desk from the search screen, as a user would.
    void pairDesk() {
        ASSERT_TRUE(waitUntil([&] { return deskRow() && deskRow()->isVisible(); }));
        focusApp();
        mouse("click", deskRow());
        ASSERT_TRUE(waitUntil([&] {
            return control() && desk->isSubscribed() && control()->heightText() != "0.0cm";
        }));
    }

    // Runs the application with `scenario` started once the desk is paired.
    void runPaired(const std::function<void()>& scenario, bool quitsItself = false) {
        run(
            [&] {
                ASSERT_NO_FATAL_FAILURE(pairDesk());
                scenario();
            },
            quitsItself);
    }

    void waitForPolls(int count) {
        int notifications = 0; // a poll and a display frame each
        const auto connection =
            QObject::connect(desk, &VirtualDesk::notified, [&] { ++notifications; });
        EXPECT_TRUE(waitUntil([&] { return notifications >= 2 * count; }));
        QObject::disconnect(connection);
    }

    // A few polls pass, and the desk stands still at their end.
    bool stillAfterPolls(int polls) {
        waitForPolls(polls);
        return !desk->isMoving();
    }

    // The presets in the record, as the desk reported them; the screen offers the set ones.
    static void setPresets(const char* memoryHeight) {
        OMBluetoothModel record = CurrentDeviceStore::load();
        record.memoryHeight = memoryHeight;
        CurrentDeviceStore::save(record);
        NotificationCenter::defaultCenter().post(QLatin1String(notifications::kMemoryKeyChange));
    }

    // Whether the desk was asked to store `heightTenths` as its first preset, within a wait.
    static bool presetSaved(int heightTenths) {
        return waitUntil([&] {
            return CurrentDeviceStore::load().memoryHeight.value_or("").starts_with(
                std::to_string((heightTenths + 5) / 10) + ",");
        });
    }
};

} // namespace ostrel::test
