#pragma once

#include <QString>

class QWidget;

namespace ostrel {

// Windows are found by identifier (kept as the window's object name), so that a screen can
// reuse a sheet window that is already open instead of stacking a second one.
class OMWindowIdentifier {
public:
    static QString prefix(); // the application's reverse-DNS prefix
    static QString home() { return prefix() + QStringLiteral(".OMHomeCenterWindowIdentifier"); }
    static QString personalCenter() {
        return prefix() + QStringLiteral(".OMPersonalCenterWindowIdentifier");
    }
    static QString setting() { return prefix() + QStringLiteral(".SettingWindowIdentifier"); }
    static QString settingHeight() {
        return prefix() + QStringLiteral(".SettingWindowHeightIdentifier");
    }

    static void assign(QWidget* window, const QString& identifier);
    // The top-level window with that identifier, or nullptr.
    static QWidget* find(const QString& identifier);
    // Shows the window in front of the others, hidden or minimised as it may be. Null is ignored.
    static void bringToFront(QWidget* window);
};

} // namespace ostrel
