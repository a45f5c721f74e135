#pragma once

#include "core/Scheduler.h"

#include <QString>
#include <deque>
#include <functional>

namespace ostrel {

class AppDelegate;
class DemoDesks;
class OMBaseModalWindow;

// One step of the tour: do something, wait until the screen is ready (the machine may be busy),
// give it time to settle, take a picture (unless the step has no name).
struct Step {
    QString name;
    std::function<void()> action;
    Scheduler::Duration settle;
    std::function<bool()> ready = [] { return true; };
};

// Runs the steps one after another on the event loop and quits the application after the last.
class Tour {
public:
    Tour(QString outDir, AppDelegate& delegate, DemoDesks& demo);

    void run(std::deque<Step> steps);

    OMBaseModalWindow& home();
    // Under a Wayland compositor no client may read the screen: the pictures come from grim,
    // of the home window, which the compositor places at the output's top left corner.
    void useGrim() { m_grim = true; }
    DemoDesks& demo() { return m_demo; }

private:
    void next();
    void whenReady(Step step, int pollsLeft);
    // What the display shows over every visible window of the application.
    void shoot(const QString& name) const;
    bool shootWithGrim(const QString& path) const;

    QString m_outDir;
    AppDelegate& m_delegate;
    DemoDesks& m_demo;
    std::deque<Step> m_steps;
    bool m_grim = false;
};

} // namespace ostrel
