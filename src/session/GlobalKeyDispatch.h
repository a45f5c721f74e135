#pragma once

#include <QObject>
#include <QString>

namespace ostrel {

class HotKeyMovement;
class PresetKeys;

// Turns the global hot keys into key commands for the desk: the arrows start and stop a
// movement (a toggle: no finger holds them), the digits tap the Sit, Stand, M1 and M2 keys.
// Keys while no desk is linked and digits of unset presets do nothing, silently: the user is
// in another application and would not see a message.
class GlobalKeyDispatch : public QObject {
    Q_OBJECT
public:
    GlobalKeyDispatch(HotKeyMovement& movement, PresetKeys& presets, QObject* parent = nullptr);

    // `name` is what the registry posts: "GlobalKeyUp", "GlobalKeyDown", "GlobalKeyOne".."Four".
    void globalKeyPush(const QString& name);

private:
    HotKeyMovement& m_movement;
    PresetKeys& m_presets;
};

} // namespace ostrel
