#pragma once

#include "RecordDictionary.h"

#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// One desk the user has bound. The screens read every value as text, numbers and flags
// included; only deleteFlag, relationId and isRepeat are scalars.
struct OMBluetoothModel {
    using Text = std::optional<std::string>;

    Text bluetoothId;
    Text deviceName;
    Text bluetoothName; // the record's lookup key
    Text bluetoothMacAddress;
    Text connectionDuration;
    Text connectionState;
    Text createTime; // "yyyy-MM-dd HH:mm:ss"
    bool deleteFlag = false;
    Text deviceModel;
    Text deviceType;
    Text encounterResistanceGoBack;
    Text firmwareVersion;
    Text idField;
    Text lastConnectionTime; // "yyyy-MM-dd HH:mm"
    Text maxLimit;
    Text memoryHeight; // Sit, Stand, M1, M2 joined by ","
    Text minLimit;
    int relationId = 0;
    Text remindType;
    Text remindInterval;
    Text notificationsound;
    Text remindModel;
    Text resistanceSensitivity;
    Text sitOrStand;
    Text isCustom;
    Text tapLift;
    Text willBlockGoBack;
    Text isOnLine;
    int isRepeat = 0;

    bool operator==(const OMBluetoothModel&) const = default;

    static constexpr auto fields() {
        using M = OMBluetoothModel;
        return std::make_tuple(
            recordField("bluetoothId", &M::bluetoothId), recordField("deviceName", &M::deviceName),
            recordField("bluetoothName", &M::bluetoothName),
            recordField("bluetoothMacAddress", &M::bluetoothMacAddress),
            recordField("connectionDuration", &M::connectionDuration),
            recordField("connectionState", &M::connectionState),
            recordField("createTime", &M::createTime), recordField("deleteFlag", &M::deleteFlag),
            recordField("deviceModel", &M::deviceModel), recordField("deviceType", &M::deviceType),
            recordField("encounterResistanceGoBack", &M::encounterResistanceGoBack),
            recordField("firmwareVersion", &M::firmwareVersion),
            recordField("idField", &M::idField),
            recordField("lastConnectionTime", &M::lastConnectionTime),
            recordField("maxLimit", &M::maxLimit), recordField("memoryHeight", &M::memoryHeight),
            recordField("minLimit", &M::minLimit), recordField("relationId", &M::relationId),
            recordField("remindType", &M::remindType),
            recordField("remindInterval", &M::remindInterval),
            recordField("notificationsound", &M::notificationsound),
            recordField("remindModel", &M::remindModel),
            recordField("resistanceSensitivity", &M::resistanceSensitivity),
            recordField("sitOrStand", &M::sitOrStand), recordField("isCustom", &M::isCustom),
            recordField("tapLift", &M::tapLift),
            recordField("willBlockGoBack", &M::willBlockGoBack),
            recordField("isOnLine", &M::isOnLine), recordField("isRepeat", &M::isRepeat));
    }
};

// The explicit form is lopsided on purpose, and stored dictionaries depend on it: the id lives
// under "id"; "remindType" is written and decoded from an archive but not read back from a
// dictionary; isRepeat appears in neither.
template <> struct ExplicitKeys<OMBluetoothModel> {
    static const char* key(const char* field, ExplicitUse use) {
        const std::string_view name(field);
        if (name == "idField")
            return "id";
        if (name == "isRepeat" || (name == "remindType" && use == ExplicitUse::ReadDictionary))
            return nullptr;
        return field;
    }
};

} // namespace ostrel
