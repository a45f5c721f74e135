#pragma once

#include <QObject>
#include <QPointer>
#include <memory>

class QWidget;

namespace ostrel {

class ActivityFeed;
class ActivityRecorder;
class ActivityStore;
class AppDelegate;

// The standing-time record for the life of the application: the file, the recorder fed by the
// showing desk session, the tray menu's "Activity" window, and telling the user once when the
// file had to be moved aside or cannot be written.
class ActivityService : public QObject {
    Q_OBJECT
public:
    explicit ActivityService(AppDelegate& delegate);
    ~ActivityService() override;

    ActivityRecorder& recorder() const { return *m_recorder; }
    // The activity page in a window of its own (from the tray menu).
    void showWindow();
    QWidget* window() const { return m_window; }

private:
    void tellAboutTheFile(QWidget* parent) const;

    std::unique_ptr<ActivityStore> m_store;
    std::unique_ptr<ActivityRecorder> m_recorder;
    std::unique_ptr<ActivityFeed> m_feed;
    QPointer<QWidget> m_window;
};

} // namespace ostrel
