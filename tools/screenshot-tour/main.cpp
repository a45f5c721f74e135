// Shows every screen of the home window on the demo desks, one after another, and saves a
// picture of what is on the display after each: screenshot-tour --lang en|zh-Hans --out DIR.
// Run it on a real X server (tools/screenshots.sh starts one).
#include "ControlTour.h"
#include "SampleActivity.h"
#include "SettingsTour.h"
#include "Tour.h"
#include "TourNavigator.h"
#include "app/ActivityService.h"
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/LocalPreference.h"
#include "app/ScreenFactories.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QSettings>

using namespace ostrel;

namespace {

// The settings pages, then the error and the link loss, which end the session.
std::deque<Step> everyScreen(const ControlTour& control, const SettingsTour& settings) {
    std::deque<Step> steps;
    for (const std::deque<Step>& part :
         {control.searchAndControl(), settings.settingsPages(), settings.reminder(),
          settings.devices(), control.activity(), control.keyboardAndTray(), control.faults(),
          control.releaseAndLinkLoss()})
        steps.insert(steps.end(), part.begin(), part.end());
    return steps;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ostrel"));
    QApplication::setApplicationName(QStringLiteral("ostrel-motion-tour"));
    QApplication::setDesktopFileName(QStringLiteral("com.ostrel.motion"));
    QCommandLineParser parser;
    const QCommandLineOption lang(QStringLiteral("lang"), QStringLiteral("en or zh-Hans"),
                                  QStringLiteral("language"), QStringLiteral("en"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Folder for the pictures"),
                                 QStringLiteral("folder"), QStringLiteral("screenshots"));
    const QCommandLineOption wayland(
        QStringLiteral("wayland"),
        QStringLiteral("Only the Wayland pictures, taken with grim (run under a compositor)"));
    parser.addOptions({lang, out, wayland});
    parser.process(application);
    QDir().mkpath(parser.value(out));

    QSettings().setValue(QLatin1String(LocalPreference::kLanguageKey), parser.value(lang));
    LocalPreference::installTranslators(application);
    DemoDesks demo;
    ScreenFactories::registerAll();
    AppDelegate delegate;
    Tour tour(parser.value(out), delegate, demo);
    delegate.applicationDidFinishLaunching();
    ActivityService activity(delegate);
    SampleActivity sample;
    const TourNavigator navigator(tour);
    const ControlTour control(navigator, delegate, sample);
    if (parser.isSet(wayland))
        tour.useGrim();
    tour.run(parser.isSet(wayland) ? control.wayland()
                                   : everyScreen(control, SettingsTour(navigator)));
    const int status = QApplication::exec();
    AppDelegate::releaseTransport();
    return status;
}
