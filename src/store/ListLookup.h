#pragma once

#include <QString>
#include <QVariantList>

namespace ostrel {

// Lookups in the stored lists of dictionaries: linear from the start, exact (case-sensitive)
// text comparison, first match only.
class ListLookup {
public:
    // A stored value as text: texts as they are, numbers in decimal, booleans as "1" / "0";
    // a missing or null value prints as "(null)".
    static QString text(const QVariant& value);
    // Index of the first dictionary whose value under `key` reads as `text`; -1 when none.
    // A dictionary without the key never matches.
    static qsizetype indexOf(const QVariantList& list, const QString& key, const QString& text);
};

} // namespace ostrel
