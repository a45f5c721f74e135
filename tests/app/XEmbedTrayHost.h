#pragma once

// A system tray for tests on a bare X server: it owns the tray selection of screen 0 as a panel
// does, docks the icon window that asks for it at the top left of the screen, and so lets xdotool
// click a tray icon where a user would. Qt may replace its icon window once; the last one counts.
#include <QList>
#include <QPoint>
#include <QSocketNotifier>
#include <memory>
#include <xcb/xcb.h>

namespace ostrel::test {

class XEmbedTrayHost {
public:
    static constexpr int kIconSize = 24;

    XEmbedTrayHost() : m_connection(xcb_connect(nullptr, nullptr)) {
        if (xcb_connection_has_error(m_connection))
            return;
        xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
        m_window = xcb_generate_id(m_connection);
        const uint32_t values[] = {screen->white_pixel, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
        xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0,
                          kIconSize, kIconSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
                          screen->root_visual,
                          XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values);
        xcb_map_window(m_connection, m_window);
        m_opcode = atom("_NET_SYSTEM_TRAY_OPCODE");
        const xcb_atom_t selection = atom("_NET_SYSTEM_TRAY_S0");
        xcb_set_selection_owner(m_connection, m_window, selection, XCB_CURRENT_TIME);
        // Clients already waiting for a tray hear that one is there.
        xcb_client_message_event_t manager{};
        manager.response_type = XCB_CLIENT_MESSAGE;
        manager.format = 32;
        manager.window = screen->root;
        manager.type = atom("MANAGER");
        manager.data.data32[0] = XCB_CURRENT_TIME;
        manager.data.data32[1] = selection;
        manager.data.data32[2] = m_window;
        xcb_send_event(m_connection, 0, screen->root, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&manager));
        xcb_flush(m_connection);
        m_notifier = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(m_connection),
                                                       QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { readEvents(); });
    }

    ~XEmbedTrayHost() {
        m_notifier.reset();
        xcb_disconnect(m_connection);
    }

    bool isRunning() const { return m_window != 0; }
    bool hasIcon() const { return !m_icons.isEmpty(); }
    // Where the docked icon is on the screen.
    static QPoint iconCentre() { return {kIconSize / 2, kIconSize / 2}; }

private:
    xcb_atom_t atom(const char* name) {
        xcb_intern_atom_reply_t* reply = xcb_intern_atom_reply(
            m_connection, xcb_intern_atom(m_connection, 0, uint16_t(qstrlen(name)), name), nullptr);
        const xcb_atom_t found = reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
        free(reply);
        return found;
    }

    void readEvents() {
        while (xcb_generic_event_t* event = xcb_poll_for_event(m_connection)) {
            const int type = event->response_type & 0x7f;
            if (type == XCB_CLIENT_MESSAGE) {
                const auto* message = reinterpret_cast<xcb_client_message_event_t*>(event);
                constexpr uint32_t kRequestDock = 0;
                if (message->type == m_opcode && message->data.data32[1] == kRequestDock)
                    dock(message->data.data32[2]);
            } else if (type == XCB_DESTROY_NOTIFY) {
                m_icons.removeAll(reinterpret_cast<xcb_destroy_notify_event_t*>(event)->window);
            }
            free(event);
        }
    }

    void dock(xcb_window_t icon) {
        xcb_reparent_window(m_connection, icon, m_window, 0, 0);
        const uint32_t size[] = {kIconSize, kIconSize};
        xcb_configure_window(m_connection, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT,
                             size);
        xcb_map_window(m_connection, icon);
        xcb_flush(m_connection);
        m_icons.append(icon);
    }

    xcb_connection_t* m_connection;
    xcb_window_t m_window = 0;
    xcb_atom_t m_opcode = XCB_ATOM_NONE;
    QList<xcb_window_t> m_icons;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace ostrel::test
