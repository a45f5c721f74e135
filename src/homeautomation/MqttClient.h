#pragma once

#include "core/Scheduler.h"
#include "core/TimerHandle.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>
#include <optional>

class QSocketNotifier;
struct mosquitto;
struct mosquitto_message;

namespace ostrel {

// One connection to an MQTT broker through libmosquitto, driven by the Qt event loop: the
// socket sits in socket notifiers that call libmosquitto's read and write steps, and a timer
// keeps the connection alive. Only the connect (a name lookup, and for TLS the handshake's
// start) runs on a worker thread; nothing here waits on the network on the calling thread.
//
// A lost or failed connection is retried with growing pauses. A broker that refuses the user
// name or password, or settings that cannot work, are not retried: that would only hammer the
// broker with the same wrong answer. start() again (with new settings) tries anew.
class MqttClient : public QObject {
    Q_OBJECT
public:
    static constexpr Scheduler::Duration kFirstRetry{1000};
    static constexpr Scheduler::Duration kLongestRetry{60000};
    static constexpr int kKeepAliveSeconds = 30;

    struct Options {
        QString host;
        int port = 1883;
        QString user;
        QString password;
        bool tls = false;
        QString caFile; // empty: the system's certificate authorities
        QString clientId;
        // Published by the broker when the connection ends without a goodbye.
        QString willTopic;
        QByteArray willPayload;
    };

    enum class State { Off, Connecting, Connected, Retrying, Refused };
    Q_ENUM(State)

    explicit MqttClient(QObject* parent = nullptr);
    ~MqttClient() override;

    void start(const Options& options);
    // Sends what is still queued, says goodbye (no last will) and closes.
    void stop();

    State state() const { return m_state; }
    // Why the last attempt failed, in words for the settings page; empty when all is well.
    const QString& problem() const { return m_problem; }
    // The pause before the next attempt, while retrying.
    Scheduler::Duration retryDelay() const { return m_retryDelay; }

    // Both return false when not connected; nothing is queued for later.
    bool publish(const QString& topic, const QByteArray& payload, bool retain);
    bool subscribe(const QString& filter);

signals:
    void connected();
    void stateChanged(ostrel::MqttClient::State state);
    void messageReceived(const QString& topic, const QByteArray& payload, bool retained);

private:
    struct Handle;

    bool configure(const Options& options);
    void connectNow();
    void connectDone(int generation, int result);
    void watchSocket();
    void unwatchSocket();
    void readReady();
    void writeReady();
    void keepAlive();
    // After every libmosquitto step: a failed step means the connection is gone.
    void afterStep(int result);
    static QString failure(int result);
    void connectionLost(const QString& why);
    void refuse(const QString& why);
    void setState(State state, const QString& problem = {});
    void updateWriteInterest();

    static void onConnect(mosquitto* mosq, void* self, int code);
    static void onMessage(mosquitto* mosq, void* self, const mosquitto_message* message);

    std::shared_ptr<Handle> m_handle;
    Options m_options;
    State m_state = State::Off;
    QString m_problem;
    int m_generation = 0;
    std::optional<int> m_connack;
    QSocketNotifier* m_read = nullptr;
    QSocketNotifier* m_write = nullptr;
    // libmosquitto's keep-alive runs on its own real-time clock, so this timer does too.
    QTimer m_keepAlive;
    TimerHandle m_retry;
    Scheduler::Duration m_backoff = kFirstRetry;
    Scheduler::Duration m_retryDelay{};
};

} // namespace ostrel
