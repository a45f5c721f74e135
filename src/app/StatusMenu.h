#pragma once

#include <QMenu>
#include <QPointer>

namespace ostrel {

// The application menu, opened from the tray icon: About, Activity, Hide, the Window submenu
// with Minimise, Start at login, and Quit. Titles are set from the translations when the
// application starts.
class StatusMenu : public QMenu {
    Q_OBJECT
public:
    explicit StatusMenu(QWidget* parent = nullptr);

    void setTitles();

    QPointer<QAction> aboutOstrel;
    QPointer<QAction> activity;
    QPointer<QAction> HideOstrelMotion;
    QPointer<QAction> QuitOstrelMotion;
    QPointer<QAction> mainMenuWindow;
    QPointer<QMenu> windowMenu;
    QPointer<QAction> mainMenuMinisize;
    QPointer<QAction> startAtLogin;
};

} // namespace ostrel
