#pragma once

#include <QDateTime>
#include <QString>
#include <QVariant>

namespace ostrel {

// Date formatting used beside the store (the text measuring is DQTextMeasure's, in widgets). Date
// patterns are Qt date-time formats in the default locale and time zone; "yyyy-MM-dd HH:mm" and
// "yyyy-MM-dd HH:mm:ss" are the ones stored in records.
class DQToolHelper {
public:
    static QString getDateStrWithDate(const QDateTime& date, const QString& format);
    // An invalid QDateTime when the text does not parse.
    static QDateTime getDateWithDateStr(const QString& text, const QString& format);
    static QString getTransDateWithDate(const QString& text, const QString& format,
                                        const QString& transFormat);
    // `seconds` since 1970, as text or number.
    static QString getDateWithTime(const QVariant& seconds, const QString& format);
    static QString getTimeWithDate(const QDateTime& date);
    // "yyyy/MM/dd HH:mm..." as a chat-style age against the scheduler's wall clock: the time
    // today, "昨天" yesterday, the date part before that.
    static QString getDateWithEndDate(const QString& text);
    static QString getWeekdayWithDate(const QDateTime& date);
};

} // namespace ostrel
