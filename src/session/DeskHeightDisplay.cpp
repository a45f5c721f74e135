#include "session/DeskHeightDisplay.h"

#include "store/DQDataSessionHelper.h"
#include "store/Object_SystemSetting.h"
#include "store/RecordDictionary.h"

#include <algorithm>

namespace ostrel {

QString DeskHeightDisplay::normalisedHeight(const QString& reported) {
    const double value = reported.toDouble();
    if (value < kInchReportLimit)
        return QString::asprintf("%f", value * kCmPerInch);
    return reported;
}

QString DeskHeightDisplay::heightText(double tenthsCm, bool inches) {
    const double cm = tenthsCm / 10.0;
    return inches ? QString::asprintf("%.1fin", cm / kCmPerInch) : QString::asprintf("%.1fcm", cm);
}

bool DeskHeightDisplay::usesInches() {
    const auto setting =
        fromPropertyForm<Object_SystemSetting>(DQDataSessionHelper::userGetSystemSettinginfo());
    return setting.unit == "1";
}

DeskHeightDisplay::Legs DeskHeightDisplay::legsForModel(const QString& foldName) {
    // Fixed per model to match each model's artwork.
    if (foldName == u"D5Plus")
        return {57.73f, 44.0f};
    if (foldName == u"D5Q")
        return {44.49f, 48.5f};
    if (foldName == u"D5L")
        return {42.0f, 42.5f};
    if (foldName == u"D5Pro")
        return {43.84f, 55.7f};
    return {40.7f, 48.4f};
}

DeskHeightDisplay::Offsets DeskHeightDisplay::pictureOffsets(float heightTenths, int minHeight,
                                                             int maxHeight, Legs legs) {
    // Limits from a confused controller (max not above min) draw the desk fully raised.
    if (maxHeight <= minHeight)
        return {0.0f, 0.0f};
    const auto low = static_cast<float>(minHeight);
    const auto high = static_cast<float>(maxHeight);
    const float h = std::clamp(heightTenths, low, high);
    const float r = (h - low) / (high - low);
    return {(legs.fir + legs.sec) * (1.0f - r), legs.sec * (1.0f - r)};
}

} // namespace ostrel
