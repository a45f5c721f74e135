#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

namespace ostrel {

class ActivityRecorder;
class DeskSession;

// Tells the recorder what the session of the showing control screen sees: the desk linked, its
// height and its Sit and Stand presets. No session means no desk.
class ActivityFeed : public QObject {
    Q_OBJECT
public:
    ActivityFeed(ActivityRecorder& recorder, QObject* parent = nullptr);

private:
    void follow(DeskSession* session);
    void presetsChanged();

    ActivityRecorder& m_recorder;
    QPointer<DeskSession> m_session;
    QList<QMetaObject::Connection> m_followed;
};

} // namespace ostrel
