#pragma once

#include "homeautomation/HomeAutomationSettings.h"

#include <QObject>
#include <optional>

namespace ostrel {

class DeskStatePublisher;
class MqttClient;

// The desk in Home Assistant, over MQTT: off unless the settings switch it on. Connected, it
// says "online" on its availability topic (the broker says "offline" for it when the
// application goes away), announces the bound desks by discovery, publishes their state and
// takes commands for the connected one when control is allowed. Every (re)connection and every
// Home Assistant restart republishes everything.
class HomeAutomationBridge : public QObject {
    Q_OBJECT
public:
    static constexpr char kOnline[] = "online";
    static constexpr char kOffline[] = "offline";

    // The password is kept by the platform's SecretStore.
    explicit HomeAutomationBridge(QObject* parent = nullptr);
    ~HomeAutomationBridge() override;

    // Reads the settings and the password, and connects when the bridge is on.
    void start();
    // Says "offline" and closes the connection.
    void shutdown();
    // Saves the settings (and the password, when given; empty removes it), then reconnects.
    void applySettings(const Object_HomeAutomation& settings, std::optional<QString> password);

    const Object_HomeAutomation& settings() const { return m_settings; }
    // A line for the settings page: off, connecting, connected, or what went wrong.
    QString statusText() const;
    QString availabilityTopic() const;
    MqttClient& client() const { return *m_client; }
    DeskStatePublisher& publisher() const { return *m_publisher; }

signals:
    void statusChanged();
    // Every command heard, after it was carried out or refused.
    void commandHandled(bool accepted, const QString& reason);

private:
    void connectWith(const std::optional<QString>& password);
    void onConnected();
    void onMessage(const QString& topic, const QByteArray& payload, bool retained);
    // A problem of the settings themselves, or empty.
    QString settingsProblem() const;

    MqttClient* m_client;
    DeskStatePublisher* m_publisher;
    Object_HomeAutomation m_settings;
    int m_attempt = 0; // a password read for older settings is not used
};

} // namespace ostrel
