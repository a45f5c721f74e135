#pragma once

#include "core/HeightMovement.h"
#include "core/Scheduler.h"
#include "core/ThrottledChanges.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QMap>
#include <QPointer>
#include <QVariantMap>
#include <array>

namespace ostrel {

class DeskSession;

// Preset name (sit, stand, m1, m2) to whole centimetres, 0 = not set.
using PresetHeights = QMap<QString, uint>;
// Days of the standing-time record, oldest first: date, sitting_s, standing_s, away_s,
// transitions.
using ActivityDays = QList<QVariantMap>;

// The desk on the session bus, for scripts: its state as properties and moves as methods
// (resources/dbus/com.ostrel.Motion.Desk1.xml). It drives the session of the control screen
// that is showing; without one, or without a link, calls fail with NotConnected. Every move
// goes through the session's move to a height, so nothing a caller sends can leave a key held.
// Release and Connect let go of the desk and link it again, as the screen's action does.
class DeskBusAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.Motion.Desk1")
    Q_PROPERTY(bool Connected READ connected)
    Q_PROPERTY(bool Released READ released)
    Q_PROPERTY(QString DeskName READ deskName)
    Q_PROPERTY(double Height READ height)
    Q_PROPERTY(QString Unit READ unit)
    Q_PROPERTY(bool Moving READ moving)
    Q_PROPERTY(ostrel::PresetHeights Presets READ presets)
    Q_PROPERTY(uint StandingToday READ standingToday)
    Q_PROPERTY(uint SittingToday READ sittingToday)
    Q_PROPERTY(uint StandingGoal READ standingGoal WRITE setStandingGoal)
    Q_PROPERTY(uint StandingStreak READ standingStreak)
    Q_PROPERTY(double StandingThreshold READ standingThreshold)
    Q_PROPERTY(bool Present READ present)
public:
    // Property changes go out at most this often; a moving desk changes height every poll.
    static constexpr Scheduler::Duration kChangeInterval{250};
    static constexpr std::array kPresetNames{"sit", "stand", "m1", "m2"};

    DeskBusAdaptor(QDBusConnection connection, QObject* host);

    bool connected() const;
    bool released() const;
    QString deskName() const;
    double height() const;
    QString unit() const;
    bool moving() const;
    PresetHeights presets() const;
    // The standing-time record, the open interval included; 0 while no record is kept.
    uint standingToday() const;
    uint sittingToday() const;
    uint standingGoal() const;
    void setStandingGoal(uint seconds);
    uint standingStreak() const;
    double standingThreshold() const;
    bool present() const;

    // Each call carries its message, so that a refusal can answer it with an error.
public slots:
    void MoveTo(double cm, const QDBusMessage& call);
    void RecallPreset(const QString& name, const QDBusMessage& call);
    void Stop(const QDBusMessage& call);
    ostrel::ActivityDays History(uint days);
    // As the Up and Down hot keys: start a movement, or stop the one in progress. Answers
    // whether the desk now moves.
    bool Up(const QDBusMessage& call);
    bool Down(const QDBusMessage& call);
    void Release(const QDBusMessage& call);
    void Connect(const QDBusMessage& call);

private:
    void follow(DeskSession* session);
    void heightChanged();
    // The session to drive, or an error reply and null.
    DeskSession* drivableSession(const QDBusMessage& call);
    // The session of the control screen, linked or not, or an error reply and null.
    DeskSession* liveSession(const QDBusMessage& call);
    void moveTo(DeskSession& session, double cm, const QDBusMessage& call);
    bool pressHotKey(const QString& name, const QDBusMessage& call);
    void refuse(const QDBusMessage& call, const QString& error, const QString& text);
    QVariantMap snapshot() const;
    void refresh();
    void announce(const QVariantMap& changed);

    QDBusConnection m_connection;
    QPointer<DeskSession> m_session;
    QList<QMetaObject::Connection> m_followed;
    HeightMovement m_movement;
    ThrottledChanges m_changes;
};

} // namespace ostrel
