#include "session/DQGlobalKeyHelper.h"

#include "core/NotificationCenter.h"
#include "core/NotificationNames.h"
#include "platform/Platform.h"
#include "store/DQDataSessionHelper.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"

#include <QCoreApplication>

namespace ostrel {

DQGlobalKeyHelper& DQGlobalKeyHelper::shareInstance() {
    // Kept for the life of the process: the keys are let go at quit, not at static teardown.
    static DQGlobalKeyHelper* instance = [] {
        auto* helper = new DQGlobalKeyHelper;
        // However the event loop ends, no other application is kept from the keys.
        if (QCoreApplication* app = QCoreApplication::instance())
            connect(app, &QCoreApplication::aboutToQuit, helper,
                    &DQGlobalKeyHelper::removeDeskGlobalHotKey);
        return helper;
    }();
    return *instance;
}

bool DQGlobalKeyHelper::isAvailable() const {
    return Platform::get<GlobalKeyBackend>().isAvailable();
}

void DQGlobalKeyHelper::addDeskGlobalHotKeyWithCombineKeyType(int type) {
    removeDeskGlobalHotKey();
    GlobalKeyBackend& keys = Platform::get<GlobalKeyBackend>();
    if (!keys.isAvailable())
        return;
    const auto combination = type == GlobalKeyBackend::kCtrlSuper  ? GlobalKeyBackend::kCtrlSuper
                             : type == GlobalKeyBackend::kAltSuper ? GlobalKeyBackend::kAltSuper
                                                                   : GlobalKeyBackend::kShift;
    m_grabbed = &keys;
    connect(&keys, &GlobalKeyBackend::activated, this, &DQGlobalKeyHelper::keyPressed);
    m_unavailable = keys.grab(combination);
    m_registered = true;
    emit registrationChanged();
}

void DQGlobalKeyHelper::removeDeskGlobalHotKey() {
    if (GlobalKeyBackend* keys = m_grabbed.data()) {
        keys->release();
        disconnect(keys, nullptr, this, nullptr);
    }
    m_grabbed = nullptr;
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
