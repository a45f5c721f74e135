#include "StatusMenu.h"

namespace ostrel {

StatusMenu::StatusMenu(QWidget* parent) : QMenu(parent) {
    aboutOstrel = addAction(QString());
    activity = addAction(QString());
    HideOstrelMotion = addAction(QString());
    addSeparator();
    windowMenu = addMenu(QString());
    mainMenuWindow = windowMenu->menuAction();
    mainMenuMinisize = windowMenu->addAction(QString());
    addSeparator();
    startAtLogin = addAction(QString());
    startAtLogin->setCheckable(true);
    addSeparator();
    QuitOstrelMotion = addAction(QString());
    // The desktop's usual keys for these, also on the window, which carries the same actions.
    HideOstrelMotion->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
    mainMenuMinisize->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_M));
    QuitOstrelMotion->setShortcut(QKeySequence::Quit);
    setTitles();
}

void StatusMenu::setTitles() {
    aboutOstrel->setText(tr("关于Sorvix"));
    activity->setText(tr("Activity"));
    HideOstrelMotion->setText(tr("隐藏Sorvix"));
    QuitOstrelMotion->setText(tr("退出Sorvix"));
    mainMenuWindow->setText(tr("窗口"));
    windowMenu->setTitle(tr("窗口"));
    mainMenuMinisize->setText(tr("最小化软件"));
    startAtLogin->setText(tr("Start at login"));
}

} // namespace ostrel
