#pragma once

#include "core/HeightMovement.h"
#include "core/Scheduler.h"
#include "core/ThrottledChanges.h"
#include "homeautomation/DeskEntities.h"
#include "session/DeskSession.h"

#include <QObject>
#include <QPointer>

namespace ostrel {

class ActivityRecorder;
class MqttClient;

// What Home Assistant is told about the desks: a discovery config for every bound desk, and the
// state of each (height, moving, connected, minutes stood and sat today), retained so a restarted
// Home Assistant knows it at once. It follows the session of the control screen that is showing
// and the application's standing-time record. A moving desk reports a height on every poll;
// states go out at once when still and at most every kStateInterval while they change.
class DeskStatePublisher : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kStateInterval{250};

    DeskStatePublisher(MqttClient& client, QString availability, QObject* parent = nullptr);

    // Everything again, the paired desks read anew: after a (re)connection, or when Home
    // Assistant restarts.
    void publishAll();

    DeskSession* session() const { return m_session; }
    // The entities' id of the connected desk; empty when none is.
    QString liveDeskId() const;
    QList<DeskEntities> desks() const;

private:
    // The paired desks, read from their file only when the session or its link changes, never
    // on the height path.
    void reloadDesks();
    void follow(DeskSession* session);
    void heightChanged();
    void refresh();
    void publishConfigs(const QList<DeskEntities>& desks);
    QVariantMap states(const QList<DeskEntities>& desks) const;
    // The record is read when it changes (a posture begins or ends, a minute passes), never on
    // the height path.
    void followActivity();
    void activityChanged();
    bool connected() const;
    bool moving() const;
    // Tenths of a centimetre, 0 when not known.
    double heightTenths() const;

    MqttClient& m_client;
    QString m_availability;
    QPointer<DeskSession> m_session;
    QList<QMetaObject::Connection> m_followed;
    QList<DeskEntities::Desk> m_bound;
    QByteArray m_configsSent;
    ThrottledChanges m_changes;
    QPointer<ActivityRecorder> m_recorder;
    QMetaObject::Connection m_recorderChanged;
    QVariantMap m_activity; // topic to payload
    HeightMovement m_movement;
};

} // namespace ostrel
