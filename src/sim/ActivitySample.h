#pragma once

#include <QDateTime>

namespace ostrel {

class ActivityStore;

// A made-up record of working days at a sit-stand desk, for the demo pictures and the
// benchmark: sitting and standing stretches between 9:00 and 17:30 with a lunch away, weekends
// without a desk. The same days always get the same intervals.
class ActivitySample {
public:
    // Writes `days` days ending with the day of `until`, that one only up to `until`.
    static void fill(ActivityStore& store, const QDateTime& until, int days);
};

} // namespace ostrel
