// Ostrel Motion: a tray utility and one window for Bluetooth LE sit-stand desks.
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
#include "app/DeskCommandLine.h"
#include "app/LocalPreference.h"
#include "app/SingleInstance.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QTextStream>

namespace {

struct Options {
    bool demo = false;
    bool measureStartup = false;
    bool hidden = false;
    std::optional<ostrel::DeskCommandLine::Request> request;
};

void setIdentity() {
    QCoreApplication::setOrganizationName(QStringLiteral("ostrel"));
    QCoreApplication::setApplicationName(QStringLiteral("ostrel-motion"));
    QCoreApplication::setApplicationVersion(QStringLiteral(OSTREL_VERSION));
}

Options parseOptions(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Ostrel Motion, a companion for sit-stand desks"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption demo(
        QStringLiteral("demo"), QStringLiteral("Use built-in virtual desks instead of Bluetooth."));
    const QCommandLineOption measure(
        QStringLiteral("measure-startup"),
        QStringLiteral("Print the time from start to the first window."));
    const QCommandLineOption hidden(
        QStringLiteral("hidden"),
        QStringLiteral("Start in the tray without showing the window (as at login)."));
    parser.addOptions({demo, measure, hidden});
    ostrel::DeskCommandLine::addOptions(parser);
    parser.process(application);
    return {parser.isSet(demo), parser.isSet(measure), parser.isSet(hidden),
            ostrel::DeskCommandLine::requestFrom(parser)};
}

} // namespace

int main(int argc, char** argv) {
    QElapsedTimer sinceStart;
    sinceStart.start();

    // The verbs talk to the running instance and, like --help, need no window system.
    if (ostrel::DeskCommandLine::isRequested(argc, argv)) {
        QCoreApplication client(argc, argv);
        setIdentity();
        const Options options = parseOptions(client);
        QTextStream out(stdout);
        QTextStream err(stderr);
        ostrel::DeskCommandLine verbs(QDBusConnection::sessionBus(), out, err);
        return options.request ? verbs.run(*options.request)
                               : ostrel::DeskCommandLine::kInvalidArgument;
    }

    QApplication application(argc, argv);
    setIdentity();
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel Motion"));
    QApplication::setDesktopFileName(QStringLiteral("com.ostrel.motion"));
    const Options options = parseOptions(application);

    ostrel::SingleInstance instance(QDBusConnection::sessionBus());
    if (!instance.claim())
        return instance.activateRunning() ? 0 : 1;

    ostrel::LocalPreference::installTranslators(application);
    ostrel::AppRunner runner(options.demo);
    ostrel::AppDelegate& delegate = runner.delegate();
    delegate.setStartHidden(options.hidden);
    QObject::connect(&instance, &ostrel::SingleInstance::activated, &delegate,
                     &ostrel::AppDelegate::applicationShouldHandleReopen);
    if (options.measureStartup) {
        QObject::connect(&delegate, &ostrel::AppDelegate::homeScreenShown, &delegate, [&] {
            QTextStream(stdout) << "startup: first window shown after " << sinceStart.elapsed()
                                << " ms (including the 1000 ms Bluetooth settle pause)" << Qt::endl;
        });
    }
    return runner.exec();
}
