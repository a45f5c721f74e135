#include "settings/DevicePages.h"

#include "session/DeskControlVC.h"
#include "session/DeskSession.h"
#include "transport/screens/ViewDeviceManagement.h"

#include <QPointer>

namespace ostrel {

QWidget* DevicePages::create(DeskControlVC* fatherVC) {
    QPointer<DeskControlVC> father(fatherVC);
    DevicePageHost host{[father](QWidget* page) {
                            if (father)
                                father->pushViewControlWithView(page);
                            else
                                delete page;
                        },
                        [father] {
                            if (father)
                                father->popViewControl();
                        }};
    const auto toSession = [father](void (DeskSession::*action)()) {
        return [father, action] {
            if (father)
                (father->session().*action)();
        };
    };
    const auto changeStarting = [father](std::function<void()> letGo) {
        if (father)
            father->session().deskChangeStarting(std::move(letGo));
        else
            letGo();
    };
    return new ViewDeviceManagement(std::move(host),
                                    {changeStarting, toSession(&DeskSession::deskChangeFailed),
                                     toSession(&DeskSession::actionDeleteCurrentDeviceSetting)});
}

} // namespace ostrel
