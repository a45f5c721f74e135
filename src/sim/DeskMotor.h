#pragma once

#include <chrono>

namespace ostrel {

// The desk's lifting columns: a height kept between two limits and a drive that either runs in
// a direction until told otherwise (a held key) or runs to a target by itself and stops there
// (one touch). Motion is integrated over Scheduler time whenever the motor is asked anything,
// so the height is exact however rarely the controller looks.
class DeskMotor {
public:
    // Heights in tenths of a centimetre.
    DeskMotor(double speedCmPerSecond, int minHeight, int maxHeight, int startHeight);

    void update();
    void run(int direction); // +1 up, -1 down, 0 stop; stops at the limit
    void runTo(int target);  // clamped to the limits
    void stop();

    double height() const { return m_height; }
    int minHeight() const { return m_minHeight; }
    int maxHeight() const { return m_maxHeight; }
    bool isMoving() const { return m_direction != 0; }
    bool isAutomatic() const { return isMoving() && m_hasTarget; }
    int direction() const { return m_direction; }

private:
    void halt();

    double m_tenthsPerMs;
    int m_minHeight;
    int m_maxHeight;
    double m_height;
    int m_direction = 0;
    bool m_hasTarget = false;
    double m_target = 0;
    std::chrono::milliseconds m_updatedAt{};
};

} // namespace ostrel
