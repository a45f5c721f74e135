#pragma once

#include <QList>
#include <QObject>

namespace ostrel {

class VirtualCentral;
class VirtualDesk;

// Demo mode: the application's Bluetooth runs over built-in virtual desks instead of the radio,
// so everything can be tried without hardware. Keep it alive as long as the application runs.
class DemoDesks : public QObject {
    Q_OBJECT
public:
    explicit DemoDesks(QObject* parent = nullptr);
    ~DemoDesks() override;

    VirtualCentral* central() const { return m_central; }
    const QList<VirtualDesk*>& desks() const { return m_desks; }

private:
    VirtualCentral* m_central;
    QList<VirtualDesk*> m_desks;
};

} // namespace ostrel
