#pragma once

#include "RecordDictionary.h"

#include <optional>
#include <string>
#include <string_view>

namespace ostrel {

// An account profile. Nothing in the application fills it; it converts like the other records.
struct AccountModel {
    using Text = std::optional<std::string>;

    bool gender = false;
    int age = 0;
    Text city;
    int height = 0;
    Text idField;
    Text loginId;
    Text nickName;
    Text password; // plain text, as the account service hands it over
    Text post;
    Text userAvatarUrl;

    bool operator==(const AccountModel&) const = default;

    static constexpr auto fields() {
        using M = AccountModel;
        return std::make_tuple(
            recordField("gender", &M::gender), recordField("age", &M::age),
            recordField("city", &M::city), recordField("height", &M::height),
            recordField("idField", &M::idField), recordField("loginId", &M::loginId),
            recordField("nickName", &M::nickName), recordField("password", &M::password),
            recordField("post", &M::post), recordField("userAvatarUrl", &M::userAvatarUrl));
    }
};

template <> struct ExplicitKeys<AccountModel> {
    static const char* key(const char* field, ExplicitUse) {
        return std::string_view(field) == "idField" ? "id" : field;
    }
};

} // namespace ostrel
