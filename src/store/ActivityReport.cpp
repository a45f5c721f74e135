#include "store/ActivityReport.h"

#include "store/ActivityStore.h"

#include <QJsonArray>
#include <algorithm>

namespace ostrel {

namespace {

constexpr std::pair<Posture, const char*> kJsonFields[] = {
    {Posture::Sitting, "sitting_s"}, {Posture::Standing, "standing_s"}, {Posture::Away, "away_s"}};

} // namespace

QJsonObject ActivityReport::dayToJson(const DayTotals& day) {
    QJsonObject json{{QStringLiteral("date"), day.date.toString(Qt::ISODate)},
                     {QStringLiteral("transitions"), day.transitions}};
    for (const auto& [posture, key] : kJsonFields)
        json.insert(QLatin1String(key), day.of(posture) / 1000);
    return json;
}

DayTotals ActivityReport::dayFromJson(const QJsonObject& json) {
    DayTotals day{QDate::fromString(json.value(QStringLiteral("date")).toString(), Qt::ISODate),
                  {},
                  json.value(QStringLiteral("transitions")).toInt()};
    for (const auto& [posture, key] : kJsonFields)
        day.add(posture, qint64(json.value(QLatin1String(key)).toDouble()) * 1000);
    return day;
}

QString ActivityReport::clockText(qint64 ms) {
    const qint64 minutes = ms / 60000;
    return QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0'));
}

int ActivityReport::streak(const DayList& oldestFirst, qint64 goalMs) {
    int count = 0;
    for (qsizetype i = oldestFirst.size() - 1; i >= 0; --i) {
        const DayTotals& day = oldestFirst.at(i);
        const bool met = day.of(Posture::Standing) >= goalMs;
        const bool isToday = i == oldestFirst.size() - 1;
        if (met)
            ++count;
        else if (!isToday && day.hadDesk())
            break;
    }
    return count;
}

ActivityReport ActivityReport::build(const DayList& year, int count, qint64 goalMs,
                                     double thresholdCm) {
    ActivityReport report;
    report.goalMs = goalMs;
    report.thresholdCm = thresholdCm;
    report.streakDays = streak(year, goalMs);
    report.days = year.mid(year.size() - std::clamp<qsizetype>(count, 1, year.size()));
    return report;
}

ActivityReport ActivityReport::fromStore(const ActivityStore& store, const QDate& today,
                                         int count) {
    const qint64 goalMs =
        store.preference(QLatin1String(kGoalKey), kDefaultGoalMs / 1000).toLongLong() * 1000;
    const double thresholdCm =
        store.preference(QLatin1String(kEffectiveThresholdKey), kDefaultThresholdCm).toDouble();
    return build(store.days(today.addDays(1 - ActivityStore::kKeptDays), today), count, goalMs,
                 thresholdCm);
}

QJsonObject ActivityReport::toJson() const {
    QJsonArray list;
    for (const DayTotals& day : days)
        list.append(dayToJson(day));
    return {{QStringLiteral("today"), dayToJson(today())},
            {QStringLiteral("goal_s"), goalMs / 1000},
            {QStringLiteral("streak_days"), streakDays},
            {QStringLiteral("threshold_cm"), thresholdCm},
            {QStringLiteral("days"), list}};
}

QString ActivityReport::toText() const {
    QString text =
        QStringLiteral("Today: standing %1 of %2, sitting %3, away %4, %5 transitions\n")
            .arg(clockText(today().of(Posture::Standing)), clockText(goalMs),
                 clockText(today().of(Posture::Sitting)), clockText(today().of(Posture::Away)))
            .arg(today().transitions);
    text += QStringLiteral("Streak: %1 days; standing from %2 cm\n")
                .arg(streakDays)
                .arg(thresholdCm, 0, 'f', 1);
    text += QStringLiteral("date        sitting  standing  away  transitions\n");
    for (const DayTotals& day : days)
        text += QStringLiteral("%1  %2  %3  %4  %5\n")
                    .arg(day.date.toString(Qt::ISODate))
                    .arg(clockText(day.of(Posture::Sitting)), 7)
                    .arg(clockText(day.of(Posture::Standing)), 8)
                    .arg(clockText(day.of(Posture::Away)), 4)
                    .arg(day.transitions, 11);
    return text;
}

} // namespace ostrel
