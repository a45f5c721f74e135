#include "app/LocalPreference.h"

#include "app/HomeErrorVC.h"
#include "app/StatusMenu.h"

#include <QApplication>
#include <QSettings>
#include <QTranslator>
#include <gtest/gtest.h>

namespace ostrel {
namespace {

// The languages the user prefers, and the one stored for them.
using PreferenceCase = std::pair<QStringList, const char*>;

class LanguageChoiceTest : public ::testing::TestWithParam<PreferenceCase> {};

TEST_P(LanguageChoiceTest, FirstPreferenceDecides) {
    EXPECT_EQ(LocalPreference::languageForPreferences(GetParam().first),
              QLatin1String(GetParam().second));
}

INSTANTIATE_TEST_SUITE_P(Preferences, LanguageChoiceTest,
                         ::testing::Values(PreferenceCase{{"zh-CN", "en-US"}, "zh-Hans"},
                                           PreferenceCase{{"zh-Hans-CN"}, "zh-Hans"},
                                           PreferenceCase{{"en-GB", "zh-CN"}, "en"},
                                           PreferenceCase{{"fr-FR"}, "en"},
                                           PreferenceCase{{}, "en"}));

class TranslationTest : public ::testing::Test {
protected:
    void TearDown() override {
        for (QTranslator* translator : qApp->findChildren<QTranslator*>()) {
            QCoreApplication::removeTranslator(translator);
            delete translator;
        }
        QSettings().remove(QLatin1String(LocalPreference::kLanguageKey));
    }

    static void storeLanguage(const char* language) {
        QSettings().setValue(QLatin1String(LocalPreference::kLanguageKey), QLatin1String(language));
    }
};

TEST_F(TranslationTest, FirstLaunchStoresItsChoiceAndAnUnknownOneFallsBackToEnglish) {
    QSettings().remove(QLatin1String(LocalPreference::kLanguageKey));
    const QString chosen = LocalPreference::getCurrentBundleWithLocalizeString();
    EXPECT_TRUE(chosen == "en" || chosen == "zh-Hans");
    EXPECT_EQ(QSettings().value(QLatin1String(LocalPreference::kLanguageKey)).toString(), chosen);

    storeLanguage("de");
    EXPECT_EQ(LocalPreference::getCurrentBundleWithLocalizeString(), QStringLiteral("en"));
}

TEST_F(TranslationTest, EnglishTranslatesTheChineseKeys) {
    storeLanguage("en");
    ASSERT_GE(LocalPreference::installTranslators(*qApp), 1);
    StatusMenu menu;
    EXPECT_EQ(menu.QuitOstrelMotion->text(), QStringLiteral("Quit Ostrel Motion"));
    EXPECT_EQ(HomeErrorVC::errorCodeText(7), QStringLiteral("Desk fault, error code E07"));
}

TEST_F(TranslationTest, ChineseLoadsEveryChineseFileAndOnlyThose) {
    storeLanguage("zh-Hans");
    ASSERT_GE(LocalPreference::installTranslators(*qApp), 1);
    for (const QTranslator* translator : qApp->findChildren<QTranslator*>())
        EXPECT_EQ(translator->language(), QStringLiteral("zh_CN"));
    StatusMenu menu;
    EXPECT_EQ(menu.aboutOstrel->text(), QStringLiteral("关于 Ostrel Motion"));
    EXPECT_EQ(HomeErrorVC::errorCodeText(0xCCCC), QStringLiteral("升降桌故障，错误代码 LOC"));
}

} // namespace
} // namespace ostrel
