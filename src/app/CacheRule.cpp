#include "CacheRule.h"

#include "store/DQDataCatchHelper.h"

#include <QStringList>

namespace ostrel {

namespace {

QStringList entryPaths(const QString& folder) {
    QStringList paths;
    for (const QString& entry : DQDataCatchHelper::getFilesNameWithPath(folder))
        paths.append(folder + QLatin1Char('/') + entry);
    return paths;
}

} // namespace

double CacheRule::actionCalculateCache(const QString& folder) {
    double bytes = 0;
    for (const QString& path : entryPaths(folder))
        bytes +=
            static_cast<double>(std::max<qint64>(DQDataCatchHelper::getFileSizeWithPath(path), 0));
    return bytes * (1.0 / 1024) * (1.0 / 1024);
}

void CacheRule::actionClearCache(const QString& folder) {
    // Listed once up front: a removed folder takes its entries along, so they are skipped.
    for (const QString& path : entryPaths(folder)) {
        if (DQDataCatchHelper::getFileSizeWithPath(path) >= 0)
            DQDataCatchHelper::deleteFileWithPath(path);
    }
}

bool CacheRule::applyAutomaticClean(bool enabled, const QString& folder) {
    if (!enabled || actionCalculateCache(folder) <= kCleanAboveMiB)
        return false;
    actionClearCache(folder);
    return true;
}

} // namespace ostrel
