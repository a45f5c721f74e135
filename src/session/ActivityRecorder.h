#pragma once

#include "core/Scheduler.h"
#include "store/ActivityRecord.h"
#include "store/ActivityReport.h"

#include <QObject>
#include <QString>
#include <optional>

namespace ostrel {

class ActivityStore;

// Turns the live height, the link and the user's presence into intervals of sitting, standing,
// away and unknown, and keeps them in the store.
//
// A change counts from the moment it happened, once it has lasted kSettle; a shorter stretch
// (passing the threshold during a move, a link that drops for a moment) belongs to the interval
// around it. Lengths come from the steady clock, days from the wall clock, so a clock that jumps
// neither doubles nor takes time. An interval never spans local midnight.
//
// Writes are one transaction per change and one a minute, never on a height report: a process
// that is killed loses at most the last minute.
class ActivityRecorder : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kSettle{30'000};
    static constexpr Scheduler::Duration kSaveInterval{60'000};
    // Timers run late; a wall clock off by more than this since the last tick has jumped.
    static constexpr Scheduler::Duration kWallTolerance{5'000};
    static constexpr qint64 kGoalStepMs = 15 * 60 * 1000;
    static constexpr qint64 kLargestGoalMs = 16 * 60 * 60 * 1000;

    // `store` is not owned and must outlive the recorder.
    explicit ActivityRecorder(ActivityStore& store, QObject* parent = nullptr);
    ~ActivityRecorder() override;

    // The application's recorder, if one runs.
    static ActivityRecorder* current();

    // ---- What happens ----
    // The desk now linked ("" for none).
    void setDesk(const QString& desk);
    void setHeight(double tenthsCm);
    void setPresent(bool present);
    // Sit and Stand presets in whole centimetres, 0 when not set; they place the automatic
    // threshold.
    void setPresets(int sitCm, int standCm);
    // Saves the open interval's length and closes it (the application quits).
    void finish();

    // ---- Settings ----
    // 0 means automatic: halfway between the Sit and Stand presets, else the default.
    double thresholdSetting() const { return m_thresholdSetting; }
    void setThresholdSetting(double cm);
    double thresholdCm() const;
    qint64 goalMs() const { return m_goalMs; }
    // Rounded to 15 minutes, between 15 minutes and 16 hours.
    void setGoalMs(qint64 ms);

    // ---- Figures, the open interval included up to now ----
    ActivityReport report(int days) const;
    QList<ActivityInterval> intervals(const QDate& from, const QDate& to) const;
    QDate today() const;
    Posture posture() const { return m_current.posture; }

signals:
    // An interval began or ended, a minute passed or a setting changed.
    void changed();

private:
    struct State {
        Posture posture = Posture::Unknown;
        QString desk;
        bool operator==(const State&) const = default;
    };

    State observed() const;
    void reconsider();
    void settle();
    void openInterval(const State& state, Scheduler::Duration start, bool transition,
                      const QDate& day);
    void saveMinute();
    void splitDay(bool wallJumped);
    QDateTime wallAt(Scheduler::Duration steady) const;
    qint64 openMs() const;
    void rememberThreshold();

    ActivityStore& m_store;
    // Inputs.
    QString m_desk;
    std::optional<double> m_height;
    bool m_present = true;
    int m_sitCm = 0;
    int m_standCm = 0;
    double m_thresholdSetting = 0.0;
    qint64 m_goalMs = ActivityReport::kDefaultGoalMs;
    // The open interval.
    State m_current;
    Scheduler::Duration m_currentStart{};
    QDate m_currentDay;
    qint64 m_currentId = 0;
    qint64 m_savedMs = 0;
    // A change waiting to last kSettle.
    std::optional<State> m_candidate;
    Scheduler::Duration m_candidateSince{};
    TimerHandle m_settle;
    TimerHandle m_minute;
    // The last minute's tick, on both clocks: a wall clock that moved unlike the steady one
    // since then has jumped.
    Scheduler::Duration m_tick{};
    QDateTime m_tickWall;
};

} // namespace ostrel
