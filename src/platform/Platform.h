#pragma once

#include <memory>
#include <utility>

namespace ostrel {

// The desktop adapters of this process, one instance per interface. The first request makes the
// one the running desktop calls for, through the interface's `forDesktop()` (all of them defined
// in Platform.cpp, the one place that knows the implementations); a test may install its own
// instead. Callers name the interface only:
//
//     Platform::get<DesktopNotifications>().notify(request);
//
// A new adapter is an interface with a `forDesktop()`, its implementations, and its choice in
// Platform.cpp; nothing that asks for the others changes.
class Platform {
public:
    template <class Interface> static Interface& get() {
        if (Interface* installed = Slot<Interface>::installed)
            return *installed;
        // Kept for the life of the process: the desktop lets go of keys and notifications when
        // the process ends, and nothing is torn down after the event loop is gone.
        static Interface* const made = Interface::forDesktop().release();
        return *made;
    }

    // Installs `replacement` (not owned; nullptr goes back to the desktop's) and returns the
    // previous one.
    template <class Interface> static Interface* install(Interface* replacement) {
        return std::exchange(Slot<Interface>::installed, replacement);
    }

private:
    template <class Interface> struct Slot { static inline Interface* installed = nullptr; };
};

// Installs an implementation for one scope, as tests do.
template <class Interface> class PlatformOverride {
public:
    explicit PlatformOverride(Interface& replacement)
        : m_previous(Platform::install<Interface>(&replacement)) {}
    ~PlatformOverride() { Platform::install<Interface>(m_previous); }
    PlatformOverride(const PlatformOverride&) = delete;
    PlatformOverride& operator=(const PlatformOverride&) = delete;

private:
    Interface* m_previous;
};

} // namespace ostrel
