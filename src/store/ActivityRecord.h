#pragma once

#include <QDate>
#include <QDateTime>
#include <QList>
#include <QString>
#include <array>

namespace ostrel {

// What the user was doing during a stretch of time. Stored by number: keep the values.
enum class Posture : int { Sitting = 0, Standing = 1, Away = 2, Unknown = 3 };

inline constexpr std::array kPostures{Posture::Sitting, Posture::Standing, Posture::Away,
                                      Posture::Unknown};

// One stretch in one posture, within one local day. Its length is measured on the steady clock;
// its start is only the wall clock's opinion, kept for the timeline and the export.
struct ActivityInterval {
    qint64 id = 0;
    QDate day;
    Posture posture = Posture::Unknown;
    QDateTime start; // UTC
    qint64 durationMs = 0;
    QString desk;
    // Began by crossing from sitting to standing or back.
    bool transition = false;
    bool open = false;
};

// The totals of one local day, in milliseconds.
struct DayTotals {
    QDate date;
    std::array<qint64, kPostures.size()> ms{};
    int transitions = 0;

    qint64 of(Posture posture) const { return ms[std::size_t(posture)]; }
    void add(Posture posture, qint64 durationMs) { ms[std::size_t(posture)] += durationMs; }
    // A day on which a desk reported a height.
    bool hadDesk() const { return of(Posture::Sitting) + of(Posture::Standing) > 0; }
};

using DayList = QList<DayTotals>;

} // namespace ostrel
