#include "homeautomation/HomeAutomationBridge.h"

#include "homeautomation/DeskStatePublisher.h"
#include "homeautomation/MqttClient.h"
#include "homeautomation/RemoteCommand.h"
#include "platform/Platform.h"
#include "platform/SecretStore.h"

#include <QLoggingCategory>
#include <QRegularExpression>
#include <QSysInfo>

namespace ostrel {

namespace {

Q_LOGGING_CATEGORY(lcBridge, "ostrel.homeautomation")

// This computer's name as a topic level: the availability is the application's, not a desk's.
QString nodeName() {
    static const QRegularExpression kUnsafe(QStringLiteral("[^A-Za-z0-9_-]"));
    const QString name = QSysInfo::machineHostName().remove(kUnsafe);
    return name.isEmpty() ? QStringLiteral("desktop") : name;
}

SecretStore& secrets() {
    return Platform::get<SecretStore>();
}

QString secretKey() {
    return QString::fromLatin1(HomeAutomationSettings::kSecretKey);
}

} // namespace

HomeAutomationBridge::HomeAutomationBridge(QObject* parent)
    : QObject(parent), m_client(new MqttClient(this)),
      m_publisher(new DeskStatePublisher(*m_client, availabilityTopic(), this)) {
    connect(m_client, &MqttClient::connected, this, &HomeAutomationBridge::onConnected);
    connect(m_client, &MqttClient::stateChanged, this, &HomeAutomationBridge::statusChanged);
    connect(m_client, &MqttClient::messageReceived, this, &HomeAutomationBridge::onMessage);
}

HomeAutomationBridge::~HomeAutomationBridge() {
    shutdown();
}

QString HomeAutomationBridge::availabilityTopic() const {
    return QString::fromLatin1(DeskEntities::kTopicRoot) + QLatin1Char('/') + nodeName() +
           QStringLiteral("/availability");
}

void HomeAutomationBridge::start() {
    shutdown(); // settings that switch the bridge off must not leave it "online"
    m_settings = HomeAutomationSettings::load();
    const int attempt = ++m_attempt;
    if (HomeAutomationSettings::flag(m_settings.mqttEnabled) && settingsProblem().isEmpty())
        secrets().load(secretKey(), this, [this, attempt](std::optional<QString> password) {
            if (attempt == m_attempt)
                connectWith(password);
        });
    emit statusChanged();
}

void HomeAutomationBridge::shutdown() {
    ++m_attempt;
    m_client->publish(availabilityTopic(), kOffline, true);
    m_client->stop();
}

void HomeAutomationBridge::applySettings(const Object_HomeAutomation& settings,
                                         std::optional<QString> password) {
    HomeAutomationSettings::save(settings);
    if (!password) {
        start();
        return;
    }
    shutdown();
    secrets().store(secretKey(), *password, this, [this](bool ok) {
        if (!ok)
            qCWarning(lcBridge) << "The MQTT password could not be stored.";
        start();
    });
}

QString HomeAutomationBridge::settingsProblem() const {
    if (HomeAutomationSettings::text(m_settings.mqttHost).isEmpty())
        return tr("Enter the broker's host name.");
    if (!HomeAutomationSettings::port(m_settings))
        return tr("The port must be a number from 1 to 65535.");
    return {};
}

void HomeAutomationBridge::connectWith(const std::optional<QString>& password) {
    MqttClient::Options options;
    options.host = HomeAutomationSettings::text(m_settings.mqttHost);
    options.port = HomeAutomationSettings::port(m_settings).value_or(0);
    options.user = HomeAutomationSettings::text(m_settings.mqttUser);
    options.password = password.value_or(QString());
    options.tls = HomeAutomationSettings::flag(m_settings.mqttTls);
    options.caFile = HomeAutomationSettings::text(m_settings.mqttCaFile);
    options.clientId = QStringLiteral("ostrel-motion-") + nodeName();
    options.willTopic = availabilityTopic();
    options.willPayload = kOffline;
    m_client->start(options);
}

void HomeAutomationBridge::onConnected() {
    m_client->publish(availabilityTopic(), kOnline, true);
    m_client->subscribe(QString::fromLatin1(DeskEntities::kHomeAssistantStatus));
    for (const QString& filter : DeskEntities::commandFilters())
        m_client->subscribe(filter);
    m_publisher->publishAll();
}

void HomeAutomationBridge::onMessage(const QString& topic, const QByteArray& payload,
                                     bool retained) {
    if (topic == QLatin1String(DeskEntities::kHomeAssistantStatus)) {
        if (payload == kOnline)
            m_publisher->publishAll();
        return;
    }
    const std::optional<DeskEntities::Command> command = DeskEntities::commandFor(topic);
    // A command someone left retained would otherwise move the desk at every connection.
    if (!command || retained)
        return;
    const RemoteCommand::Context context{m_publisher->session(), m_publisher->liveDeskId(),
                                         HomeAutomationSettings::flag(m_settings.mqttAllowControl)};
    const RemoteCommand::Outcome outcome = RemoteCommand::run(context, *command, payload);
    if (outcome.accepted)
        qCInfo(lcBridge).noquote() << "Carried out" << topic << payload.left(32);
    else
        qCWarning(lcBridge).noquote()
            << "Refused" << topic << payload.left(32) << ":" << outcome.reason;
    emit commandHandled(outcome.accepted, outcome.reason);
}

QString HomeAutomationBridge::statusText() const {
    if (!HomeAutomationSettings::flag(m_settings.mqttEnabled))
        return tr("Off");
    if (const QString problem = settingsProblem(); !problem.isEmpty())
        return problem;
    const QString host = HomeAutomationSettings::text(m_settings.mqttHost);
    switch (m_client->state()) {
    case MqttClient::State::Connected:
        return tr("Connected to %1.").arg(host);
    case MqttClient::State::Retrying:
        return tr("%1 Trying again in %2 s.")
            .arg(m_client->problem())
            .arg(std::chrono::duration_cast<std::chrono::seconds>(m_client->retryDelay()).count());
    case MqttClient::State::Refused:
        return m_client->problem();
    case MqttClient::State::Connecting:
    case MqttClient::State::Off:
        break;
    }
    return tr("Connecting to %1…").arg(host);
}

} // namespace ostrel
