#pragma once

#include <QDBusConnection>
#include <QObject>

namespace ostrel {

// One running application per user session. The first instance owns a name on the session bus
// and answers Activate by showing its window; a later launch calls Activate and exits, which is
// how the window comes back where no tray icon exists. Under the same name it serves the desk
// to scripts (DeskBusAdaptor). Without a session bus every launch runs.
class SingleInstance : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ostrel.motion.Application")
public:
    explicit SingleInstance(QDBusConnection connection, QObject* parent = nullptr);
    ~SingleInstance() override;

    // True when this process is the one to run: it now owns the name (or there is no bus).
    bool claim();
    // Asks the running instance to show its window; false when none answered.
    bool activateRunning();

public slots:
    Q_SCRIPTABLE void Activate();

signals:
    void activated();

private:
    void exportDesk();

    QDBusConnection m_connection;
    bool m_owner = false;
};

} // namespace ostrel
