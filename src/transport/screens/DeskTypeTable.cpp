#include "transport/screens/DeskTypeTable.h"

#include <QCoreApplication>
#include <array>

namespace ostrel {

namespace {

constexpr std::array<DeskTypeRow, DeskTypeTable::kRowCount> kRows{{
    {QT_TRANSLATE_NOOP("DeskTypeTable", "D5 Plus"), "connect_desk_D5Plus", "D5Plus"},
    {QT_TRANSLATE_NOOP("DeskTypeTable", "D5Q"), "connect_desk_D5Q", "D5Q"},
    {QT_TRANSLATE_NOOP("DeskTypeTable", "D5L"), "connect_desk_D5L", "D5L"},
    {QT_TRANSLATE_NOOP("DeskTypeTable", "D5 Pro"), "connect_desk_D5Pro", "D5Pro"},
    {QT_TRANSLATE_NOOP("DeskTypeTable", "D5"), "connect_desk_D5", "D5"},
}};

} // namespace

DeskTypeRow DeskTypeTable::row(int index) {
    return index >= 0 && index < kRowCount ? kRows[std::size_t(index)] : kRows.back();
}

QString DeskTypeTable::label(int index) {
    return QCoreApplication::translate("DeskTypeTable", row(index).label);
}

QStringList DeskTypeTable::models() {
    QStringList names;
    for (const DeskTypeRow& model : kRows)
        names.append(QLatin1String(model.foldName));
    return names;
}

} // namespace ostrel
