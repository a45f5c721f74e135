#pragma once

#include <QVariant>
#include <optional>
#include <string>

namespace ostrel {

// Boxing and unboxing of the three member types records use, shared by every dictionary form.
// In dictionaries the null object is QVariant::fromValue(nullptr); any null QVariant (a default
// one included) is treated the same way.
class FieldValue {
public:
    // An invalid QVariant for a nil string: the key is then left out of the dictionary.
    static QVariant box(const std::optional<std::string>& text);
    static QVariant box(int number);
    static QVariant box(bool flag);

    // A missing or null value leaves `member` as it is (its default); so does a value of
    // a kind that cannot become the member's type (a list or a dictionary).
    static void unbox(const QVariant& value, std::optional<std::string>& member);
    static void unbox(const QVariant& value, int& member);
    static void unbox(const QVariant& value, bool& member);
};

} // namespace ostrel
