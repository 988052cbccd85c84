#include "text/AppLanguage.h"

#include <algorithm>
#include <string_view>

namespace kelpa {

namespace {

struct LanguageNames
{
    std::u16string_view rawValue;
    std::u16string_view nativeName;
};

#pragma GCC diagnostic push
// An error even where warnings do not end the build.
#pragma GCC diagnostic error "-Wswitch"

/// Empty names for a number that is no language.
constexpr LanguageNames namesOf(AppLanguage language)
{
    switch (language) {
    case AppLanguage::chinese:
        return {u"zh-Hans", u"中文"};
    case AppLanguage::english:
        return {u"en", u"English"};
    case AppLanguage::japanese:
        return {u"ja", u"日本語"};
    case AppLanguage::korean:
        return {u"ko", u"한국어"};
    case AppLanguage::french:
        return {u"fr", u"Français"};
    case AppLanguage::german:
        return {u"de", u"Deutsch"};
    }
    return {};
}

#pragma GCC diagnostic pop

/// The switch above has a case for every enumerator, so the first number without names follows the
/// last of them.
constexpr bool listsEveryLanguageInOrder()
{
    for (std::size_t i = 0; i < allAppLanguages.size(); ++i) {
        const LanguageNames names = namesOf(allAppLanguages[i]);
        if (allAppLanguages[i] != static_cast<AppLanguage>(i) || names.rawValue.empty() ||
            names.nativeName.empty())
            return false;
    }
    return namesOf(static_cast<AppLanguage>(allAppLanguages.size())).rawValue.empty();
}
static_assert(listsEveryLanguageInOrder(), "allAppLanguages names every language, in order");

} // namespace

QString rawValue(AppLanguage language)
{
    return QStringView(namesOf(language).rawValue).toString();
}

std::optional<AppLanguage> appLanguageFromRawValue(QStringView text)
{
    const auto found = std::ranges::find_if(allAppLanguages, [text](AppLanguage language) {
        return text == QStringView(namesOf(language).rawValue);
    });
    return found == allAppLanguages.end() ? std::nullopt : std::optional(*found);
}

std::optional<AppLanguage> spokenLanguage(const QStringList& preferred)
{
    for (const QString& tag : preferred) {
        const QStringList parts = tag.split(u'-');
        const bool isTraditional = std::ranges::any_of(
            std::array{u"Hant", u"TW", u"HK", u"MO"},
            [&parts](const char16_t* part) { return parts.contains(QStringView(part)); });
        const auto found = std::ranges::find_if(allAppLanguages, [&](AppLanguage language) {
            return rawValue(language).section(u'-', 0, 0) == parts.front() &&
                   !(language == AppLanguage::chinese && isTraditional);
        });
        if (found != allAppLanguages.end())
            return *found;
    }
    return std::nullopt;
}

QString nativeName(AppLanguage language)
{
    return QStringView(namesOf(language).nativeName).toString();
}

} // namespace kelpa
