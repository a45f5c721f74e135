#pragma once

#include <optional>
#include <string>
#include <tuple>

namespace ostrel {

// One field of a record: its dictionary key and the member that holds it. A record lists its
// fields once, as a tuple of these returned by a static `fields()`; the dictionary conversions
// are generated from that list instead of a second hand-written one.
// Member types used by records: std::optional<std::string> (absent means nil), int, bool.
template <class Record, class T> struct RecordField {
    using RecordType = Record;
    using ValueType = T;
    const char* key;
    T Record::*member;
};

template <class Record, class T>
constexpr RecordField<Record, T> recordField(const char* key, T Record::*member) {
    return {key, member};
}

// Calls `visit(field)` for every field of `Record`, in declaration order.
template <class Record, class Visitor> constexpr void forEachField(Visitor&& visit) {
    std::apply([&](const auto&... field) { (visit(field), ...); }, Record::fields());
}

} // namespace ostrel
