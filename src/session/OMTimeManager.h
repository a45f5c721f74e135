#pragma once

#include "core/TimerHandle.h"

#include <QObject>
#include <array>

namespace ostrel {

// The one-second counter behind the sit-stand countdown. It only counts and announces; how long
// a round lasts for each `type` is decided by the control screen.
class OMTimeManager : public QObject {
    Q_OBJECT
public:
    static constexpr std::chrono::milliseconds kTick{1000};
    // Interval kinds 0-2 are fixed lengths in minutes; kind 3 counts `total` minutes.
    static constexpr std::array<int, 3> kFixedMinutes{45, 60, 120};
    static constexpr int kCustomType = 3;
    static bool isFixedType(int type) { return type >= 0 && type < kCustomType; }

    static OMTimeManager& sharedInstance();

    int total() const { return m_total; }
    void setTotal(int minutes) { m_total = minutes; }
    int time() const { return m_time; }
    void setTime(int seconds) { m_time = seconds; }
    int type() const { return m_type; }
    void setType(int type) { m_type = type; }
    bool isRunning() const { return !m_timer.isNull(); }
    // While paused the ticks still come but count nothing: the round neither ends nor moves.
    bool isPaused() const { return m_paused; }
    void setPaused(bool paused) { m_paused = paused; }

    // Starts ticking unless already running; never resets `time`.
    void start();
    // Stops ticking; announced even when nothing ran.
    void stop();
    void timerStartRunning();

private:
    int m_total = 0;
    int m_time = 0;
    int m_type = 0;
    bool m_paused = false;
    TimerHandle m_timer;
};

} // namespace ostrel
