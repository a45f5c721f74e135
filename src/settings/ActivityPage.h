#pragma once

#include "settings/OMSettingPage.h"

namespace ostrel {

class ActivityRecorder;
class ActivityView;

// "Activity" on the control screen's view stack.
class ActivityPage : public OMSettingPage {
    Q_OBJECT
public:
    ActivityPage(DeskControlVC* fatherVC, ActivityRecorder& recorder);

    ActivityView* view() const { return m_view; }

private:
    ActivityView* m_view;
};

} // namespace ostrel
