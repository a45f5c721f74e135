#include "homeautomation/HomeAutomationSettings.h"

#include "store/DQDataCatchHelper.h"
#include "store/RecordDictionary.h"

namespace ostrel {

Object_HomeAutomation HomeAutomationSettings::load() {
    const QVariantList list =
        DQDataCatchHelper::getFileWithFileName(QString::fromLatin1(kFileName));
    const QVariantMap stored = list.isEmpty() ? QVariantMap() : list.first().toMap();
    // A key left out of a provisioned file keeps its default.
    return fromPropertyForm<Object_HomeAutomation>(stored);
}

void HomeAutomationSettings::save(const Object_HomeAutomation& record) {
    DQDataCatchHelper::saveFileWithFileName(QString::fromLatin1(kFileName),
                                            QVariantList{toPropertyForm(record)});
}

QString HomeAutomationSettings::text(const Object_HomeAutomation::Text& value) {
    return QString::fromStdString(value.value_or(std::string())).trimmed();
}

std::optional<int> HomeAutomationSettings::port(const Object_HomeAutomation& record) {
    bool ok = false;
    const int number = text(record.mqttPort).toInt(&ok);
    if (!ok || number < 1 || number > 65535)
        return std::nullopt;
    return number;
}

} // namespace ostrel
