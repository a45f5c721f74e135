#include "session/DQGlobalKeyHelper.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "session/PortalGlobalKeys.h"
#include "session/X11GlobalKeys.h"
#include "store/DQDataSessionHelper.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"

#include <QGuiApplication>

namespace ostrel {

namespace {

// On a Wayland session an X11 grab would see only the keys typed into X11 windows, which
// looks like shortcuts that work now and then: there the portal or nothing (the shortcut page
// then offers commands to bind in the desktop's settings). X11 grabs serve X11 sessions.
std::unique_ptr<GlobalKeyBackend> platformBackend() {
    const bool waylandSession = qEnvironmentVariable("XDG_SESSION_TYPE") == u"wayland" ||
                                QGuiApplication::platformName() == u"wayland";
    if (waylandSession)
        return PortalGlobalKeys::create();
    return X11GlobalKeys::create();
}

} // namespace

DQGlobalKeyHelper& DQGlobalKeyHelper::shareInstance() {
    // Kept for the life of the process: the keys are let go at quit, not at static teardown.
    static DQGlobalKeyHelper* instance = [] {
        auto* helper = new DQGlobalKeyHelper;
        helper->setBackend(platformBackend());
        // However the event loop ends, no other application is kept from the keys.
        if (QCoreApplication* app = QCoreApplication::instance())
            connect(app, &QCoreApplication::aboutToQuit, helper,
                    &DQGlobalKeyHelper::removeDeskGlobalHotKey);
        return helper;
    }();
    return *instance;
}

void DQGlobalKeyHelper::setBackend(std::unique_ptr<GlobalKeyBackend> backend) {
    removeDeskGlobalHotKey();
    m_backend = std::move(backend);
    if (m_backend)
        connect(m_backend.get(), &GlobalKeyBackend::activated, this,
                &DQGlobalKeyHelper::keyPressed);
}

void DQGlobalKeyHelper::addDeskGlobalHotKeyWithCombineKeyType(int type) {
    removeDeskGlobalHotKey();
    if (!m_backend)
        return;
    const auto combination = type == GlobalKeyBackend::kCtrlSuper  ? GlobalKeyBackend::kCtrlSuper
                             : type == GlobalKeyBackend::kAltSuper ? GlobalKeyBackend::kAltSuper
                                                                   : GlobalKeyBackend::kShift;
    m_unavailable = m_backend->grab(combination);
    m_registered = true;
    emit registrationChanged();
}

void DQGlobalKeyHelper::removeDeskGlobalHotKey() {
    if (m_backend)
        m_backend->release();
    const bool changed = m_registered || !m_unavailable.isEmpty();
    m_registered = false;
    m_unavailable.clear();
    if (changed)
        emit registrationChanged();
}

void DQGlobalKeyHelper::actionAddGlobalKey() {
    const auto setting =
        fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo());
    if (setting.combinationopen == "1")
        addDeskGlobalHotKeyWithCombineKeyType(combineKeyType(setting.combinationkey.value_or("")));
}

int DQGlobalKeyHelper::combineKeyType(const std::string& combinationkey) {
    if (combinationkey == "1")
        return GlobalKeyBackend::kAltSuper;
    if (combinationkey == "2")
        return GlobalKeyBackend::kCtrlSuper;
    return GlobalKeyBackend::kShift;
}

QString DQGlobalKeyHelper::nameForId(int id) {
    static constexpr std::pair<int, const char*> kNames[] = {
        {126, "GlobalKeyUp"}, {125, "GlobalKeyDown"}, {18, "GlobalKeyOne"},
        {19, "GlobalKeyTwo"}, {20, "GlobalKeyThree"}, {21, "GlobalKeyFour"},
    };
    for (const auto& [key, name] : kNames)
        if (key == id)
            return QLatin1String(name);
    return {};
}

void DQGlobalKeyHelper::keyPressed(int id) {
    const QString name = nameForId(id);
    if (!name.isEmpty())
        NotificationCenter::defaultCenter().post(
            QString::fromLatin1(notifications::kGlobalKeyPushName), name);
}

} // namespace ostrel
