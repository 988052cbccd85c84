#include "text/AppLanguage.h"

#include "model/RawValues.h"

namespace kelpa {

namespace {

constexpr RawValues<AppLanguage, 6> languageRawValues{{{
    {AppLanguage::chinese, u"zh-Hans"},
    {AppLanguage::english, u"en"},
    {AppLanguage::japanese, u"ja"},
    {AppLanguage::korean, u"ko"},
    {AppLanguage::french, u"fr"},
    {AppLanguage::german, u"de"},
}}};

} // namespace

QString rawValue(AppLanguage language)
{
    return languageRawValues.text(language);
}

std::optional<AppLanguage> appLanguageFromRawValue(QStringView text)
{
    return languageRawValues.value(text);
}

QString nativeName(AppLanguage language)
{
    switch (language) {
    case AppLanguage::chinese:
        return QStringLiteral("中文");
    case AppLanguage::english:
        return QStringLiteral("English");
    case AppLanguage::japanese:
        return QStringLiteral("日本語");
    case AppLanguage::korean:
        return QStringLiteral("한국어");
    case AppLanguage::french:
        return QStringLiteral("Français");
    case AppLanguage::german:
        return QStringLiteral("Deutsch");
    }
    Q_UNREACHABLE();
}

} // namespace kelpa
