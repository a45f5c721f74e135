#include "store/ActivityCsv.h"

namespace ostrel {

namespace {

QByteArray minutes(qint64 ms) {
    return QByteArray::number(ms / 60000);
}

// Quotes a field that could break the row.
QByteArray field(const QString& text) {
    QByteArray bytes = text.toUtf8();
    if (!bytes.contains(',') && !bytes.contains('"') && !bytes.contains('\n'))
        return bytes;
    return '"' + bytes.replace('"', "\"\"") + '"';
}

} // namespace

const char* ActivityCsv::postureName(Posture posture) {
    static constexpr const char* kNames[] = {"sitting", "standing", "away", "unknown"};
    return kNames[int(posture)];
}

QByteArray ActivityCsv::days(const DayList& days) {
    QByteArray csv = "date,sitting_min,standing_min,away_min,transitions\n";
    for (const DayTotals& day : days)
        csv += day.date.toString(Qt::ISODate).toLatin1() + ',' + minutes(day.of(Posture::Sitting)) +
               ',' + minutes(day.of(Posture::Standing)) + ',' + minutes(day.of(Posture::Away)) +
               ',' + QByteArray::number(day.transitions) + '\n';
    return csv;
}

QByteArray ActivityCsv::intervals(const QList<ActivityInterval>& intervals) {
    QByteArray csv = "date,start,end,state,minutes,desk\n";
    for (const ActivityInterval& interval : intervals) {
        const QDateTime start = interval.start.toLocalTime();
        const QDateTime end = start.addMSecs(interval.durationMs);
        csv += interval.day.toString(Qt::ISODate).toLatin1() + ',' +
               start.toString(Qt::ISODate).toLatin1() + ',' + end.toString(Qt::ISODate).toLatin1() +
               ',' + postureName(interval.posture) + ',' + minutes(interval.durationMs) + ',' +
               field(interval.desk) + '\n';
    }
    return csv;
}

} // namespace ostrel
