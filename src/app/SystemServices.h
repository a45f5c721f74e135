#pragma once

namespace ostrel {

// The global hot-key registry and the reminder's notification helper, as launch and quit use
// them.
class SystemServices {
public:
    virtual ~SystemServices() = default;

    // 0 Shift, 1 Ctrl+Super, 2 Alt+Super with the arrows and digits.
    virtual void addDeskGlobalHotKeyWithCombineKeyType(int type);
    virtual void removeDeskGlobalHotKey();
    virtual void openNotification();
    virtual void closeNotification();

    static SystemServices& instance();
    // Installs `services` (not owned; nullptr restores the default); returns the
    // previous one.
    static SystemServices* setInstance(SystemServices* services);
};

} // namespace ostrel
