#include "sim/ActivitySample.h"

#include "store/ActivityStore.h"

#include <QRandomGenerator>

namespace ostrel {

namespace {

const QTime kDayStart(9, 0);
const QTime kLunch(12, 30);
const QTime kDayEnd(17, 30);
constexpr int kLunchMinutes = 45;

struct Writer {
    ActivityStore& store;
    qint64 open = 0;
    Posture last = Posture::Unknown;

    void add(const QDate& day, const QDateTime& start, Posture posture, qint64 ms) {
        const bool transition = (last == Posture::Sitting && posture == Posture::Standing) ||
                                (last == Posture::Standing && posture == Posture::Sitting);
        open = store.switchInterval(
            open, 0,
            {0, day, posture, start.toUTC(), 0, QStringLiteral("QWJ-1001"), transition, true});
        store.saveDuration(open, ms, true);
        open = 0;
        last = posture;
    }
};

} // namespace

void ActivitySample::fill(ActivityStore& store, const QDateTime& until, int days) {
    Writer writer{store};
    const QDate lastDay = until.date();
    for (QDate day = lastDay.addDays(1 - days); day <= lastDay; day = day.addDays(1)) {
        if (day.dayOfWeek() > 5)
            continue;
        QRandomGenerator random(quint32(day.toJulianDay()));
        QDateTime at(day, kDayStart);
        const QDateTime end = std::min(QDateTime(day, kDayEnd), until);
        bool lunched = false;
        bool standing = false;
        while (at < end) {
            Posture posture = standing ? Posture::Standing : Posture::Sitting;
            int minutes = standing ? random.bounded(12, 35) : random.bounded(30, 70);
            if (!lunched && at.time() >= kLunch) {
                posture = Posture::Away;
                minutes = kLunchMinutes;
                lunched = true;
            } else {
                standing = !standing;
            }
            const qint64 ms = std::min(qint64(minutes) * 60000, at.msecsTo(end));
            writer.add(day, at, posture, ms);
            at = at.addMSecs(ms);
        }
    }
}

} // namespace ostrel
