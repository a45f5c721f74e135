#include "homeautomation/DeskEntities.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QVariantMap>

namespace ostrel {

namespace {

QString latin(const char* text) {
    return QString::fromLatin1(text);
}

const QString kSet = QStringLiteral("set");
const QString kPress = QStringLiteral("press");
const QString kTargetHeight = QStringLiteral("target_height");
const QString kStandingToday = QStringLiteral("standing_today");
const QString kSittingToday = QStringLiteral("sitting_today");

} // namespace

DeskEntities::DeskEntities(Desk desk, QString availability)
    : m_desk(std::move(desk)), m_availability(std::move(availability)),
      m_id(idFor(m_desk.address)) {}

QString DeskEntities::idFor(const QString& address) {
    static const QRegularExpression kNotAlnum(QStringLiteral("[^a-z0-9]"));
    return QStringLiteral("ostrel_") + address.toLower().remove(kNotAlnum);
}

QString DeskEntities::topic(const QString& leaf) const {
    return latin(kTopicRoot) + QLatin1Char('/') + m_id + QLatin1Char('/') + leaf;
}

QString DeskEntities::heightTopic() const {
    return topic(QStringLiteral("height"));
}
QString DeskEntities::movingTopic() const {
    return topic(QStringLiteral("moving"));
}
QString DeskEntities::connectedTopic() const {
    return topic(QStringLiteral("connected"));
}
QString DeskEntities::standingTodayTopic() const {
    return topic(kStandingToday);
}
QString DeskEntities::sittingTodayTopic() const {
    return topic(kSittingToday);
}
QString DeskEntities::targetCommandTopic() const {
    return topic(kTargetHeight + QLatin1Char('/') + kSet);
}
QString DeskEntities::buttonTopic(Button button) const {
    return topic(latin(kButtonNames[std::size_t(button)]) + QLatin1Char('/') + kPress);
}

DeskEntities::Message DeskEntities::config(const char* component, const QString& object,
                                           const QString& name, QVariantMap fields) const {
    const QString uniqueId = m_id + QLatin1Char('_') + object;
    fields.insert({
        {QStringLiteral("name"), name},
        {QStringLiteral("unique_id"), uniqueId},
        {QStringLiteral("object_id"), uniqueId},
        {QStringLiteral("availability_topic"), m_availability},
        {QStringLiteral("device"),
         QVariantMap{{QStringLiteral("identifiers"), QStringList{m_id}},
                     {QStringLiteral("connections"),
                      QVariantList{QStringList{QStringLiteral("bluetooth"), m_desk.address}}},
                     {QStringLiteral("name"), m_desk.name},
                     {QStringLiteral("model"), m_desk.model},
                     {QStringLiteral("manufacturer"), QStringLiteral("Ostrel Motion")}}},
    });
    const QString topic = latin(kDiscoveryPrefix) + QLatin1Char('/') + latin(component) +
                          QLatin1Char('/') + m_id + QLatin1Char('/') + object +
                          QStringLiteral("/config");
    return {topic,
            QJsonDocument(QJsonObject::fromVariantMap(fields)).toJson(QJsonDocument::Compact)};
}

QList<DeskEntities::Message> DeskEntities::discoveryConfigs() const {
    const QString cm = QStringLiteral("cm");
    const auto binary = [this](const QString& state, const char* deviceClass) {
        return QVariantMap{{QStringLiteral("state_topic"), state},
                           {QStringLiteral("payload_on"), latin(kOn)},
                           {QStringLiteral("payload_off"), latin(kOff)},
                           {QStringLiteral("device_class"), latin(deviceClass)}};
    };
    // Whole minutes; a total that starts again at midnight, which Home Assistant reads as a reset.
    const auto minutesToday = [](const QString& state) {
        return QVariantMap{{QStringLiteral("state_topic"), state},
                           {QStringLiteral("unit_of_measurement"), QStringLiteral("min")},
                           {QStringLiteral("device_class"), QStringLiteral("duration")},
                           {QStringLiteral("state_class"), QStringLiteral("total_increasing")}};
    };
    QList<Message> configs = {
        config("sensor", QStringLiteral("height"), QStringLiteral("Height"),
               {{QStringLiteral("state_topic"), heightTopic()},
                {QStringLiteral("unit_of_measurement"), cm},
                {QStringLiteral("device_class"), QStringLiteral("distance")},
                {QStringLiteral("state_class"), QStringLiteral("measurement")},
                {QStringLiteral("suggested_display_precision"), 1}}),
        config("binary_sensor", QStringLiteral("moving"), QStringLiteral("Moving"),
               binary(movingTopic(), "moving")),
        config("binary_sensor", QStringLiteral("connected"), QStringLiteral("Connected"),
               binary(connectedTopic(), "connectivity")),
        config("number", kTargetHeight, QStringLiteral("Target height"),
               {{QStringLiteral("command_topic"), targetCommandTopic()},
                {QStringLiteral("state_topic"), heightTopic()},
                {QStringLiteral("min"), m_desk.minCm},
                {QStringLiteral("max"), m_desk.maxCm},
                {QStringLiteral("step"), kTargetStep},
                {QStringLiteral("unit_of_measurement"), cm},
                {QStringLiteral("mode"), QStringLiteral("box")}}),
        config("sensor", kStandingToday, QStringLiteral("Standing today"),
               minutesToday(standingTodayTopic())),
        config("sensor", kSittingToday, QStringLiteral("Sitting today"),
               minutesToday(sittingTodayTopic())),
    };
    static const std::array kButtonTitles{"Sit", "Stand", "M1", "M2", "Stop"};
    for (std::size_t i = 0; i < kButtonNames.size(); ++i)
        configs << config("button", latin(kButtonNames[i]), latin(kButtonTitles[i]),
                          {{QStringLiteral("command_topic"), buttonTopic(Button(i))}});
    return configs;
}

std::optional<DeskEntities::Command> DeskEntities::commandFor(const QString& topic) {
    const QStringList parts = topic.split(QLatin1Char('/'));
    if (parts.size() != 4 || parts[0] != latin(kTopicRoot))
        return std::nullopt;
    if (parts[2] == kTargetHeight && parts[3] == kSet)
        return Command{parts[1], std::nullopt};
    if (parts[3] != kPress)
        return std::nullopt;
    for (std::size_t i = 0; i < kButtonNames.size(); ++i) {
        if (parts[2] == latin(kButtonNames[i]))
            return Command{parts[1], Button(i)};
    }
    return std::nullopt;
}

QStringList DeskEntities::commandFilters() {
    const QString root = latin(kTopicRoot);
    return {root + QStringLiteral("/+/") + kTargetHeight + QLatin1Char('/') + kSet,
            root + QStringLiteral("/+/+/") + kPress};
}

} // namespace ostrel
