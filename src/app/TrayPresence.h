#pragma once

#include <QObject>

namespace ostrel {

// Whether the desktop shows the application's tray icon, and news when that changes. Without a
// tray, a hidden window would leave the user nothing to bring it back with, so the shell keeps
// the window minimised instead. This base holds the answer; DesktopTrayPresence asks the
// desktop, and tests set it.
class TrayPresence : public QObject {
    Q_OBJECT
public:
    explicit TrayPresence(bool available = false, QObject* parent = nullptr)
        : QObject(parent), m_available(available) {}

    bool isAvailable() const { return m_available; }
    void setAvailable(bool available) {
        if (available == m_available)
            return;
        m_available = available;
        emit availabilityChanged(available);
    }

signals:
    void availabilityChanged(bool available);

private:
    bool m_available;
};

} // namespace ostrel
