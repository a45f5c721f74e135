#pragma once

#include "store/ActivityRecord.h"

#include <QByteArray>

namespace ostrel {

// The record as comma-separated values for spreadsheets: one row per day, or one per interval.
// Minutes are whole; times are local, ISO 8601.
class ActivityCsv {
public:
    static QByteArray days(const DayList& days);
    static QByteArray intervals(const QList<ActivityInterval>& intervals);
    static const char* postureName(Posture posture);
};

} // namespace ostrel
