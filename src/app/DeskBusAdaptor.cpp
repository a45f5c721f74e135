#include "app/DeskBusAdaptor.h"

#include "app/AppConfig.h"
#include "platform/Platform.h"
#include "platform/Presence.h"
#include "session/ActivityRecorder.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskLink.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "session/GlobalKeyDispatch.h"
#include "session/HotKeyMovement.h"
#include "session/LiveSession.h"
#include "session/PresetKeys.h"
#include "store/ActivityStore.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <cmath>

namespace ostrel {

namespace {

// Beyond any desk: keeps the conversion to tenths in range.
constexpr double kLargestSensibleCm = 1000.0;

QString name(const char* text) {
    return QString::fromLatin1(text);
}

const QString kInvalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");

} // namespace

DeskBusAdaptor::DeskBusAdaptor(QDBusConnection connection, QObject* host)
    : QDBusAbstractAdaptor(host), m_connection(std::move(connection)),
      m_movement(this, [this] { refresh(); }),
      m_changes(kChangeInterval, this, [this](const QVariantMap& changed) { announce(changed); }) {
    qDBusRegisterMetaType<PresetHeights>();
    qDBusRegisterMetaType<ActivityDays>();
    LiveSession& live = LiveSession::instance();
    connect(&live, &LiveSession::currentChanged, this, &DeskBusAdaptor::follow);
    connect(&Platform::get<Presence>(), &Presence::presentChanged, this, &DeskBusAdaptor::refresh);
    follow(live.current());
    m_changes.reset(snapshot()); // a bus that has just seen the interface needs no news
}

// ---- Properties ----

bool DeskBusAdaptor::connected() const {
    return m_session && m_session->isConnected();
}

bool DeskBusAdaptor::released() const {
    return m_session && m_session->isReleased();
}

QString DeskBusAdaptor::deskName() const {
    return connected() ? m_session->link().blutoothName() : QString();
}

double DeskBusAdaptor::height() const {
    if (!connected() || m_session->currentHeight() <= 0)
        return 0.0;
    const double tenths =
        DeskHeightDisplay::normalisedHeight(QString::number(m_session->currentHeight())).toDouble();
    return std::round(tenths) / 10.0;
}

QString DeskBusAdaptor::unit() const {
    return DeskHeightDisplay::usesInches() ? QStringLiteral("in") : QStringLiteral("cm");
}

bool DeskBusAdaptor::moving() const {
    return connected() && (m_movement.isMoving() || m_session->goToHeight().isMoving() ||
                           m_session->hotKeyMovement().isMoving());
}

PresetHeights DeskBusAdaptor::presets() const {
    PresetHeights heights;
    for (std::size_t slot = 0; slot < kPresetNames.size(); ++slot)
        heights.insert(name(kPresetNames[slot]),
                       m_session ? uint(std::max(0, m_session->presetKeys().memory(int(slot))))
                                 : 0u);
    return heights;
}

// ---- Methods ----

void DeskBusAdaptor::MoveTo(double cm, const QDBusMessage& call) {
    if (!std::isfinite(cm)) {
        refuse(call, kInvalidArgs, QStringLiteral("The height must be a number."));
        return;
    }
    if (DeskSession* session = drivableSession(call))
        moveTo(*session, cm, call);
}

void DeskBusAdaptor::RecallPreset(const QString& preset, const QDBusMessage& call) {
    const QString lowered = preset.toLower();
    const auto found = std::find_if(kPresetNames.begin(), kPresetNames.end(),
                                    [&](const char* known) { return lowered == name(known); });
    if (found == kPresetNames.end()) {
        refuse(call, kInvalidArgs,
               QStringLiteral("Unknown preset \"%1\": use sit, stand, m1 or m2.").arg(preset));
        return;
    }
    DeskSession* session = drivableSession(call);
    if (!session)
        return;
    const int cm = session->presetKeys().memory(int(found - kPresetNames.begin()));
    if (cm < 1) {
        refuse(call, name(config::kPresetNotSetError),
               QStringLiteral("The %1 preset is not set.").arg(lowered));
        return;
    }
    moveTo(*session, cm, call);
}

void DeskBusAdaptor::Stop(const QDBusMessage& call) {
    if (DeskSession* session = drivableSession(call))
        session->stopMoving();
}

bool DeskBusAdaptor::Up(const QDBusMessage& call) {
    return pressHotKey(QStringLiteral("GlobalKeyUp"), call);
}

bool DeskBusAdaptor::Down(const QDBusMessage& call) {
    return pressHotKey(QStringLiteral("GlobalKeyDown"), call);
}

void DeskBusAdaptor::Release(const QDBusMessage& call) {
    if (DeskSession* session = liveSession(call))
        session->release().releaseDesk();
}

void DeskBusAdaptor::Connect(const QDBusMessage& call) {
    if (DeskSession* session = liveSession(call))
        session->release().connectDesk();
}

// The hot key's own path, so the movement has the hot keys' watchdogs and stops.
bool DeskBusAdaptor::pressHotKey(const QString& name, const QDBusMessage& call) {
    DeskSession* session = drivableSession(call);
    if (!session)
        return false;
    session->globalKeys().globalKeyPush(name);
    refresh();
    return session->hotKeyMovement().isMoving();
}

DeskSession* DeskBusAdaptor::drivableSession(const QDBusMessage& call) {
    if (connected())
        return m_session;
    refuse(call, name(config::kNotConnectedError),
           released() ? QStringLiteral("The desk is released; Connect() links it again.")
                      : QStringLiteral("No desk is connected."));
    return nullptr;
}

DeskSession* DeskBusAdaptor::liveSession(const QDBusMessage& call) {
    if (m_session)
        return m_session;
    refuse(call, name(config::kNotConnectedError), QStringLiteral("No desk is paired yet."));
    return nullptr;
}

void DeskBusAdaptor::refuse(const QDBusMessage& call, const QString& error, const QString& text) {
    call.setDelayedReply(true); // the error is the reply
    m_connection.send(call.createErrorReply(error, text));
}

void DeskBusAdaptor::moveTo(DeskSession& session, double cm, const QDBusMessage& call) {
    const int tenths =
        int(std::lround(std::clamp(cm, -kLargestSensibleCm, kLargestSensibleCm) * 10));
    const GoToHeight::Refusal refusal = session.moveTo(tenths);
    const QString why = GoToHeight::refusalText(refusal, session.limits(), false);
    if (refusal == GoToHeight::Refusal::OutOfRange)
        refuse(call, kInvalidArgs,
               QStringLiteral("%1 cm is out of range. %2").arg(cm, 0, 'f', 1).arg(why));
    else if (refusal == GoToHeight::Refusal::HeightUnknown)
        refuse(call, name(config::kHeightUnknownError), why);
    refresh();
}

// ---- Standing time ----

namespace {

uint todaySeconds(Posture posture) {
    const ActivityRecorder* recorder = ActivityRecorder::current();
    return recorder ? uint(recorder->report(1).today().of(posture) / 1000) : 0u;
}

} // namespace

uint DeskBusAdaptor::standingToday() const {
    return todaySeconds(Posture::Standing);
}

uint DeskBusAdaptor::sittingToday() const {
    return todaySeconds(Posture::Sitting);
}

uint DeskBusAdaptor::standingGoal() const {
    const ActivityRecorder* recorder = ActivityRecorder::current();
    return recorder ? uint(recorder->goalMs() / 1000) : 0u;
}

void DeskBusAdaptor::setStandingGoal(uint seconds) {
    if (ActivityRecorder* recorder = ActivityRecorder::current())
        recorder->setGoalMs(qint64(seconds) * 1000);
}

uint DeskBusAdaptor::standingStreak() const {
    const ActivityRecorder* recorder = ActivityRecorder::current();
    return recorder ? uint(recorder->report(1).streakDays) : 0u;
}

double DeskBusAdaptor::standingThreshold() const {
    const ActivityRecorder* recorder = ActivityRecorder::current();
    return recorder ? recorder->thresholdCm() : ActivityReport::kDefaultThresholdCm;
}

bool DeskBusAdaptor::present() const {
    return Platform::get<Presence>().isPresent();
}

ActivityDays DeskBusAdaptor::History(uint days) {
    ActivityDays result;
    if (const ActivityRecorder* recorder = ActivityRecorder::current()) {
        for (const DayTotals& day :
             recorder->report(int(std::min(days, uint(ActivityStore::kKeptDays)))).days)
            result.append(ActivityReport::dayToJson(day).toVariantMap());
    }
    return result;
}

// ---- Change announcements ----

void DeskBusAdaptor::follow(DeskSession* session) {
    for (const QMetaObject::Connection& connection : m_followed)
        disconnect(connection);
    m_followed.clear();
    m_session = session;
    m_movement.reset();
    if (session) {
        const auto refreshing = [this] { refresh(); };
        m_followed = {
            connect(session, &DeskSession::heightShown, this, &DeskBusAdaptor::heightChanged),
            connect(session, &DeskSession::breakTipRequested, this, refreshing),
            connect(&session->link(), &DeskLink::linked, this, refreshing),
            connect(&session->link(), &DeskLink::linkStarting, this, refreshing),
            connect(&session->presetKeys(), &PresetKeys::presetsChanged, this, refreshing),
            connect(&session->goToHeight(), &GoToHeight::started, this, refreshing),
            connect(&session->goToHeight(), &GoToHeight::finished, this, refreshing),
            connect(&session->release(), &DeskRelease::releasedChanged, this, refreshing),
        };
    }
    refresh();
}

// The first height of a session and a change of unit are news, not movement.
void DeskBusAdaptor::heightChanged() {
    m_movement.observe(height());
    refresh();
}

QVariantMap DeskBusAdaptor::snapshot() const {
    return {{QStringLiteral("Connected"), connected()},
            {QStringLiteral("Released"), released()},
            {QStringLiteral("DeskName"), deskName()},
            {QStringLiteral("Height"), height()},
            {QStringLiteral("Unit"), unit()},
            {QStringLiteral("Moving"), moving()},
            {QStringLiteral("Presets"), QVariant::fromValue(presets())},
            {QStringLiteral("Present"), present()}};
}

void DeskBusAdaptor::refresh() {
    m_changes.update(snapshot());
}

void DeskBusAdaptor::announce(const QVariantMap& changed) {
    QDBusMessage signal = QDBusMessage::createSignal(
        name(config::kDeskPath), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"));
    signal << name(config::kDeskInterface) << changed << QStringList();
    m_connection.send(signal);
}

} // namespace ostrel
