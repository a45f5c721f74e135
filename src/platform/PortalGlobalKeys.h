#pragma once

#include "platform/GlobalKeyBackend.h"

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QString>
#include <QVariantMap>
#include <memory>

namespace ostrel {

// Global keys on Wayland through the desktop portal's GlobalShortcuts interface: a session,
// the six keys bound in it with the combination as the preferred trigger, and the portal's
// Activated signal. The desktop may let the user pick other triggers; the keys keep their
// identifiers whatever the user picks.
class PortalGlobalKeys : public GlobalKeyBackend {
    Q_OBJECT
public:
    static constexpr char kService[] = "org.freedesktop.portal.Desktop";
    static constexpr char kPath[] = "/org/freedesktop/portal/desktop";
    static constexpr char kInterface[] = "org.freedesktop.portal.GlobalShortcuts";

    // Null when the session bus has no portal offering global shortcuts.
    static std::unique_ptr<PortalGlobalKeys> create();

    PortalGlobalKeys();
    ~PortalGlobalKeys() override;

    bool isAvailable() const override { return true; }
    // The portal answers later; the keys count as taken unless it refuses the session.
    QList<int> grab(Combination combination) override;
    void release() override;

    // The trigger the portal is asked for, e.g. "CTRL+LOGO+Up".
    static QString preferredTrigger(Combination combination, const char* key);

private slots:
    void sessionCreated(uint response, const QVariantMap& results);
    void shortcutsBound(uint response, const QVariantMap& results);
    // (session, shortcut id, timestamp, options), read from the message whole.
    void onActivated(const QDBusMessage& message);

private:
    // Portal calls answer through a Request object whose path the caller can predict; listening
    // starts before the call so that no answer is missed.
    QString expectResponse(const char* slot);
    void stopListening(const char* slot);
    void bindShortcuts();

    Combination m_combination = kShift;
    bool m_wanted = false;
    QString m_session;
    QString m_pendingRequest;
    int m_nextToken = 0;
};

} // namespace ostrel
