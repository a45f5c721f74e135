#include "TourNavigator.h"

#include "Tour.h"
#include "app/DemoDesks.h"
#include "app/OMBaseModalWindow.h"
#include "sim/VirtualDesk.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/DeskSearchRowView.h"

#include <QApplication>
#include <QMessageBox>
#include <QTest>

namespace ostrel {

QWidget& TourNavigator::home() const {
    return m_tour.home();
}

DeskControlVC* TourNavigator::control() const {
    return home().findChild<DeskControlVC*>();
}

VirtualDesk& TourNavigator::boundDesk() const {
    const QList<VirtualDesk*> desks = m_tour.demo().desks();
    for (VirtualDesk* desk : desks) {
        if (desk->isSubscribed())
            return *desk;
    }
    return *desks.first();
}

void TourNavigator::logDesk() const {
    const VirtualDesk& desk = boundDesk();
    const RBBluetoothManager& facade = RBBluetoothManager::sharedInstance();
    qInfo("desk %s: subscribed %d, height %d; link %d to %s", qPrintable(desk.name()),
          desk.isSubscribed(), desk.heightTenths(), facade.isConnect(),
          facade.currentPeripheral() ? qPrintable(facade.currentPeripheral()->name()) : "none");
}

void TourNavigator::closePages() const {
    if (DeskControlVC* screen = control()) {
        while (screen->pageCount() > 0)
            screen->popViewControl();
    }
}

void TourNavigator::closeWindowsExceptHome() const {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != &home() && window->isVisible())
            window->close();
    }
}

void TourNavigator::clickFirstDesk() const {
    if (auto* row = home().findChild<DeskSearchRowView*>())
        QTest::mouseClick(row, Qt::LeftButton);
}

void TourNavigator::hideErrorWindow() const {
    if (DeskControlVC* screen = control(); screen && screen->errorWindow())
        screen->errorWindow()->hide();
}

bool TourNavigator::promptShown() {
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<const QMessageBox*>(window))
            return true;
    }
    return false;
}

TourNavigator::Action TourNavigator::onControl(std::function<void(DeskControlVC&)> action) const {
    return [this, action] {
        if (DeskControlVC* screen = control())
            action(*screen);
    };
}

TourNavigator::Action TourNavigator::openSettingsMenu() const {
    return onControl([this](DeskControlVC& screen) {
        closeWindowsExceptHome();
        emit screen.settingsRequested();
    });
}

} // namespace ostrel
