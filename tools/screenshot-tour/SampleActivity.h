#pragma once

#include <QTemporaryDir>
#include <QWidget>
#include <memory>

namespace ostrel {

class ActivityRecorder;
class ActivityStore;

// A month of made-up days at the desk, shown on the activity page in a window of its own: the
// page's chart as a user sees it after weeks of use, which a tour of minutes cannot record.
class SampleActivity {
public:
    SampleActivity();
    ~SampleActivity();

    void show();

private:
    QTemporaryDir m_folder;
    std::unique_ptr<ActivityStore> m_store;
    std::unique_ptr<ActivityRecorder> m_recorder;
    std::unique_ptr<QWidget> m_window;
};

} // namespace ostrel
