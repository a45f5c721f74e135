// Shows every screen of the home window on the demo desks, one after another, and saves a
// picture of what is on the display after each: screenshot-tour --lang en|zh-Hans --out DIR.
// Run it on a real X server (tools/screenshots.sh starts one).
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/HomeErrorVC.h"
#include "app/LocalPreference.h"
#include "app/OMBaseModalWindow.h"
#include "app/ScreenFactories.h"
#include "core/Scheduler.h"
#include "session/DeskControlVC.h"
#include "session/ShortcutsHeightSetVC.h"
#include "sim/VirtualCentral.h"
#include "sim/VirtualDesk.h"
#include "transport/screens/DeskSearchRowView.h"
#include "widgets/OMScreenRouter.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QMenu>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <deque>

using namespace ostrel;
using namespace std::chrono_literals;

namespace {

// One step of the tour: do something, give the screen time to settle, take a picture.
struct Step {
    QString name;
    std::function<void()> action;
    Scheduler::Duration settle;
};

class Tour {
public:
    Tour(QString outDir, AppDelegate& delegate, DemoDesks& demo)
        : m_outDir(std::move(outDir)), m_delegate(delegate), m_demo(demo) {}

    void run(std::deque<Step> steps) {
        m_steps = std::move(steps);
        next();
    }

    OMBaseModalWindow& home() { return *m_delegate.modalWindow(); }
    DemoDesks& demo() { return m_demo; }

private:
    void next() {
        if (m_steps.empty()) {
            QApplication::quit();
            return;
        }
        Step step = std::move(m_steps.front());
        m_steps.pop_front();
        if (step.action)
            step.action();
        Scheduler::instance().after(step.settle, nullptr, [this, name = step.name] {
            if (!name.isEmpty())
                shoot(name);
            next();
        });
    }

    // What the display shows over every visible window of the application.
    void shoot(const QString& name) const {
        QRect area;
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && !qobject_cast<const QMenu*>(window))
                area = area.united(window->frameGeometry());
        }
        QScreen* screen = QGuiApplication::primaryScreen();
        const QString path = QDir(m_outDir).filePath(name + QStringLiteral(".png"));
        const bool saved =
            screen->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(path);
        qInfo("%s %s", saved ? "saved" : "FAILED", qPrintable(path));
    }

    QString m_outDir;
    AppDelegate& m_delegate;
    DemoDesks& m_demo;
    std::deque<Step> m_steps;
};

void clickFirstDesk(QWidget& home) {
    if (auto* row = home.findChild<DeskSearchRowView*>())
        QTest::mouseClick(row, Qt::LeftButton);
}

void closeWindowsExceptHome(QWidget& home) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window != &home && window->isVisible())
            window->close();
    }
}

std::deque<Step> tourSteps(Tour& tour) {
    QWidget& home = tour.home();
    auto show = [](const char* screen) {
        return [screen] { OMScreenRouter::instance().show(QLatin1String(screen)); };
    };
    return {
        {QStringLiteral("1-search"), {}, 4000ms},
        {QStringLiteral("2-desk-type"), show(screens::kDeskType), 800ms},
        {QStringLiteral("3-no-bluetooth"),
         [&tour, show] {
             tour.demo().central()->setPowered(false);
             show(screens::kNoBluetooth)();
         },
         800ms},
        {QString(),
         [&tour, show] {
             tour.demo().central()->setPowered(true);
             show(screens::kBluetoothSearch)();
         },
         3000ms},
        {QStringLiteral("4-desk-control"), [&home] { clickFirstDesk(home); }, 5000ms},
        {QStringLiteral("5-save-sheet"),
         [&home] {
             if (auto* control = home.findChild<DeskControlVC*>())
                 control->longHoverPress(control->presetButton(0));
         },
         800ms},
        {QStringLiteral("6-error"),
         [&home] {
             closeWindowsExceptHome(home);
             HomeErrorVC::showError(30);
         },
         800ms},
        {QStringLiteral("7-link-loss"),
         [&tour, &home] {
             closeWindowsExceptHome(home);
             tour.demo().desks().first()->dropLink();
         },
         2500ms},
    };
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("ostrel"));
    QApplication::setApplicationName(QStringLiteral("ostrel-motion-tour"));
    QCommandLineParser parser;
    const QCommandLineOption lang(QStringLiteral("lang"), QStringLiteral("en or zh-Hans"),
                                  QStringLiteral("language"), QStringLiteral("en"));
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Folder for the pictures"),
                                 QStringLiteral("folder"), QStringLiteral("screenshots"));
    parser.addOptions({lang, out});
    parser.process(application);
    QDir().mkpath(parser.value(out));

    QSettings().setValue(QLatin1String(LocalPreference::kLanguageKey), parser.value(lang));
    LocalPreference::installTranslators(application);
    DemoDesks demo;
    ScreenFactories::registerAll();
    AppDelegate delegate;
    Tour tour(parser.value(out), delegate, demo);
    delegate.applicationDidFinishLaunching();
    tour.run(tourSteps(tour));
    const int status = QApplication::exec();
    AppDelegate::releaseTransport();
    return status;
}
