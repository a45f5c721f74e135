#pragma once

#include "platform/BusPresenceSource.h"

namespace ostrel {

// logind's word on this login session: away while its LockedHint is set (the desktop's locker
// sets it, whatever the desktop). The session is the one of XDG_SESSION_ID, else the one logind
// picks for the caller.
class LogindLockedHint : public BusPresenceSource {
    Q_OBJECT
public:
    static constexpr const char* kService = "org.freedesktop.login1";
    static constexpr const char* kSessionInterface = "org.freedesktop.login1.Session";

    explicit LogindLockedHint(const QDBusConnection& bus, QObject* parent = nullptr);

protected:
    void attach() override;
    void detach() override;

private slots:
    // Named by text: the bus connects signals by signature.
    void propertiesChanged(const QString& interface, const QVariantMap& changed,
                           const QStringList& invalidated);

private:
    void follow(const QString& sessionPath);
    void readHint();
    void subscribe(bool on);

    QString m_session;
};

} // namespace ostrel
