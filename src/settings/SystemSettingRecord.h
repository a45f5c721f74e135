#pragma once

#include "store/Object_SystemSetting.h"

#include <string>

namespace ostrel {

// The settings record as the settings pages read and change it, through the one in-memory
// settings file. Nothing stored yet reads as the defaults.
class SystemSettingRecord {
public:
    using Field = Object_SystemSetting::Text Object_SystemSetting::*;

    static Object_SystemSetting load();
    // Sets one field on the record as stored now and saves the whole record, so that a page
    // never writes back fields another page changed since it opened. Returns what was saved.
    static Object_SystemSetting change(Field field, std::string value);
    static void save(const Object_SystemSetting& setting);
};

} // namespace ostrel
