#pragma once

// The application on a virtual desk on a real X server, driven with xdotool as a user would.
// Each test starts the whole application and quits it, so each needs a process of its own, as
// CTest runs them.
#include "RealTimeWait.h"
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
#include "app/DemoDesks.h"
#include "app/OMBaseModalWindow.h"
#include "session/DeskControlVC.h"
#include "sim/VirtualDesk.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QApplication>
#include <QProcess>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

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

inline QStringList pointAt(const QWidget* widget) {
    const QPoint centre = widget->mapToGlobal(widget->rect().center());
    return {QStringLiteral("mousemove"), QString::number(centre.x()), QString::number(centre.y())};
}

class X11AppTest : public ::testing::Test {
protected:
    void SetUp() override {
        runner = std::make_unique<AppRunner>(true);
        desk = runner->demo()->desks().first();
    }

    // Runs the application with `scenario` started inside its event loop. Unless the scenario
    // ends the application itself, it is quit when the scenario returns.
    void run(const std::function<void()>& scenario, bool quitsItself = false) {
        QTimer::singleShot(0, qApp, [&] {
            scenario();
            if (!quitsItself || HasFailure())
                QApplication::quit();
        });
        runner->exec();
    }

    QWidget* content() const { return runner->delegate().modalWindow()->content(); }
    DeskControlVC* control() const { return qobject_cast<DeskControlVC*>(content()); }

    // Pairs the first desk from the search screen, as a user would.
    void pairDesk() {
        DeskSearchRowView* row = nullptr;
        ASSERT_TRUE(waitUntil([&] {
            auto* search = qobject_cast<BluetoothSearchVC*>(content());
            for (DeskSearchRowView* candidate :
                 search ? search->rows() : QList<DeskSearchRowView*>{})
                if (candidate->title() == desk->name() && candidate->isVisible())
                    row = candidate;
            return row != nullptr;
        }));
        const WId window = runner->delegate().modalWindow()->winId();
        xdotool({QStringLiteral("windowfocus"), QString::number(window)});
        xdotool(pointAt(row) << QStringLiteral("click") << QStringLiteral("1"));
        ASSERT_TRUE(waitUntil([&] {
            return control() && desk->isSubscribed() && control()->heightText() != "0.0cm";
        }));
    }

    void waitForPolls(int count) {
        int notifications = 0; // a poll and a display frame each
        const auto connection =
            QObject::connect(desk, &VirtualDesk::notified, [&] { ++notifications; });
        EXPECT_TRUE(waitUntil([&] { return notifications >= 2 * count; }));
        QObject::disconnect(connection);
    }

    std::unique_ptr<AppRunner> runner;
    VirtualDesk* desk = nullptr;
};

} // namespace ostrel::test
