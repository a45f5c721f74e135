#include "session/GlobalKeyDispatch.h"

#include "protocol/CommandType.h"
#include "session/HotKeyMovement.h"
#include "session/PresetKeys.h"
#include "store/CurrentDeviceStore.h"
#include "transport/RBBluetoothManager.h"

#include <QStringList>

namespace ostrel {

namespace {

// The digits' names, in preset order (Sit, Stand, M1, M2).
const QStringList& presetNames() {
    static const QStringList names{QStringLiteral("GlobalKeyOne"), QStringLiteral("GlobalKeyTwo"),
                                   QStringLiteral("GlobalKeyThree"),
                                   QStringLiteral("GlobalKeyFour")};
    return names;
}

} // namespace

GlobalKeyDispatch::GlobalKeyDispatch(HotKeyMovement& movement, PresetKeys& presets, QObject* parent)
    : QObject(parent), m_movement(movement), m_presets(presets) {}

void GlobalKeyDispatch::globalKeyPush(const QString& name) {
    if (!RBBluetoothManager::sharedInstance().isConnect())
        return;
    // The stored presets, not the shown ones: the record is what the desk was told.
    const auto presets = CurrentDeviceStore::parsePresets(CurrentDeviceStore::load().memoryHeight);
    m_movement.restartWatch();
    if (name == u"GlobalKeyUp") {
        m_movement.toggle(command::kUpKey);
    } else if (name == u"GlobalKeyDown") {
        m_movement.toggle(command::kDownKey);
    } else if (const int slot = int(presetNames().indexOf(name)); slot >= 0) {
        if (presets && (*presets)[std::size_t(slot)] != 0)
            m_presets.actionEnterMemoryKeyWithtype(command::presetKey(slot));
    }
}

} // namespace ostrel
