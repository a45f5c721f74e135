#pragma once

#include "SessionTestSupport.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "settings/OMSettingPage.h"
#include "settings/SettingRowView.h"
#include "settings/SettingsNavigation.h"
#include "settings/SettingsPages.h"
#include "settings/SystemSettingRecord.h"
#include "widgets/OMHoverButton.h"
#include "widgets/WidgetTestSupport.h"

#include <QCoreApplication>
#include <QPushButton>
#include <algorithm>

namespace ostrel::test {

// The control screen on a bound virtual desk with its settings hung on it, the notifications
// the pages post counted.
class SettingsTest : public SessionTest {
protected:
    void TearDown() override {
        SettingsPages::instance().clear();
        SessionTest::TearDown();
    }

    DeskControlVC& openControlWithSettings() {
        DeskControlVC& screen = openControl();
        SettingsNavigation::attach(screen);
        return screen;
    }

    // The gear answers 0.7 s after it is pressed, as the other hover buttons do.
    void clickGear() {
        click(control->settingsButton());
        advance(800ms);
    }

    template <class Page> Page* top() const { return qobject_cast<Page*>(control->topView()); }

    // Closes the top page the way its back button does, and lets it go.
    void goBack() {
        auto* page = qobject_cast<OMSettingPage*>(control->topView());
        ASSERT_NE(page, nullptr);
        page->backButton()->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // What the pages tell the rest of the application.
    const int& unitChanges = countPosts(notifications::kUnitChange);
    const int& memoryKeyChanges = countPosts(notifications::kMemoryKeyChange);
    const int& sensitivityChanges = countPosts(notifications::kSensitivityChange);
};

} // namespace ostrel::test
