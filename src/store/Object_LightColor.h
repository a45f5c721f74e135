#pragma once

#include "protocol/RecordField.h"

namespace ostrel {

// The light strip's state. Only the property form exists; it travels inside the light-colour
// change notification and is never stored. Copying one record into another is plain assignment.
struct Object_LightColor {
    int open = 0; // strip off
    int mode = 1;
    int red = 0;
    int green = 0;
    int blue = 0;

    bool operator==(const Object_LightColor&) const = default;

    static constexpr auto fields() {
        using M = Object_LightColor;
        return std::make_tuple(recordField("open", &M::open), recordField("mode", &M::mode),
                               recordField("red", &M::red), recordField("green", &M::green),
                               recordField("blue", &M::blue));
    }
};

} // namespace ostrel
