#include "platform/X11GlobalKeys.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <X11/keysym.h>
#include <cstdlib>
#include <xcb/xcb_keysyms.h>

namespace ostrel {

namespace {

constexpr std::array<xcb_keysym_t, GlobalKeyBackend::kKeys.size()> kKeysyms{XK_Up, XK_Down, XK_1,
                                                                            XK_2,  XK_3,    XK_4};

// xcb hands out replies and key code lists that the caller frees.
template <class T> using Owned = std::unique_ptr<T, decltype(&std::free)>;

template <class T> Owned<T> owned(T* pointer) {
    return Owned<T>(pointer, &std::free);
}

} // namespace

// The modifier bits of the running keyboard map: Alt, Super and NumLock move between the
// Mod1..Mod5 bits from one map to another.
struct X11GlobalKeys::Modifiers {
    std::uint16_t alt = XCB_MOD_MASK_1;
    std::uint16_t super = XCB_MOD_MASK_4;
    std::uint16_t numLock = XCB_MOD_MASK_2;

    Modifiers(xcb_connection_t* connection, xcb_key_symbols_t* symbols) {
        auto reply = owned(xcb_get_modifier_mapping_reply(
            connection, xcb_get_modifier_mapping(connection), nullptr));
        if (!reply)
            return;
        const xcb_keycode_t* mapped = xcb_get_modifier_mapping_keycodes(reply.get());
        const int perModifier = reply->keycodes_per_modifier;
        auto maskOf = [&](xcb_keysym_t keysym, std::uint16_t fallback) -> std::uint16_t {
            auto codes = owned(xcb_key_symbols_get_keycode(symbols, keysym));
            for (int bit = 0; codes && bit < 8; ++bit)
                for (int i = 0; i < perModifier; ++i)
                    for (const xcb_keycode_t* code = codes.get(); *code != XCB_NO_SYMBOL; ++code)
                        if (mapped[bit * perModifier + i] == *code)
                            return std::uint16_t(1u << bit);
            return fallback;
        };
        alt = maskOf(XK_Alt_L, alt);
        super = maskOf(XK_Super_L, super);
        numLock = maskOf(XK_Num_Lock, numLock);
    }

    std::uint16_t of(Combination combination) const {
        switch (combination) {
        case kCtrlSuper:
            return std::uint16_t(XCB_MOD_MASK_CONTROL | super);
        case kAltSuper:
            return std::uint16_t(alt | super);
        case kShift:
            break;
        }
        return XCB_MOD_MASK_SHIFT;
    }
};

std::unique_ptr<X11GlobalKeys> X11GlobalKeys::create() {
    auto* x11 = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    xcb_connection_t* connection = x11 ? x11->connection() : nullptr;
    if (!connection)
        return nullptr;
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    return std::make_unique<X11GlobalKeys>(connection, screen->root);
}

X11GlobalKeys::X11GlobalKeys(xcb_connection_t* connection, xcb_window_t root)
    : m_connection(connection), m_root(root) {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11GlobalKeys::~X11GlobalKeys() {
    if (QCoreApplication* app = QCoreApplication::instance())
        app->removeNativeEventFilter(this);
}

QList<int> X11GlobalKeys::grab(Combination combination) {
    release();
    auto symbols = std::unique_ptr<xcb_key_symbols_t, decltype(&xcb_key_symbols_free)>(
        xcb_key_symbols_alloc(m_connection), &xcb_key_symbols_free);
    const Modifiers modifiers(m_connection, symbols.get());
    const std::uint16_t wanted = modifiers.of(combination);
    m_lockMask = std::uint16_t(XCB_MOD_MASK_LOCK | modifiers.numLock);
    const std::uint16_t lockStates[] = {0, XCB_MOD_MASK_LOCK, modifiers.numLock, m_lockMask};

    QList<int> taken;
    for (std::size_t k = 0; k < kKeys.size(); ++k) {
        auto codes = owned(xcb_key_symbols_get_keycode(symbols.get(), kKeysyms[k]));
        bool complete = codes && *codes != XCB_NO_SYMBOL;
        for (const xcb_keycode_t* code = codes.get(); code && *code != XCB_NO_SYMBOL; ++code) {
            m_grabs.append({kKeys[k].id, *code, wanted});
            for (std::uint16_t locks : lockStates) {
                // Checked one by one: a grab another client holds fails with BadAccess.
                const auto error = owned(xcb_request_check(
                    m_connection,
                    xcb_grab_key_checked(m_connection, 1, m_root, std::uint16_t(wanted | locks),
                                         *code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
                complete = complete && !error;
            }
        }
        if (!complete)
            taken.append(kKeys[k].id);
    }
    xcb_flush(m_connection);
    return taken;
}

void X11GlobalKeys::release() {
    for (const Grab& grab : std::as_const(m_grabs))
        for (std::uint16_t locks : {std::uint16_t(0), std::uint16_t(XCB_MOD_MASK_LOCK),
                                    std::uint16_t(m_lockMask & ~XCB_MOD_MASK_LOCK), m_lockMask})
            xcb_ungrab_key(m_connection, grab.keycode, m_root,
                           std::uint16_t(grab.modifiers | locks));
    if (!m_grabs.isEmpty())
        xcb_flush(m_connection);
    m_grabs.clear();
    m_down = 0;
}

const X11GlobalKeys::Grab* X11GlobalKeys::grabFor(xcb_keycode_t keycode,
                                                  std::uint16_t state) const {
    const auto modifiers = std::uint16_t(state & ~m_lockMask & 0xff);
    for (const Grab& grab : m_grabs)
        if (grab.keycode == keycode && grab.modifiers == modifiers)
            return &grab;
    return nullptr;
}

bool X11GlobalKeys::isRepeat(xcb_keycode_t keycode, xcb_timestamp_t time) const {
    return keycode == m_down || (keycode == m_releasedKey && time == m_releasedAt);
}

bool X11GlobalKeys::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const auto type = event->response_type & 0x7f;
    if (type != XCB_KEY_PRESS && type != XCB_KEY_RELEASE)
        return false;
    const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event);
    if (type == XCB_KEY_RELEASE) {
        if (key->detail == m_down)
            m_down = 0;
        m_releasedKey = key->detail;
        m_releasedAt = key->time;
        return false;
    }
    const Grab* grab = key->event == m_root ? grabFor(key->detail, key->state) : nullptr;
    if (!grab)
        return false;
    const bool repeat = isRepeat(key->detail, key->time);
    m_down = key->detail;
    if (!repeat)
        emit activated(grab->id);
    return true;
}

} // namespace ostrel
