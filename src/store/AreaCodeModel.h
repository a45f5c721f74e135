#pragma once

#include "RecordDictionary.h"

#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// One telephone area code entry, kept with the account record.
struct AreaCodeModel {
    using Text = std::optional<std::string>;

    Text areaCode;
    int idField = 0;
    Text name;
    Text nameEn;

    bool operator==(const AreaCodeModel&) const = default;

    static constexpr auto fields() {
        using M = AreaCodeModel;
        return std::make_tuple(recordField("areaCode", &M::areaCode),
                               recordField("idField", &M::idField), recordField("name", &M::name),
                               recordField("nameEn", &M::nameEn));
    }
};

// The explicit keys follow the area-code service's snake case.
template <> struct ExplicitKeys<AreaCodeModel> {
    static const char* key(const char* field, ExplicitUse) {
        const std::string_view name(field);
        if (name == "areaCode")
            return "area_code";
        if (name == "idField")
            return "id";
        if (name == "nameEn")
            return "name_en";
        return field;
    }
};

} // namespace ostrel
