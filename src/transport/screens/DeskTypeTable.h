#pragma once

#include <QString>
#include <QStringList>

namespace ostrel {

// The desk models the user can pick, in the order listed.
struct DeskTypeRow {
    const char* label;   // shown, translatable
    const char* picture; // image name
    const char* foldName;
};

class DeskTypeTable {
public:
    static constexpr int kRowCount = 5;
    // Indices past the end fall back to the last model.
    static DeskTypeRow row(int index);
    static QString label(int index); // translated
    // Every model's name (foldName), in the order listed.
    static QStringList models();
};

} // namespace ostrel
