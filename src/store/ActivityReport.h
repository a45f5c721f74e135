#pragma once

#include "store/ActivityRecord.h"

#include <QJsonObject>
#include <QString>

namespace ostrel {

class ActivityStore;

// The figures a user asks about: today, the last days, the goal and the streak. Built from the
// store alone (the command line without the application) or from the live record.
struct ActivityReport {
    static constexpr qint64 kDefaultGoalMs = 2 * 60 * 60 * 1000;
    static constexpr double kDefaultThresholdCm = 95.0;
    // Preference keys in the store.
    static constexpr char kGoalKey[] = "standing_goal_s";
    static constexpr char kThresholdKey[] = "threshold_cm"; // 0: automatic
    static constexpr char kEffectiveThresholdKey[] = "effective_threshold_cm";

    DayList days; // oldest first, today last
    qint64 goalMs = kDefaultGoalMs;
    int streakDays = 0;
    double thresholdCm = kDefaultThresholdCm;

    const DayTotals& today() const { return days.last(); }

    // Consecutive days that met the goal, counted back from today. Today counts once met and
    // breaks nothing before the day is over; days without a desk neither count nor break.
    static int streak(const DayList& oldestFirst, qint64 goalMs);
    // The last `count` days of `year` (oldest first, ending today) with the streak over all of it.
    static ActivityReport build(const DayList& year, int count, qint64 goalMs, double thresholdCm);
    // The last `count` days up to `today` from the file alone, read-only.
    static ActivityReport fromStore(const ActivityStore& store, const QDate& today, int count);

    // Hours and minutes, "1:05".
    static QString clockText(qint64 ms);

    // One day as the command line and the bus give it: date, seconds, transitions.
    static QJsonObject dayToJson(const DayTotals& day);
    static DayTotals dayFromJson(const QJsonObject& json);

    QJsonObject toJson() const;
    QString toText() const;
};

} // namespace ostrel
