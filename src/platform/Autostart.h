#pragma once

#include <memory>

namespace ostrel {

// "Start at login": whether the desktop starts the application, hidden in the tray, when the
// user logs in.
class Autostart {
public:
    virtual ~Autostart() = default;

    // The XDG autostart entry.
    static std::unique_ptr<Autostart> forDesktop();

    virtual bool isEnabled() const = 0;
    // False when the desktop refused the change.
    virtual bool setEnabled(bool enabled) = 0;
};

} // namespace ostrel
