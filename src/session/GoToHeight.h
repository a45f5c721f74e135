#pragma once

#include "core/Scheduler.h"
#include "session/HeldKeyOwner.h"

#include <QObject>
#include <QString>
#include <optional>

namespace ostrel {

// A move to a chosen height without a finger on a button. It asks the desk to go there by
// itself (the target-height command, answered to every poll); a desk that does not react within
// a second is driven by holding Up or Down instead, released early enough that it coasts to a
// stop at the target. No finger means no release, so every move has its own ends: arrival, a
// stall, Stop, a key of the user's, the session's end and the travel-time limit.
//
// Heights arrive as the desk reports them: tenths of its display unit (reports below 580 count
// tenths of an inch). Targets and limits are tenths of a centimetre.
class GoToHeight : public QObject {
    Q_OBJECT
public:
    // How far from the target a move may stop, tenths of a centimetre.
    static constexpr double kToleranceTenthsCm = 5.0;
    // A desk that has not moved this long after the command does not know it.
    static constexpr Scheduler::Duration kReactionLimit{1000};
    static constexpr Scheduler::Duration kStallLimit{1000};
    // Released keys stop the desk within a poll or two; this long unchanged means it stood still.
    static constexpr Scheduler::Duration kSettleTime{500};
    // The full travel at the slowest speed such desks move, plus a margin, ends any move.
    static constexpr double kSlowestTenthsCmPerSecond = 25.0;
    static constexpr Scheduler::Duration kTravelMargin{2000};

    enum class Refusal { None, HeightUnknown, OutOfRange };
    enum class Ending { Arrived, Stalled, Stopped, TookOver, Aborted, TimedOut };
    enum class Path { Target, Keys };
    struct Limits {
        int minHeight; // tenths of a centimetre
        int maxHeight;
    };

    explicit GoToHeight(QObject* parent = nullptr);
    ~GoToHeight() override;

    bool isMoving() const { return m_phase != Phase::Idle; }
    Path path() const { return m_phase == Phase::Target ? Path::Target : Path::Keys; }
    // The distance the desk coasted after its key was last released, in report units.
    std::optional<double> learnedOvershoot() const { return m_overshoot; }

    // Starts a move from the last reported height; a running move is stopped first.
    Refusal start(int targetTenthsCm, int reported, Limits limits);
    static QString refusalText(Refusal refusal, Limits limits, bool inches);

    // Every height report of the desk while the session runs.
    void heightReported(int reported);
    // The desk stops now.
    void stop();
    // A fault on the desk ends the move.
    void abort();

signals:
    void started();
    void finished(ostrel::GoToHeight::Ending ending);

private:
    enum class Phase { Idle, Target, Keys, Coasting };

    static Ending endingFor(HeldKeyOwner::Ending why);
    // Stops the desk, then finishes.
    void end(Ending ending);
    void finish(Ending ending);
    void armWatchdog(Scheduler::Duration delay);
    void watchdogFired();
    void driveWithKeys();
    void noteChange(int reported);
    void checkKeys(int reported);
    double estimatedHeight() const;
    double crossingInto(int reported) const;
    double overshoot() const;
    std::optional<double> speed() const;
    bool within(double reported, double slack = 0) const;

    Phase m_phase = Phase::Idle;
    HeldKeyOwner::Claim m_claim;
    int m_target = 0;    // report units
    double m_scale = 1;  // tenths of a centimetre per report unit
    int m_direction = 0; // +1 up, -1 down
    int m_last = 0;
    bool m_moved = false;
    Scheduler::Duration m_lastReportAt{};
    Scheduler::Duration m_reportInterval{};
    struct Change {
        Scheduler::Duration at;
        int reported;
    };
    std::optional<Change> m_firstChange;
    std::optional<Change> m_lastChange;
    double m_releasedAt = 0;
    std::optional<double> m_overshoot;
    TimerHandle m_watchdog;
    TimerHandle m_deadline;
};

} // namespace ostrel
