#pragma once

#include "FieldValue.h"
#include "protocol/DeviceModel.h"
#include "protocol/RecordField.h"

#include <QVariantMap>
#include <string_view>

namespace ostrel {

// The two dictionary forms of a record, both generated from the record's one field list.
//
// Property form: every field under its field name, nil strings left out. Every file the store
// writes for devices and settings holds this form.
//
// Explicit form (toDictionary / initWithDictionary) and the keyed archive (encodeWithCoder /
// initWithCoder): a record's own keys, which differ from the field names in a few places and
// differ between writing and reading in one record. A record opts in by specialising
// ExplicitKeys with a `key(field, use)` that returns the key for that use, or nullptr when the
// field is not part of it. A keyed archive is a QVariantMap of boxed values; copying a record is
// its value semantics (every member, strings included, is copied).

enum class ExplicitUse { Write, ReadDictionary, ReadCoder };

template <class Record> struct ExplicitKeys; // records without an explicit form leave it undefined

// The explicit keys are the field names (the desk capability record).
struct FieldNameKeys {
    static const char* key(const char* field, ExplicitUse) { return field; }
};
template <> struct ExplicitKeys<DeviceModel> : FieldNameKeys {};

namespace detail {

template <class Record, class KeyFor> QVariantMap writeFields(const Record& record, KeyFor keyFor) {
    QVariantMap dictionary;
    forEachField<Record>([&](const auto& field) {
        const char* key = keyFor(field.key);
        QVariant value = FieldValue::box(record.*field.member);
        if (key && value.isValid())
            dictionary.insert(QString::fromLatin1(key), std::move(value));
    });
    return dictionary;
}

template <class Record, class KeyFor>
Record readFields(const QVariantMap& dictionary, KeyFor keyFor) {
    Record record;
    forEachField<Record>([&](const auto& field) {
        if (const char* key = keyFor(field.key))
            FieldValue::unbox(dictionary.value(QString::fromLatin1(key)), record.*field.member);
    });
    return record;
}

template <class Record> auto explicitKeys(ExplicitUse use) {
    return [use](const char* field) { return ExplicitKeys<Record>::key(field, use); };
}

inline const char* fieldName(const char* field) {
    return field;
}

} // namespace detail

template <class Record> QVariantMap toPropertyForm(const Record& record) {
    return detail::writeFields(record, detail::fieldName);
}

template <class Record> Record fromPropertyForm(const QVariantMap& dictionary) {
    return detail::readFields<Record>(dictionary, detail::fieldName);
}

template <class Record> QVariantMap toDictionary(const Record& record) {
    return detail::writeFields(record, detail::explicitKeys<Record>(ExplicitUse::Write));
}

template <class Record> Record initWithDictionary(const QVariantMap& dictionary) {
    return detail::readFields<Record>(dictionary,
                                      detail::explicitKeys<Record>(ExplicitUse::ReadDictionary));
}

// The archive holds the same keys as the explicit form; scalars are boxed.
template <class Record> void encodeWithCoder(const Record& record, QVariantMap& coder) {
    coder.insert(toDictionary(record));
}

template <class Record> Record initWithCoder(const QVariantMap& coder) {
    return detail::readFields<Record>(coder, detail::explicitKeys<Record>(ExplicitUse::ReadCoder));
}

} // namespace ostrel
