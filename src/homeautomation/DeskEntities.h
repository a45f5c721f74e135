#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <array>
#include <optional>

namespace ostrel {

// One desk as Home Assistant sees it: a device with a height sensor, "moving" and "connected"
// binary sensors, a target-height number, five buttons and the minutes stood and sat at it
// today, announced by retained discovery configs under "homeassistant/". Topics are fixed by the
// desk's address, so a desk keeps its entities across restarts and computers.
class DeskEntities {
public:
    static constexpr char kTopicRoot[] = "ostrel-motion";
    static constexpr char kDiscoveryPrefix[] = "homeassistant";
    // Home Assistant says "online" here when it (re)starts: the configs go out again.
    static constexpr char kHomeAssistantStatus[] = "homeassistant/status";
    static constexpr char kOn[] = "ON";
    static constexpr char kOff[] = "OFF";
    static constexpr double kTargetStep = 0.5;

    // The buttons in their order; the first four are the presets, slot for slot.
    enum class Button { Sit, Stand, M1, M2, Stop };
    static constexpr std::array kButtonNames{"sit", "stand", "m1", "m2", "stop"};

    struct Desk {
        QString name;    // what the user calls it
        QString address; // the Bluetooth address or platform identifier
        QString model;   // the advertised name
        double minCm = 60.0;
        double maxCm = 120.0;
    };
    struct Message {
        QString topic;
        QByteArray payload;
    };

    // `availability`: the bridge's own online/offline topic.
    DeskEntities(Desk desk, QString availability);

    const Desk& desk() const { return m_desk; }
    // "ostrel_" and the address's letters and digits, lower case: ids and topics use it.
    const QString& id() const { return m_id; }
    static QString idFor(const QString& address);

    QString heightTopic() const;
    QString movingTopic() const;
    QString connectedTopic() const;
    QString targetCommandTopic() const;
    QString buttonTopic(Button button) const;
    QString standingTodayTopic() const;
    QString sittingTodayTopic() const;

    QList<Message> discoveryConfigs() const;

    // Which command a topic below kTopicRoot is, for this desk's id; nullopt for neither.
    struct Command {
        QString deskId;
        std::optional<Button> button; // none: the target height
    };
    static std::optional<Command> commandFor(const QString& topic);
    // Filters that match every desk's commands.
    static QStringList commandFilters();

private:
    QString topic(const QString& leaf) const;
    Message config(const char* component, const QString& object, const QString& name,
                   QVariantMap fields) const;

    Desk m_desk;
    QString m_availability;
    QString m_id;
};

} // namespace ostrel
