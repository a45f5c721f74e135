#include "core/HeightMovement.h"

#include "core/ManualScheduler.h"

#include <QObject>
#include <gtest/gtest.h>

using namespace std::chrono_literals;
using ostrel::HeightMovement;

TEST(HeightMovement, MovesFromAChangeUntilTheHeightHasBeenStillLongEnough) {
    ostrel::ManualScheduler scheduler;
    ostrel::Scheduler::setInstance(&scheduler);
    QObject context;
    int stops = 0;
    HeightMovement movement(&context, [&] { ++stops; });

    movement.observe(720);
    EXPECT_FALSE(movement.isMoving()) << "the first height is news";
    movement.observe(725);
    scheduler.advance(HeightMovement::kStillAfter - 1ms);
    movement.observe(725); // the same height again does not restart the wait
    EXPECT_TRUE(movement.isMoving());
    scheduler.advance(1ms);
    EXPECT_FALSE(movement.isMoving());
    EXPECT_EQ(stops, 1);

    movement.observe(730);
    movement.reset();
    movement.observe(740);
    scheduler.advance(1s);
    EXPECT_FALSE(movement.isMoving());
    EXPECT_EQ(stops, 1) << "a reset ends the movement silently";
    ostrel::Scheduler::setInstance(nullptr);
}
