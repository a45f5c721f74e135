// Ostrel Motion: a tray utility and one window for Bluetooth LE sit-stand desks.
#include "app/AppDelegate.h"
#include "app/AppRunner.h"
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
};

Options parseOptions(const QApplication& application) {
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
    parser.process(application);
    return {parser.isSet(demo), parser.isSet(measure), parser.isSet(hidden)};
}

} // namespace

int main(int argc, char** argv) {
    QElapsedTimer sinceStart;
    sinceStart.start();

    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ostrel"));
    QApplication::setApplicationName(QStringLiteral("ostrel-motion"));
    QApplication::setApplicationDisplayName(QStringLiteral("Ostrel Motion"));
    QApplication::setApplicationVersion(QStringLiteral(OSTREL_VERSION));
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
