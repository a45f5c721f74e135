#include "homeautomation/DeskStatePublisher.h"

#include "homeautomation/MqttClient.h"
#include "session/ActivityRecorder.h"
#include "session/DeskHeightDisplay.h"
#include "session/DeskLink.h"
#include "session/DeskRelease.h"
#include "session/DeskSession.h"
#include "session/LiveSession.h"
#include "store/OMPlistManager.h"

#include <cmath>

namespace ostrel {

namespace {

QByteArray onOff(bool on) {
    return on ? DeskEntities::kOn : DeskEntities::kOff;
}

QString stored(const QVariantMap& record, const char* key) {
    return record.value(QString::fromLatin1(key)).toString();
}

QByteArray minutes(const DayTotals& day, Posture posture) {
    return QByteArray::number(day.of(posture) / 60'000);
}

DeskEntities::Desk deskFrom(const QVariantMap& record) {
    const QString advertised = stored(record, "bluetoothName");
    const QString name = stored(record, "deviceName");
    const QString address = stored(record, "bluetoothMacAddress");
    return {name.isEmpty() ? advertised : name, address.isEmpty() ? advertised : address,
            advertised};
}

} // namespace

DeskStatePublisher::DeskStatePublisher(MqttClient& client, QString availability, QObject* parent)
    : QObject(parent), m_client(client), m_availability(std::move(availability)),
      m_changes(kStateInterval, this,
                [this](const QVariantMap& changed) {
                    for (auto it = changed.begin(); it != changed.end(); ++it)
                        m_client.publish(it.key(), it.value().toByteArray(), true);
                }),
      m_movement(this, [this] { refresh(); }) {
    LiveSession& live = LiveSession::instance();
    connect(&live, &LiveSession::currentChanged, this, &DeskStatePublisher::follow);
    follow(live.current());
}

void DeskStatePublisher::publishAll() {
    reloadDesks();
    m_configsSent.clear();
    m_changes.reset();
    followActivity();
    activityChanged();
}

// The application's record may begin after the bridge: it is looked for at every connection.
void DeskStatePublisher::followActivity() {
    ActivityRecorder* recorder = ActivityRecorder::current();
    if (recorder == m_recorder)
        return;
    disconnect(m_recorderChanged);
    m_recorder = recorder;
    if (recorder)
        m_recorderChanged = connect(recorder, &ActivityRecorder::changed, this,
                                    &DeskStatePublisher::activityChanged);
}

// Each desk's own share of the day: the intervals name the desk they were spent at.
void DeskStatePublisher::activityChanged() {
    m_activity.clear();
    if (m_recorder) {
        const QDate today = m_recorder->today();
        QHash<QString, DayTotals> atDesk;
        for (const ActivityInterval& interval : m_recorder->intervals(today, today))
            atDesk[interval.desk].add(interval.posture, interval.durationMs);
        for (const DeskEntities& desk : desks()) {
            const DayTotals day = atDesk.value(desk.desk().model);
            m_activity.insert(desk.standingTodayTopic(), minutes(day, Posture::Standing));
            m_activity.insert(desk.sittingTodayTopic(), minutes(day, Posture::Sitting));
        }
    }
    refresh();
}

bool DeskStatePublisher::connected() const {
    return m_session && m_session->isConnected();
}

QString DeskStatePublisher::liveDeskId() const {
    if (!connected())
        return {};
    for (const DeskEntities& desk : desks()) {
        if (desk.desk().model == m_session->link().blutoothName())
            return desk.id();
    }
    return {};
}

void DeskStatePublisher::reloadDesks() {
    m_bound.clear();
    for (const QVariant& entry : OMPlistManager::getBindDevice()) {
        const DeskEntities::Desk desk = deskFrom(entry.toMap());
        if (!desk.model.isEmpty())
            m_bound.append(desk);
    }
}

// The paired desks of the current model; the connected one with its own travel limits.
QList<DeskEntities> DeskStatePublisher::desks() const {
    const QString liveName = connected() ? m_session->link().blutoothName() : QString();
    QList<DeskEntities> found;
    for (DeskEntities::Desk desk : m_bound) {
        if (desk.model == liveName) {
            desk.minCm = m_session->minHeight() / 10.0;
            desk.maxCm = m_session->maxHeight() / 10.0;
        }
        found.append(DeskEntities(desk, m_availability));
    }
    return found;
}

void DeskStatePublisher::follow(DeskSession* session) {
    for (const QMetaObject::Connection& connection : m_followed)
        disconnect(connection);
    m_followed.clear();
    m_session = session;
    m_movement.reset();
    reloadDesks();
    if (session) {
        const auto refreshing = [this] { refresh(); };
        const auto reloading = [this] {
            reloadDesks();
            activityChanged();
        };
        m_followed = {
            connect(session, &DeskSession::heightShown, this, &DeskStatePublisher::heightChanged),
            connect(session, &DeskSession::breakTipRequested, this, refreshing),
            connect(&session->link(), &DeskLink::linked, this, reloading),
            connect(&session->link(), &DeskLink::linkStarting, this, reloading),
            connect(&session->goToHeight(), &GoToHeight::started, this, refreshing),
            connect(&session->goToHeight(), &GoToHeight::finished, this, refreshing),
            connect(&session->release(), &DeskRelease::releasedChanged, this, refreshing),
        };
    }
    refresh();
}

double DeskStatePublisher::heightTenths() const {
    if (!connected() || m_session->currentHeight() <= 0)
        return 0.0;
    return DeskHeightDisplay::normalisedHeight(QString::number(m_session->currentHeight()))
        .toDouble();
}

bool DeskStatePublisher::moving() const {
    return connected() && (m_movement.isMoving() || m_session->goToHeight().isMoving());
}

void DeskStatePublisher::heightChanged() {
    m_movement.observe(heightTenths());
    refresh();
}

QVariantMap DeskStatePublisher::states(const QList<DeskEntities>& desks) const {
    const QString live = liveDeskId();
    QVariantMap states = m_activity;
    for (const DeskEntities& desk : desks) {
        const bool isLive = desk.id() == live;
        states.insert(desk.connectedTopic(), onOff(isLive));
        states.insert(desk.movingTopic(), onOff(isLive && moving()));
        // A desk out of reach keeps the last height it was seen at.
        if (const double tenths = heightTenths(); isLive && tenths > 0)
            states.insert(desk.heightTopic(),
                          QByteArray::number(std::round(tenths) / 10.0, 'f', 1));
    }
    return states;
}

void DeskStatePublisher::refresh() {
    if (m_client.state() != MqttClient::State::Connected)
        return;
    const QList<DeskEntities> all = desks();
    publishConfigs(all);
    m_changes.update(states(all));
}

// Configs go out when a desk is paired or its limits become known, not on every height.
void DeskStatePublisher::publishConfigs(const QList<DeskEntities>& desks) {
    QByteArray fingerprint;
    for (const DeskEntities& entities : desks) {
        const DeskEntities::Desk& desk = entities.desk();
        fingerprint += (QStringList{desk.name, desk.address, desk.model,
                                    QString::number(desk.minCm), QString::number(desk.maxCm)}
                            .join(QLatin1Char('\n')) +
                        QLatin1Char('\n'))
                           .toUtf8();
    }
    if (fingerprint == m_configsSent)
        return;
    for (const DeskEntities& entities : desks) {
        for (const DeskEntities::Message& config : entities.discoveryConfigs())
            m_client.publish(config.topic, config.payload, true);
    }
    m_configsSent = fingerprint;
}

} // namespace ostrel
