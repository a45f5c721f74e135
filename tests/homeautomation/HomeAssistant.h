#pragma once

#include "MosquittoBroker.h"
#include "app/RealTimeWait.h"
#include "homeautomation/MqttClient.h"

#include <QHash>

namespace ostrel::test {

inline constexpr int kNetworkWaitMs = 10000;

// Home Assistant's side: one more client of the broker, hearing everything.
class HomeAssistant : public QObject {
public:
    explicit HomeAssistant(const MosquittoBroker& broker, bool tls = false) {
        connect(&client, &MqttClient::messageReceived, this,
                [this](const QString& topic, const QByteArray& payload, bool) {
                    heard.insert(topic, payload);
                    ++times[topic];
                });
        MqttClient::Options options;
        options.host = QStringLiteral("localhost");
        options.port = broker.port();
        options.user = MosquittoBroker::kUser;
        options.password = MosquittoBroker::kPassword;
        options.tls = tls;
        options.caFile = broker.caFile();
        options.clientId = QStringLiteral("home-assistant");
        client.start(options);
        if (waitUntil([this] { return client.state() == MqttClient::State::Connected; },
                      kNetworkWaitMs))
            client.subscribe(QStringLiteral("#"));
    }

    bool hears(const QString& topic, const QByteArray& payload) {
        return waitUntil([&] { return heard.value(topic) == payload; }, kNetworkWaitMs);
    }

    // What was heard last on the topics that start and end so.
    QHash<QString, QByteArray> heardOn(const char* start, const char* end = "") const {
        QHash<QString, QByteArray> found;
        for (auto it = heard.begin(); it != heard.end(); ++it) {
            if (it.key().startsWith(QLatin1String(start)) && it.key().endsWith(QLatin1String(end)))
                found.insert(it.key(), it.value());
        }
        return found;
    }

    MqttClient client;
    QHash<QString, QByteArray> heard;
    QHash<QString, int> times; // how often each topic was heard
};

} // namespace ostrel::test
