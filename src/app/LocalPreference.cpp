#include "LocalPreference.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

namespace ostrel {

namespace {

const QString kEnglish = QStringLiteral("en");
const QString kChinese = QStringLiteral("zh-Hans");

} // namespace

QString LocalPreference::getCurrentBundleWithLocalizeString() {
    QSettings settings;
    QString language = settings.value(QLatin1String(kLanguageKey)).toString();
    if (language.isEmpty()) {
        language = languageForPreferences(QLocale::system().uiLanguages());
        settings.setValue(QLatin1String(kLanguageKey), language);
    }
    // An unknown stored value falls back to English, as a missing translation would.
    return language == kChinese ? kChinese : kEnglish;
}

QString LocalPreference::languageForPreferences(const QStringList& preferred) {
    // Only the first preference counts: a Chinese translation is offered to whoever asks
    // for Chinese first, English to everyone else.
    if (!preferred.isEmpty() && preferred.first().startsWith(QLatin1String("zh")))
        return kChinese;
    return kEnglish;
}

QString LocalPreference::translationSuffix(const QString& language) {
    return language == kChinese ? QStringLiteral("zh_CN") : kEnglish;
}

int LocalPreference::installTranslators(QCoreApplication& application) {
    const QString suffix = translationSuffix(getCurrentBundleWithLocalizeString());
    const QDir folder(QStringLiteral(":/i18n"));
    int loaded = 0;
    for (const QString& file : folder.entryList({QStringLiteral("*_%1.qm").arg(suffix)})) {
        auto* translator = new QTranslator(&application);
        if (translator->load(folder.filePath(file)) &&
            QCoreApplication::installTranslator(translator))
            ++loaded;
        else
            delete translator;
    }
    return loaded;
}

} // namespace ostrel
