#include "app/ActivityService.h"

#include "app/AppDelegate.h"
#include "app/OMBaseModalWindow.h"
#include "app/StatusMenu.h"
#include "platform/Platform.h"
#include "platform/Presence.h"
#include "session/ActivityFeed.h"
#include "session/ActivityRecorder.h"
#include "settings/ActivityView.h"
#include "store/ActivityStore.h"
#include "store/DQDataCatchHelper.h"
#include "widgets/OMAlert.h"

#include <QApplication>
#include <QDir>
#include <QVBoxLayout>

namespace ostrel {

ActivityService::ActivityService(AppDelegate& delegate) {
    QDir().mkpath(DQDataCatchHelper::getDocPath());
    m_store = std::make_unique<ActivityStore>(ActivityStore::defaultPath());
    m_recorder = std::make_unique<ActivityRecorder>(*m_store);
    m_feed = std::make_unique<ActivityFeed>(*m_recorder);
    const Presence& presence = Platform::get<Presence>();
    m_recorder->setPresent(presence.isPresent());
    connect(&presence, &Presence::presentChanged, m_recorder.get(), &ActivityRecorder::setPresent);
    connect(delegate.menu()->activity, &QAction::triggered, this, &ActivityService::showWindow);
    // The open interval keeps what it has so far when the application quits.
    connect(qApp, &QCoreApplication::aboutToQuit, m_recorder.get(), &ActivityRecorder::finish);
    tellAboutTheFile(delegate.modalWindow());
}

ActivityService::~ActivityService() {
    delete m_window;
    m_feed.reset();
    m_recorder.reset();
}

void ActivityService::showWindow() {
    if (!m_window) {
        m_window = new QWidget(nullptr, Qt::Window);
        m_window->setAttribute(Qt::WA_DeleteOnClose);
        m_window->setWindowTitle(tr("Activity"));
        m_window->resize(460, 640);
        auto* layout = new QVBoxLayout(m_window);
        layout->addWidget(new ActivityView(*m_recorder, m_window));
    }
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
}

void ActivityService::tellAboutTheFile(QWidget* parent) const {
    if (!m_store->movedAsideTo().isEmpty())
        OMAlert::show(parent, {tr("Activity"),
                               tr("The activity record could not be read. It was kept as %1 and "
                                  "a new record was started.")
                                   .arg(QDir::toNativeSeparators(m_store->movedAsideTo())),
                               {tr("OK")}});
    else if (!m_store->isWritable())
        OMAlert::show(parent, {tr("Activity"),
                               tr("The activity record %1 cannot be written. Standing time is "
                                  "shown but not kept.")
                                   .arg(QDir::toNativeSeparators(m_store->path())),
                               {tr("OK")}});
}

} // namespace ostrel
