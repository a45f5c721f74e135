#include "DQToolHelper.h"

#include "core/Scheduler.h"

#include <QLocale>
#include <QStringList>

namespace ostrel {

namespace {

constexpr qint64 kSecondsPerDay = 24 * 60 * 60;

} // namespace

QString DQToolHelper::getDateStrWithDate(const QDateTime& date, const QString& format) {
    return QLocale().toString(date, format);
}

QDateTime DQToolHelper::getDateWithDateStr(const QString& text, const QString& format) {
    return QLocale().toDateTime(text, format);
}

QString DQToolHelper::getTransDateWithDate(const QString& text, const QString& format,
                                           const QString& transFormat) {
    return getDateStrWithDate(getDateWithDateStr(text, format), transFormat);
}

QString DQToolHelper::getDateWithTime(const QVariant& seconds, const QString& format) {
    return getDateStrWithDate(QDateTime::fromSecsSinceEpoch(seconds.toLongLong()), format);
}

QString DQToolHelper::getTimeWithDate(const QDateTime& date) {
    return QString::asprintf("%0.f", static_cast<double>(date.toMSecsSinceEpoch()) / 1000.0);
}

QString DQToolHelper::getDateWithEndDate(const QString& text) {
    const QStringList parts = text.split(QLatin1Char(' '));
    const QString datePart = parts.value(0);
    const QString timePart = parts.value(1);
    const QDate date = QDate::fromString(datePart, QStringLiteral("yyyy/MM/dd"));
    if (!date.isValid())
        return datePart;
    const QDateTime midnight(date, QTime(0, 0));
    const qint64 days = midnight.secsTo(Scheduler::instance().wallNow()) / kSecondsPerDay;
    if (days == 0)
        return timePart.size() >= 6 ? timePart.left(5) : timePart;
    if (days == 1)
        return QStringLiteral("昨天");
    return datePart;
}

QString DQToolHelper::getWeekdayWithDate(const QDateTime& date) {
    static const QStringList names = {QString(),
                                      QStringLiteral("星期日"),
                                      QStringLiteral("星期一"),
                                      QStringLiteral("星期二"),
                                      QStringLiteral("星期三"),
                                      QStringLiteral("星期四"),
                                      QStringLiteral("星期五"),
                                      QStringLiteral("星期六")};
    // Sunday first, counted from 1.
    return names.value(date.date().dayOfWeek() % 7 + 1);
}

} // namespace ostrel
