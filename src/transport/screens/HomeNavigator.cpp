#include "transport/screens/HomeNavigator.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "core/Scheduler.h"
#include "transport/RBBluetoothManager.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"

#include <QWidget>

namespace ostrel {

void HomeNavigator::show(const QString& screen) {
    OMScreenRouter::instance().show(screen);
    bringHomeToFront();
}

void HomeNavigator::bringHomeToFront() {
    OMWindowIdentifier::bringToFront(OMWindowIdentifier::find(OMWindowIdentifier::home()));
}

void HomeNavigator::actionPushToSearchVC() {
    NotificationCenter::defaultCenter().post(
        QString::fromLatin1(notifications::kDeleteCurrentDevice));
    const bool radioOn = RBBluetoothManager::sharedInstance().blueToothIsOpen();
    show(QString::fromLatin1(radioOn ? screens::kBluetoothSearch : screens::kNoBluetooth));
}

void HomeNavigator::later(QObject* context, std::function<void()> step) {
    Scheduler::instance().after(Scheduler::Duration::zero(), context, std::move(step));
}

} // namespace ostrel
