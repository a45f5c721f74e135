#pragma once

#include "protocol/RecordField.h"

#include <optional>
#include <string>

namespace ostrel {

// Application-wide settings, every value a text flag or small number compared as text. Only the
// property form exists; it is what "SystemSetting.plist" holds.
struct Object_SystemSetting {
    using Text = std::optional<std::string>;

    Text language = "1"; // stored, never changed by any screen
    Text unit = "1";     // "1" inches (a fresh installation shows inches), "0" centimetres
    Text combinationkey = "0";
    Text combinationopen = "0";
    Text push = "0";
    Text autocatchclean = "0";
    Text pauseaway = "1";    // the sit-stand countdown waits while the user is away
    Text rememberdesk = "0"; // "1": a launch comes back to the desk last used

    bool operator==(const Object_SystemSetting&) const = default;

    static constexpr auto fields() {
        using M = Object_SystemSetting;
        return std::make_tuple(
            recordField("language", &M::language), recordField("unit", &M::unit),
            recordField("combinationkey", &M::combinationkey),
            recordField("combinationopen", &M::combinationopen), recordField("push", &M::push),
            recordField("autocatchclean", &M::autocatchclean),
            recordField("pauseaway", &M::pauseaway), recordField("rememberdesk", &M::rememberdesk));
    }
};

} // namespace ostrel
