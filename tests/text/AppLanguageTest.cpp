#include "text/AppLanguage.h"

#include "text/TextPrinting.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using enum AppLanguage;

struct LanguageRow
{
    AppLanguage language;
    const char16_t* rawValue;
    const char16_t* nativeName;
};

TEST(AppLanguage, The_menu_lists_every_language_by_its_own_name)
{
    const std::array rows = std::to_array<LanguageRow>({
        {chinese, u"zh-Hans", u"中文"},
        {english, u"en", u"English"},
        {japanese, u"ja", u"日本語"},
        {korean, u"ko", u"한국어"},
        {french, u"fr", u"Français"},
        {german, u"de", u"Deutsch"},
    });
    ASSERT_EQ(rows.size(), allAppLanguages.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(allAppLanguages[i], rows[i].language);
        EXPECT_EQ(nativeName(rows[i].language), QString::fromUtf16(rows[i].nativeName));
        EXPECT_EQ(rawValue(rows[i].language), QString::fromUtf16(rows[i].rawValue));
        EXPECT_EQ(appLanguageFromRawValue(QString::fromUtf16(rows[i].rawValue)), rows[i].language);
    }
}

TEST(AppLanguage, Any_other_text_names_no_language)
{
    for (const char16_t* text :
         {u"EN", u"zh", u"zh-hans", u"zh-Hans ", u" en", u"en-US", u"", u"0"})
        EXPECT_EQ(appLanguageFromRawValue(QString::fromUtf16(text)), std::nullopt);
}

struct PreferenceRow
{
    const char16_t* tags;
    std::optional<AppLanguage> language;
};

TEST(AppLanguage, The_first_language_of_a_person_that_the_interface_speaks_is_found)
{
    const std::array rows = std::to_array<PreferenceRow>({
        {u"en-Latn-GB en-GB en", english},
        {u"de-AT", german},
        {u"it-IT it fr-CH", french},
        {u"ja", japanese},
        {u"ko-KR", korean},
        {u"zh-Hans-CN zh-CN zh", chinese},
        {u"zh-Hant-TW zh-TW", std::nullopt},
        {u"zh-HK en", english},
        {u"C", std::nullopt},
        {u"eng EN", std::nullopt},
        {u"", std::nullopt},
    });
    for (const PreferenceRow& row : rows)
        EXPECT_EQ(spokenLanguage(QString::fromUtf16(row.tags).split(u' ')), row.language)
            << qPrintable(QString::fromUtf16(row.tags));
}

} // namespace
} // namespace kelpa
