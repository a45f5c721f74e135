#pragma once

#include "store/ActivityReport.h"

#include <QDBusConnection>
#include <optional>

class QTextStream;

namespace ostrel {

// `--stats [--days N] [--json]`: the standing-time figures. A running application is asked over
// the session bus, so its open interval counts up to now; otherwise the record is read from the
// file, read-only.
class ActivityStatsCommand {
public:
    static constexpr int kDefaultDays = 7;

    ActivityStatsCommand(QDBusConnection connection, QTextStream& out, QTextStream& err);

    // `days` as given on the command line ("" for the default); returns the exit code.
    int run(const QString& days, bool json);

private:
    std::optional<ActivityReport> fromRunningApplication(int days) const;
    static ActivityReport fromFile(int days);

    QDBusConnection m_connection;
    QTextStream& m_out;
    QTextStream& m_err;
};

} // namespace ostrel
