#include "AppDelegate.h"

#include "CacheRule.h"
#include "DesktopTrayPresence.h"
#include "OMBaseModalWindow.h"
#include "OMPersistentContainer.h"
#include "StatusMenu.h"
#include "SystemServices.h"
#include "TrayDeskMenu.h"
#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/Autostart.h"
#include "platform/Platform.h"
#include "session/DQGlobalKeyHelper.h"
#include "store/CurrentDeskModel.h"
#include "store/CurrentDeviceStore.h"
#include "store/DQDataCatchHelper.h"
#include "store/DQDataSessionHelper.h"
#include "store/FileManager.h"
#include "store/OMPlistManager.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"
#include "store/RememberedDesk.h"
#include "transport/BluetoothCenterManager.h"
#include "transport/BluetoothTool.h"
#include "transport/RBBluetoothManager.h"
#include "transport/screens/DeskTypeTable.h"
#include "widgets/OMAlert.h"
#include "widgets/OMAppStyle.h"
#include "widgets/OMImage.h"
#include "widgets/OMScreenRouter.h"
#include "widgets/OMWindowIdentifier.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QDir>
#include <QSystemTrayIcon>

namespace ostrel {

const QStringList& AppDelegate::legacyFileNames() {
    static const QStringList names{
        QStringLiteral("userToken.text"),
        QStringLiteral("userInfo.text"),
        QStringLiteral("FileName_phoneAreaCode"),
        QStringLiteral("FileName_phoneNumber"),
        QStringLiteral("FileName_Remember_Password"),
        QStringLiteral("FileName_Auto_Login"),
        QStringLiteral("FileName_Current_BluetoothModel"),
        QStringLiteral("FileName_Area_Code"),
        QStringLiteral("FileName_OccupationList"),
        QStringLiteral("FileName_AreaList"),
    };
    return names;
}

AppDelegate::AppDelegate(QObject* parent) : QObject(parent) {
    OMScreenRouter::instance().setHost(
        [this](QWidget* screen) { modalWindow()->setContent(screen); });
    // What the radio has to tell the user (no BLE, radio off) comes as an alert of its own.
    BluetoothCenterManager::setAlertHandler(
        [](const QString& message, const QString& text, const QString& button) {
            OMAlert::show(nullptr, {message, text, {button}});
        });
}

AppDelegate::~AppDelegate() {
    BluetoothCenterManager::setAlertHandler(nullptr);
    OMScreenRouter::instance().setHost({});
}

void AppDelegate::applicationDidFinishLaunching() {
    QApplication::setQuitOnLastWindowClosed(false);
    OMAppStyle::install();
    m_isMoving = false;
    createStatusItem();
    actionSetSystomSetting();
    m_menu->setTitles();
    // Read before the legacy files go: the current-device file names the remembered desk.
    const std::optional<QString> rememberedModel =
        RememberedDesk::modelOfCurrentDesk(DeskTypeTable::models());
    deleteLegacyFiles(rememberedModel.has_value());
    initPlist();
    goHome(rememberedModel.value_or(QLatin1String(kDefaultFoldName)));
}

void AppDelegate::setTrayPresence(std::unique_ptr<TrayPresence> tray) {
    m_tray = std::move(tray);
}

bool AppDelegate::hasTray() const {
    return m_tray && m_tray->isAvailable();
}

void AppDelegate::createStatusItem() {
    m_menu = std::make_unique<StatusMenu>();
    connectMenu();
    // The same menu on the window itself: desktops without a tray still reach Quit.
    modalWindow()->addActions(m_menu->actions());
    modalWindow()->setContextMenuPolicy(Qt::ActionsContextMenu);
    modalWindow()->installEventFilter(this);
    qApp->installEventFilter(this);
    if (!m_tray)
        m_tray = std::make_unique<DesktopTrayPresence>(QDBusConnection::sessionBus());
    connect(m_tray.get(), &TrayPresence::availabilityChanged, this, &AppDelegate::trayChanged);
    if (m_tray->isAvailable())
        showStatusItem();
}

// Made only once a tray is there: see DesktopTrayPresence.
void AppDelegate::showStatusItem() {
    if (!m_statusItem) {
        m_statusItem =
            new QSystemTrayIcon(OMImage::icon(QStringLiteral("common_toolbarlogo")), this);
        m_statusItem->setToolTip(QStringLiteral("Ostrel Motion"));
        m_statusItem->setContextMenu(m_menu.get());
        connect(m_statusItem, &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger)
                        modalWindow()->toggleFromTray();
                    else if (reason == QSystemTrayIcon::DoubleClick)
                        statusOnClick();
                    // A StatusNotifierItem host that draws no menu of its own (swaybar) asks
                    // the application to show it; an XEmbed tray has already opened it.
                    else if (reason == QSystemTrayIcon::Context && !m_menu->isVisible())
                        m_menu->popup(QCursor::pos());
                });
        m_deskMenu = new TrayDeskMenu(m_statusItem, m_menu.get(), this);
    }
    m_statusItem->show();
}

// A tray that goes away must not take a hidden window with it.
void AppDelegate::trayChanged(bool available) {
    if (available) {
        showStatusItem();
        return;
    }
    OMBaseModalWindow* window = modalWindow();
    if (window->content() && !window->isVisible())
        window->showMinimized();
}

// Quitting closes every window, and refusing that close would cancel the quit: the close is
// refused only until the application hears the quit (the filter on the application object
// sees its events first).
bool AppDelegate::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::Quit)
        m_quitting = true;
    if (watched == m_modalWindow.get() && event->type() == QEvent::Close && !m_quitting &&
        !hasTray()) {
        event->ignore();
        clickMainMenuMiniSoftware();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void AppDelegate::connectMenu() {
    connect(m_menu->aboutOstrel, &QAction::triggered, this, &AppDelegate::showAbout);
    connect(m_menu->HideOstrelMotion, &QAction::triggered, this, &AppDelegate::hideApplication);
    connect(m_menu->mainMenuMinisize, &QAction::triggered, this,
            &AppDelegate::clickMainMenuMiniSoftware);
    connect(m_menu->QuitOstrelMotion, &QAction::triggered, this, &AppDelegate::requestTermination);
    connect(m_menu->startAtLogin, &QAction::triggered, this, [this](bool enabled) {
        Platform::get<Autostart>().setEnabled(enabled);
        m_menu->startAtLogin->setChecked(Platform::get<Autostart>().isEnabled());
    });
    // The desktop holds the setting: show what it says each time the menu opens.
    connect(m_menu.get(), &QMenu::aboutToShow, this,
            [this] { m_menu->startAtLogin->setChecked(Platform::get<Autostart>().isEnabled()); });
    m_menu->startAtLogin->setChecked(Platform::get<Autostart>().isEnabled());
}

void AppDelegate::actionSetSystomSetting() {
    const auto setting =
        fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo());
    SystemServices& services = SystemServices::instance();
    if (setting.combinationopen == "1")
        services.addDeskGlobalHotKeyWithCombineKeyType(
            DQGlobalKeyHelper::combineKeyType(setting.combinationkey.value_or("")));
    if (setting.push == "1")
        services.openNotification();
    else
        services.closeNotification();
    CacheRule::applyAutomaticClean(setting.autocatchclean == "1",
                                   DQDataCatchHelper::getLibCatchesPath());
}

void AppDelegate::deleteLegacyFiles(bool keepCurrentDesk) {
    for (const QString& name : legacyFileNames()) {
        if (!keepCurrentDesk || name != QLatin1String(CurrentDeviceStore::kFileName))
            FileManager::deleteFileName(name);
    }
}

void AppDelegate::initPlist() {
    // The store writes into the documents folder but leaves creating it to the application.
    QDir().mkpath(DQDataCatchHelper::getDocPath());
    OMPlistManager::initDataList();
}

void AppDelegate::goHome(const QString& foldName) {
    setFoldName(foldName);
    actionPushToSearchVC();
}

void AppDelegate::actionPushToSearchVC() {
    RBBluetoothManager::sharedInstance().blueToothIsOpen(); // wakes the radio; too early to trust
    m_settlePause = Scheduler::instance().after(kBluetoothSettlePause, this, [this] {
        showFirstScreen(RBBluetoothManager::sharedInstance().blueToothIsOpen());
    });
}

void AppDelegate::showFirstScreen(bool bluetoothOpen) {
    OMBaseModalWindow* window = modalWindow();
    QWidget* screen = OMScreenRouter::instance().show(
        QLatin1String(bluetoothOpen ? screens::kBluetoothSearch : screens::kNoBluetooth));
    OMWindowIdentifier::assign(window, OMWindowIdentifier::home());
    window->centerOnScreen();
    if (!m_startHidden)
        window->bringToFront();
    else if (!hasTray())
        window->showMinimized();
    emit homeScreenShown(screen);
}

void AppDelegate::statusOnClick() {
    modalWindow()->bringToFront();
}

bool AppDelegate::applicationShouldHandleReopen() {
    modalWindow()->bringToFront();
    return true;
}

void AppDelegate::clickMainMenuMiniSoftware() {
    modalWindow()->showMinimized();
    if (QWidget* personal = OMWindowIdentifier::find(OMWindowIdentifier::personalCenter()))
        personal->showMinimized();
}

void AppDelegate::hideApplication() {
    if (!hasTray()) {
        clickMainMenuMiniSoftware();
        return;
    }
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isWindow() && window->isVisible())
            window->hide();
    }
}

void AppDelegate::showAbout() {
    OMAlert::show(modalWindow(), {QStringLiteral("Ostrel Motion"),
                                  tr("Version %1").arg(QApplication::applicationVersion()),
                                  {tr("OK")}});
}

void AppDelegate::requestTermination() {
    OMPersistentContainer& store = persistentContainer();
    if (!store.commitEditing())
        return;
    QString error;
    if (!store.hasChanges() || store.save(error)) {
        terminate();
        return;
    }
    const OMAlertContent question{
        tr("Could not save changes while quitting. Quit anyway?"),
        tr("Quitting now will lose any changes you have made since the last successful save"),
        {tr("Quit anyway"), tr("Cancel")},
        true};
    OMAlert::show(modalWindow(), question, [this](int response) {
        if (response != OMAlert::kFirstButton + 1)
            terminate();
    });
}

void AppDelegate::terminate() {
    applicationWillTerminate();
    emit terminated();
}

void AppDelegate::applicationWillTerminate() {
    SystemServices::instance().removeDeskGlobalHotKey();
    NotificationCenter::defaultCenter().removeObserver(
        this, QLatin1String(notifications::kGlobalKeyPushName));
}

void AppDelegate::releaseTransport() {
    RBBluetoothManager::replaceSharedInstance(nullptr);
    BluetoothTool::replaceShareInstance(nullptr);
}

QString AppDelegate::foldName() const {
    return CurrentDeskModel::name();
}

void AppDelegate::setFoldName(const QString& name) {
    CurrentDeskModel::setName(name);
}

OMBaseModalWindow* AppDelegate::modalWindow() {
    if (!m_modalWindow)
        m_modalWindow = std::make_unique<OMBaseModalWindow>();
    return m_modalWindow.get();
}

OMPersistentContainer& AppDelegate::persistentContainer() {
    if (!m_persistentContainer)
        m_persistentContainer = std::make_unique<OMPersistentContainer>();
    return *m_persistentContainer;
}

void AppDelegate::setPersistentContainer(std::unique_ptr<OMPersistentContainer> container) {
    m_persistentContainer = std::move(container);
}

} // namespace ostrel
