#include "session/ActivityRecorder.h"

#include "store/ActivityStore.h"

#include <QPointer>
#include <algorithm>
#include <cstdlib>

namespace ostrel {

namespace {

QPointer<ActivityRecorder> g_current;

bool isPosture(Posture posture) {
    return posture == Posture::Sitting || posture == Posture::Standing;
}

Scheduler& clock() {
    return Scheduler::instance();
}

} // namespace

ActivityRecorder::ActivityRecorder(ActivityStore& store, QObject* parent)
    : QObject(parent), m_store(store) {
    m_thresholdSetting =
        m_store.preference(QLatin1String(ActivityReport::kThresholdKey), 0.0).toDouble();
    m_goalMs = m_store
                   .preference(QLatin1String(ActivityReport::kGoalKey),
                               ActivityReport::kDefaultGoalMs / 1000)
                   .toLongLong() *
               1000;
    m_store.compact(today());
    openInterval(m_current, clock().now(), false, today());
    m_tick = clock().now();
    m_tickWall = clock().wallNow();
    m_minute = clock().every(kSaveInterval, this, [this] { saveMinute(); });
    g_current = this;
}

ActivityRecorder::~ActivityRecorder() {
    finish();
}

ActivityRecorder* ActivityRecorder::current() {
    return g_current;
}

QDate ActivityRecorder::today() const {
    return clock().wallNow().toLocalTime().date();
}

// ---- What happens ----

void ActivityRecorder::setDesk(const QString& desk) {
    m_desk = desk;
    if (desk.isEmpty())
        m_height.reset(); // the next desk's height is not this one's
    reconsider();
}

void ActivityRecorder::setHeight(double tenthsCm) {
    m_height = tenthsCm;
    reconsider();
}

void ActivityRecorder::setPresent(bool present) {
    m_present = present;
    reconsider();
}

void ActivityRecorder::setPresets(int sitCm, int standCm) {
    m_sitCm = sitCm;
    m_standCm = standCm;
    rememberThreshold();
    reconsider();
}

void ActivityRecorder::finish() {
    m_settle.cancel();
    m_minute.cancel();
    if (m_currentId != 0)
        m_store.saveDuration(m_currentId, openMs(), true);
    m_currentId = 0;
}

// ---- Settings ----

void ActivityRecorder::setThresholdSetting(double cm) {
    m_thresholdSetting = std::max(0.0, cm);
    m_store.setPreference(QLatin1String(ActivityReport::kThresholdKey), m_thresholdSetting);
    rememberThreshold();
    reconsider();
    emit changed();
}

double ActivityRecorder::thresholdCm() const {
    if (m_thresholdSetting > 0)
        return m_thresholdSetting;
    if (m_sitCm > 0 && m_standCm > 0)
        return (m_sitCm + m_standCm) / 2.0;
    return ActivityReport::kDefaultThresholdCm;
}

void ActivityRecorder::setGoalMs(qint64 ms) {
    const qint64 steps = (ms + kGoalStepMs / 2) / kGoalStepMs;
    m_goalMs = std::clamp(steps * kGoalStepMs, kGoalStepMs, kLargestGoalMs);
    m_store.setPreference(QLatin1String(ActivityReport::kGoalKey), m_goalMs / 1000);
    emit changed();
}

// The command line reads the threshold from the file when the application is not running.
void ActivityRecorder::rememberThreshold() {
    const QString key = QLatin1String(ActivityReport::kEffectiveThresholdKey);
    if (m_store.preference(key).toDouble() != thresholdCm())
        m_store.setPreference(key, thresholdCm());
}

// ---- Intervals ----

ActivityRecorder::State ActivityRecorder::observed() const {
    if (!m_present)
        return {Posture::Away, m_desk};
    if (m_desk.isEmpty() || !m_height)
        return {Posture::Unknown, {}};
    const bool standing = *m_height >= thresholdCm() * 10.0;
    return {standing ? Posture::Standing : Posture::Sitting, m_desk};
}

void ActivityRecorder::reconsider() {
    const State now = observed();
    if (now == m_current) {
        m_candidate.reset();
        m_settle.cancel();
        return;
    }
    if (m_candidate == now)
        return;
    m_candidate = now;
    m_candidateSince = clock().now();
    m_settle = clock().after(kSettle, this, [this] { settle(); });
}

void ActivityRecorder::settle() {
    if (!m_candidate)
        return;
    const State next = *m_candidate;
    m_candidate.reset();
    // A midnight split while the change waited may have moved the open interval's start.
    const Scheduler::Duration start = std::max(m_candidateSince, m_currentStart);
    const bool transition = isPosture(m_current.posture) && isPosture(next.posture) &&
                            m_current.posture != next.posture;
    openInterval(next, start, transition, wallAt(start).toLocalTime().date());
}

void ActivityRecorder::openInterval(const State& state, Scheduler::Duration start, bool transition,
                                    const QDate& day) {
    const qint64 closingMs = (start - m_currentStart).count();
    const ActivityInterval next{0, day,        state.posture, wallAt(start).toUTC(),
                                0, state.desk, transition,    true};
    m_currentId = m_store.switchInterval(m_currentId, closingMs, next);
    m_current = state;
    m_currentStart = start;
    m_currentDay = day;
    m_savedMs = 0;
    emit changed();
}

void ActivityRecorder::saveMinute() {
    const QDateTime wall = clock().wallNow();
    const qint64 drift = m_tickWall.msecsTo(wall) - (clock().now() - m_tick).count();
    const bool wallJumped = std::abs(drift) > kWallTolerance.count();
    if (today() != m_currentDay)
        splitDay(wallJumped);
    else if (m_currentId != 0 && m_store.saveDuration(m_currentId, openMs(), false))
        m_savedMs = openMs();
    m_tick = clock().now();
    m_tickWall = wall;
    emit changed();
}

// The day changed since the last tick. Normally at midnight, which the wall clock places on the
// steady one; after a jump of the wall clock, at the last tick, the last moment known to be on
// the old day. Never before the open interval began.
void ActivityRecorder::splitDay(bool wallJumped) {
    const QDateTime wall = clock().wallNow().toLocalTime();
    const Scheduler::Duration now = clock().now();
    const Scheduler::Duration earliest = std::max(m_currentStart, m_tick);
    Scheduler::Duration split = earliest;
    if (!wallJumped) {
        const qint64 sinceMidnight = QDateTime(wall.date(), QTime(0, 0)).msecsTo(wall);
        split = std::clamp(now - Scheduler::Duration(sinceMidnight), earliest, now);
    }
    openInterval(m_current, split, false, wall.date());
}

QDateTime ActivityRecorder::wallAt(Scheduler::Duration steady) const {
    return clock().wallNow().addMSecs(-(clock().now() - steady).count());
}

qint64 ActivityRecorder::openMs() const {
    return (clock().now() - m_currentStart).count();
}

// ---- Figures ----

ActivityReport ActivityRecorder::report(int days) const {
    const QDate last = today();
    DayList year = m_store.days(last.addDays(1 - ActivityStore::kKeptDays), last);
    const qint64 index = year.first().date.daysTo(m_currentDay);
    if (index >= 0 && index < year.size())
        year[index].add(m_current.posture, openMs() - m_savedMs);
    return ActivityReport::build(year, days, m_goalMs, thresholdCm());
}

QList<ActivityInterval> ActivityRecorder::intervals(const QDate& from, const QDate& to) const {
    QList<ActivityInterval> list = m_store.intervals(from, to);
    const auto open = std::find_if(list.begin(), list.end(), [this](const ActivityInterval& i) {
        return m_currentId != 0 && i.id == m_currentId;
    });
    if (open != list.end()) {
        open->durationMs = openMs();
    } else if (m_currentDay >= from && m_currentDay <= to) {
        list.append({0, m_currentDay, m_current.posture, wallAt(m_currentStart).toUTC(), openMs(),
                     m_current.desk, false, true});
    }
    return list;
}

} // namespace ostrel
