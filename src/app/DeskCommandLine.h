#pragma once

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <optional>

class QCommandLineParser;
class QDBusError;
class QDBusMessage;
class QTextStream;

namespace ostrel {

// The command-line verbs that drive the desk of a running instance over the session bus:
// --status (with --json), --move-to CM, --preset NAME, --stop, --up and --down, which act as
// the hot keys of that direction (start a movement or stop the one in progress), --release and
// --connect, which let go of the desk and link it again; and --stats,
// which also works without a running instance. Each prints one line and ends with an exit code
// that tells scripts what went wrong.
class DeskCommandLine {
public:
    enum ExitCode : int {
        kOk = 0,
        kFailed = 1, // the desk refused (height not known yet, preset not set, ...)
        kInvalidArgument = 2,
        kNotRunning = 3,
        kNotConnected = 4,
    };
    // How long a verb waits for the running instance.
    static constexpr int kCallTimeoutMs = 5000;

    struct Request {
        QString verb; // "status", "move-to", "preset", "stop", "up", "down", "release",
                      // "connect" or "stats"
        QString argument;
        bool json = false;
    };

    static void addOptions(QCommandLineParser& parser);
    // The verb the parsed command line asks for, if any.
    static std::optional<Request> requestFrom(const QCommandLineParser& parser);
    // Whether the raw arguments hold a verb (or ask for help or the version): decided before
    // any window system is touched, so these work without a display.
    static bool isRequested(int argc, char** argv);

    DeskCommandLine(QDBusConnection connection, QTextStream& out, QTextStream& err);

    int run(const Request& request);

private:
    int status(bool json);
    int moveTo(const QString& argument);
    int toggle(const QString& direction);
    int call(const QString& method, const QVariantList& arguments, const QString& done);
    QDBusMessage send(const QString& interface, const QString& method,
                      const QVariantList& arguments) const;
    int failed(const QDBusError& error);

    QDBusConnection m_connection;
    QTextStream& m_out;
    QTextStream& m_err;
};

} // namespace ostrel
