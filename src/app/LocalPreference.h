#pragma once

#include <QString>
#include <QStringList>

class QCoreApplication;

namespace ostrel {

// The user's language: "en" or "zh-Hans", kept under "userLanguage" in the settings. The first
// launch picks it from the system's preferred languages and stores it.
class LocalPreference {
public:
    static constexpr char kLanguageKey[] = "userLanguage";

    // The language the screens use, choosing and storing it when none is stored yet.
    static QString getCurrentBundleWithLocalizeString();
    // The stored value for a list of preferred languages, best first ("zh-CN", "en-GB"...).
    static QString languageForPreferences(const QStringList& preferred);
    // The suffix of the compiled translation files: "en" or "zh_CN".
    static QString translationSuffix(const QString& language);
    // Installs every embedded :/i18n/*_<suffix>.qm; returns how many were loaded.
    static int installTranslators(QCoreApplication& application);
};

} // namespace ostrel
