#pragma once

// The whole application in this test's process, as main runs it, on its demo desks, in real time.
#include "RealTimeWait.h"
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
#include "app/DemoDesks.h"
#include "app/OMBaseModalWindow.h"
#include "session/DeskControlVC.h"
#include "session/DeskSession.h"
#include "sim/VirtualDesk.h"
#include "transport/screens/BluetoothSearchVC.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QApplication>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace ostrel::test {

constexpr int kAppWaitMs = 20000;

class RunningAppTest : public ::testing::Test {
protected:
    void SetUp() override {
        runner = std::make_unique<AppRunner>(true);
        desk = runner->demo()->desks().first();
    }
    void TearDown() override { runner.reset(); }

    static bool waitFor(const std::function<bool()>& condition, int timeoutMs = kAppWaitMs) {
        return waitUntil(condition, timeoutMs);
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

    AppDelegate& delegate() const { return runner->delegate(); }
    QWidget* content() const { return delegate().modalWindow()->content(); }
    DeskControlVC* control() const { return qobject_cast<DeskControlVC*>(content()); }

    // The desk's row on the search screen, once the scan listed it.
    DeskSearchRowView* deskRow() const {
        auto* search = qobject_cast<BluetoothSearchVC*>(content());
        for (DeskSearchRowView* row : search ? search->rows() : QList<DeskSearchRowView*>{})
            if (row->title() == desk->name())
                return row;
        return nullptr;
    }

    // Takes the desk from the search screen and waits for its first height.
    void pairDesk() {
        ASSERT_TRUE(waitFor([&] { return deskRow() != nullptr; }));
        emit deskRow()->clicked();
        ASSERT_TRUE(waitFor([&] {
            return control() && desk->isSubscribed() && control()->session().currentHeight() > 0;
        }));
    }

    std::unique_ptr<AppRunner> runner;
    VirtualDesk* desk = nullptr;
};

} // namespace ostrel::test
