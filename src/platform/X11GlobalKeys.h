#pragma once

#include "platform/GlobalKeyBackend.h"

#include <QAbstractNativeEventFilter>
#include <cstdint>
#include <memory>
#include <xcb/xcb.h>

namespace ostrel {

// Global keys on X11: passive key grabs on the root window, one per key code of each key and
// per NumLock/CapsLock state (a grab matches the modifier state exactly), read back in the
// application's native event filter.
class X11GlobalKeys : public GlobalKeyBackend, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    // Null unless the application runs on an X server.
    static std::unique_ptr<X11GlobalKeys> create();

    X11GlobalKeys(xcb_connection_t* connection, xcb_window_t root);
    ~X11GlobalKeys() override;

    bool isAvailable() const override { return true; }
    QList<int> grab(Combination combination) override;
    void release() override;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    struct Grab {
        int id;
        xcb_keycode_t keycode;
        std::uint16_t modifiers; // without the lock states
    };
    struct Modifiers;

    const Grab* grabFor(xcb_keycode_t keycode, std::uint16_t state) const;
    // A held key repeats: a press of the key still down, or one stamped like the release
    // before it, is the same press.
    bool isRepeat(xcb_keycode_t keycode, xcb_timestamp_t time) const;

    xcb_connection_t* m_connection;
    xcb_window_t m_root;
    QList<Grab> m_grabs;
    std::uint16_t m_lockMask = 0;
    xcb_keycode_t m_down = 0;
    xcb_keycode_t m_releasedKey = 0;
    xcb_timestamp_t m_releasedAt = 0;
};

} // namespace ostrel
