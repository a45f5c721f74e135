#include "settings/ActivityPage.h"

#include "session/DeskControlVC.h"
#include "settings/ActivityView.h"

#include <QVBoxLayout>

namespace ostrel {

ActivityPage::ActivityPage(DeskControlVC* fatherVC, ActivityRecorder& recorder)
    : OMSettingPage(fatherVC, tr("Activity")), m_view(new ActivityView(recorder, this)) {
    contentLayout()->addWidget(m_view, 1);
}

} // namespace ostrel
