#include "app/AppRunner.h"

#include "app/ActivityService.h"
#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/ScreenFactories.h"
#include "homeautomation/HomeAutomationBridge.h"
#include "platform/Platform.h"
#include "platform/TerminationSignals.h"
#include "session/HeldKeyOwner.h"
#include "settings/SettingsPages.h"
#include "settings/ViewHomeAutomation.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <memory>

namespace ostrel {

AppRunner::AppRunner(bool demo) {
    if (demo)
        m_demo = std::make_unique<DemoDesks>();
    ScreenFactories::registerAll();
    m_delegate = std::make_unique<AppDelegate>();
    m_homeAutomation = std::make_unique<HomeAutomationBridge>();
    SettingsPages::instance().registerPage(
        SettingsPages::Page::HomeAutomation,
        [bridge = m_homeAutomation.get()](DeskControlVC* father) {
            return new ViewHomeAutomation(father, *bridge);
        });
    QObject::connect(m_delegate.get(), &AppDelegate::terminated, qApp, &QApplication::quit,
                     Qt::QueuedConnection);
    // A signal does not wait for the quit question: the session is ending anyway.
    QObject::connect(&Platform::get<TerminationSignals>(), &TerminationSignals::received,
                     m_delegate.get(), &AppDelegate::terminate);
}

AppRunner::~AppRunner() = default;

int AppRunner::exec() {
    m_delegate->applicationDidFinishLaunching();
    m_activity = std::make_unique<ActivityService>(*m_delegate);
    // After launch, which lays down the data folder the settings and secrets live in.
    m_homeAutomation->start();
    const int status = QApplication::exec();
    m_homeAutomation->shutdown();
    m_activity.reset();
    letDeskHearReleasedKey();
    AppDelegate::releaseTransport();
    return status;
}

void AppRunner::letDeskHearReleasedKey() {
    auto heard = std::make_shared<bool>(false);
    HeldKeyOwner::instance().releaseThen([heard] { *heard = true; });
    const QDeadlineTimer deadline(kReleaseLimit);
    while (!*heard && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
}

} // namespace ostrel
