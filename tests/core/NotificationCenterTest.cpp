#include "core/NotificationCenter.h"

#include <QObject>
#include <gtest/gtest.h>
#include <memory>

using ostrel::NotificationCenter;

TEST(NotificationCenter, DeadOrRemovedObserversAreNotCalledEvenMidDelivery) {
    NotificationCenter center;
    auto doomed = std::make_unique<QObject>();
    QObject keeper;
    int doomedCalls = 0;
    int keeperCalls = 0;
    // The first observer removes the second one's registration during the same post.
    center.addObserver(&keeper, "n", [&](const QVariant&) {
        ++keeperCalls;
        center.removeObserver(doomed.get());
    });
    center.addObserver(doomed.get(), "n", [&](const QVariant&) { ++doomedCalls; });
    center.post("n");
    EXPECT_EQ(keeperCalls, 1);
    EXPECT_EQ(doomedCalls, 0);

    auto gone = std::make_unique<QObject>();
    center.addObserver(gone.get(), "n", [&](const QVariant&) { ++doomedCalls; });
    gone.reset();
    center.post("n");
    EXPECT_EQ(doomedCalls, 0);
    EXPECT_EQ(keeperCalls, 2);
}
