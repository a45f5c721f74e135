#pragma once

#include "RecordField.h"

#include <optional>
#include <string>

namespace ostrel {

// The desk's capabilities and limits as its controller reports them. Built from the
// device-information frame and never persisted; most fields are carried for completeness.
struct DeviceModel {
    std::optional<std::string> bluetoothName;
    int currentSetSpeed = 0;
    std::optional<std::string> deviceName;
    bool goal = false;
    int goalCount = 0;
    int goalStand = 0;
    bool isChangeLeg = false;
    int mUnit = 0;
    int maxHeight = 0;
    int maxLegSpeed = 0;
    int minHeight = 0;
    int minLegSpeed = 0;
    int productSubType = 0;
    int productType = 0;
    std::optional<std::string> reminderRingtone;
    bool sedentary = false;
    int sedentaryCycle = 0;
    std::optional<std::string> sedentaryEnd;
    std::optional<std::string> sedentaryRepeat;
    std::optional<std::string> sedentaryStart;
    int sensitivity = 0;
    int sit = 0;
    int stand = 0;
    bool supportAdjustSingleLeg = false;
    bool supportAdjustSpeed = false;
    bool supportAutoBalance = false;
    bool supportBack = false;
    bool supportChildLock = false;
    bool supportEmergencyStop = false;
    bool supportIAP = false;
    bool supportShowNewEncode = false;
    bool supportWillMeetObstacle = false;
    int tableThickness = 0;
    int weight = 0;

    bool operator==(const DeviceModel&) const = default;

    static constexpr auto fields() {
        using M = DeviceModel;
        return std::make_tuple(
            recordField("bluetoothName", &M::bluetoothName),
            recordField("currentSetSpeed", &M::currentSetSpeed),
            recordField("deviceName", &M::deviceName), recordField("goal", &M::goal),
            recordField("goalCount", &M::goalCount), recordField("goalStand", &M::goalStand),
            recordField("isChangeLeg", &M::isChangeLeg), recordField("mUnit", &M::mUnit),
            recordField("maxHeight", &M::maxHeight), recordField("maxLegSpeed", &M::maxLegSpeed),
            recordField("minHeight", &M::minHeight), recordField("minLegSpeed", &M::minLegSpeed),
            recordField("productSubType", &M::productSubType),
            recordField("productType", &M::productType),
            recordField("reminderRingtone", &M::reminderRingtone),
            recordField("sedentary", &M::sedentary),
            recordField("sedentaryCycle", &M::sedentaryCycle),
            recordField("sedentaryEnd", &M::sedentaryEnd),
            recordField("sedentaryRepeat", &M::sedentaryRepeat),
            recordField("sedentaryStart", &M::sedentaryStart),
            recordField("sensitivity", &M::sensitivity), recordField("sit", &M::sit),
            recordField("stand", &M::stand),
            recordField("supportAdjustSingleLeg", &M::supportAdjustSingleLeg),
            recordField("supportAdjustSpeed", &M::supportAdjustSpeed),
            recordField("supportAutoBalance", &M::supportAutoBalance),
            recordField("supportBack", &M::supportBack),
            recordField("supportChildLock", &M::supportChildLock),
            recordField("supportEmergencyStop", &M::supportEmergencyStop),
            recordField("supportIAP", &M::supportIAP),
            recordField("supportShowNewEncode", &M::supportShowNewEncode),
            recordField("supportWillMeetObstacle", &M::supportWillMeetObstacle),
            recordField("tableThickness", &M::tableThickness), recordField("weight", &M::weight));
    }
};

} // namespace ostrel
