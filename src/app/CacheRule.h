#pragma once

#include <QString>

namespace ostrel {

// The automatic cache cleaning checked at launch, on the application's own cache folder only.
class CacheRule {
public:
    static constexpr double kCleanAboveMiB = 200.0;

    // Every entry below `folder` (folders too, links as links), in mebibytes.
    static double actionCalculateCache(const QString& folder);
    // Removes every entry below `folder`; the folder itself stays.
    static void actionClearCache(const QString& folder);
    // Cleans when `enabled` and the folder holds strictly more than 200 MiB; measures only when
    // enabled. Returns whether it cleaned.
    static bool applyAutomaticClean(bool enabled, const QString& folder);
};

} // namespace ostrel
