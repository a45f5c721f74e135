#pragma once

#include "store/Object_SystemSetting.h"

namespace ostrel {

// The settings record as the settings pages load and save it, whole, through the in-memory
// settings file. Nothing stored yet reads as the defaults.
class SystemSettingRecord {
public:
    static Object_SystemSetting load();
    static void save(const Object_SystemSetting& setting);
};

} // namespace ostrel
