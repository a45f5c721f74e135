#pragma once

// A screen locker on a test bus under the name it is given (org.freedesktop.ScreenSaver or
// org.gnome.ScreenSaver), at the path that name spells: GetActive and ActiveChanged. It can
// leave the bus and come back.
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

namespace ostrel::test {

class ScreenSaverStandin : public QDBusVirtualObject {
public:
    ScreenSaverStandin(const QDBusConnection& bus, const QString& service)
        : m_bus(bus), m_service(service), m_path(u'/' + QString(service).replace(u'.', u'/')) {
        m_bus.registerVirtualObject(m_path, this);
        appear();
    }
    ~ScreenSaverStandin() override {
        vanish();
        m_bus.unregisterObject(m_path);
    }

    void appear() { m_bus.registerService(m_service); }
    void vanish() { m_bus.unregisterService(m_service); }
    void setActive(bool active) {
        m_active = active;
        QDBusMessage signal =
            QDBusMessage::createSignal(m_path, m_service, QStringLiteral("ActiveChanged"));
        signal << active;
        m_bus.send(signal);
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        return message.member() == u"GetActive" && connection.send(message.createReply(m_active));
    }
    QString introspect(const QString&) const override { return {}; }

private:
    QDBusConnection m_bus;
    QString m_service;
    QString m_path;
    bool m_active = false;
};

} // namespace ostrel::test
