#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <memory>

class QSystemTrayIcon;

namespace ostrel {

class OMBaseModalWindow;
class OMPersistentContainer;
class StatusMenu;
class TrayDeskMenu;
class TrayPresence;

// The application object: starts the tray utility and its one window, decides the first screen,
// applies the stored settings, answers the tray icon and its menu, and shuts down.
class AppDelegate : public QObject {
    Q_OBJECT
public:
    // The radio's state settles only after the first question; the second answer counts.
    static constexpr Scheduler::Duration kBluetoothSettlePause{1000};
    static constexpr char kDefaultFoldName[] = "D5";
    // Files of earlier versions, deleted at every launch; the current-device file among them
    // makes each run start with no current desk.
    static const QStringList& legacyFileNames();

    explicit AppDelegate(QObject* parent = nullptr);
    ~AppDelegate() override;

    // Started at login: only the tray icon shows; the window waits for the tray or a relaunch.
    // Without a tray the window starts minimised instead.
    void setStartHidden(bool hidden) { m_startHidden = hidden; }
    // Where the tray's presence comes from; by default the desktop's. Set before launching.
    void setTrayPresence(std::unique_ptr<TrayPresence> tray);
    // Whether a tray shows the icon: without one, nothing hides the window, it minimises.
    bool hasTray() const;
    void applicationDidFinishLaunching();
    void actionSetSystomSetting();
    void actionPushToSearchVC();

    void statusOnClick();
    bool applicationShouldHandleReopen();
    void clickMainMenuMiniSoftware();
    void hideApplication();
    void showAbout();
    // The menu's Quit: terminates when the object store lets it, possibly after asking.
    void requestTermination();
    // Terminates without asking: a signal ended the session.
    void terminate();
    void applicationWillTerminate();
    // Drops the process-wide link services while the application object still exists; their
    // teardown needs it. Call once the event loop has ended.
    static void releaseTransport();

    QString foldName() const;
    void setFoldName(const QString& name);
    bool isMoving() const { return m_isMoving; }
    // Null until a tray exists to show it.
    QSystemTrayIcon* statusItem() const { return m_statusItem; }
    StatusMenu* menu() const { return m_menu.get(); }
    TrayDeskMenu* deskMenu() const { return m_deskMenu; }
    OMBaseModalWindow* modalWindow(); // created on first use
    OMPersistentContainer& persistentContainer();
    void setPersistentContainer(std::unique_ptr<OMPersistentContainer> container);

signals:
    // The first screen is in the window and the window is shown.
    void homeScreenShown(QWidget* screen);
    // Termination was agreed; the event loop should end.
    void terminated();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createStatusItem();
    void showStatusItem();
    void trayChanged(bool available);
    void connectMenu();
    // With "Remember my desk" on and a desk to remember, its current-device file stays.
    void deleteLegacyFiles(bool keepCurrentDesk);
    void initPlist();
    void goHome(const QString& foldName);
    void showFirstScreen(bool bluetoothOpen);

    bool m_isMoving = false;
    bool m_startHidden = false;
    bool m_quitting = false;
    QSystemTrayIcon* m_statusItem = nullptr;
    std::unique_ptr<StatusMenu> m_menu;
    std::unique_ptr<TrayPresence> m_tray;
    TrayDeskMenu* m_deskMenu = nullptr;
    std::unique_ptr<OMBaseModalWindow> m_modalWindow;
    std::unique_ptr<OMPersistentContainer> m_persistentContainer;
    TimerHandle m_settlePause;
};

} // namespace ostrel
