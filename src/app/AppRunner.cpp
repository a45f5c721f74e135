#include "app/AppRunner.h"

#include "app/AppDelegate.h"
#include "app/DemoDesks.h"
#include "app/ScreenFactories.h"
#include "platform/Platform.h"
#include "platform/TerminationSignals.h"
#include "session/HeldKeyOwner.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <memory>

namespace ostrel {

AppRunner::AppRunner(bool demo) {
    if (demo)
        m_demo = std::make_unique<DemoDesks>();
    ScreenFactories::registerAll();
    m_delegate = std::make_unique<AppDelegate>();
    QObject::connect(m_delegate.get(), &AppDelegate::terminated, qApp, &QApplication::quit,
                     Qt::QueuedConnection);
    // A signal does not wait for the quit question: the session is ending anyway.
    QObject::connect(&Platform::get<TerminationSignals>(), &TerminationSignals::received,
                     m_delegate.get(), &AppDelegate::terminate);
}

AppRunner::~AppRunner() = default;

int AppRunner::exec() {
    m_delegate->applicationDidFinishLaunching();
    const int status = QApplication::exec();
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
