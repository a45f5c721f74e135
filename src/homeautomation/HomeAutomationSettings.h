#pragma once

#include "protocol/RecordField.h"

#include <QString>
#include <optional>
#include <string>

namespace ostrel {

// The MQTT bridge's settings as "HomeAutomation.plist" holds them: an array of one dictionary,
// every value a string, so an administrator can provision the file before the first start. The
// password is never here (see SecretStore).
struct Object_HomeAutomation {
    using Text = std::optional<std::string>;

    Text mqttEnabled = "0";
    Text mqttAllowControl = "0";
    Text mqttHost = "";
    Text mqttPort = "1883";
    Text mqttUser = "";
    Text mqttTls = "0";
    Text mqttCaFile = "";

    bool operator==(const Object_HomeAutomation&) const = default;

    static constexpr auto fields() {
        using M = Object_HomeAutomation;
        return std::make_tuple(
            recordField("mqttEnabled", &M::mqttEnabled),
            recordField("mqttAllowControl", &M::mqttAllowControl),
            recordField("mqttHost", &M::mqttHost), recordField("mqttPort", &M::mqttPort),
            recordField("mqttUser", &M::mqttUser), recordField("mqttTls", &M::mqttTls),
            recordField("mqttCaFile", &M::mqttCaFile));
    }
};

// Reading and writing the file, and the values as the bridge uses them.
class HomeAutomationSettings {
public:
    static constexpr char kFileName[] = "HomeAutomation.plist";
    // Where the password lives in the secret store.
    static constexpr char kSecretKey[] = "mqtt";

    static Object_HomeAutomation load(); // a missing or unreadable file gives the defaults
    static void save(const Object_HomeAutomation& record);

    static bool flag(const Object_HomeAutomation::Text& text) { return text == "1"; }
    static QString text(const Object_HomeAutomation::Text& value);
    // The port as a number, or nullopt when it is not one from 1 to 65535.
    static std::optional<int> port(const Object_HomeAutomation& record);
};

} // namespace ostrel
