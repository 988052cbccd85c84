// The languages of the interface.
#pragma once

#include <QString>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa {

/// In the order of the language menu.
enum class AppLanguage : std::uint8_t { chinese, english, japanese, korean, french, german };

inline constexpr std::array allAppLanguages{AppLanguage::chinese,  AppLanguage::english,
                                            AppLanguage::japanese, AppLanguage::korean,
                                            AppLanguage::french,   AppLanguage::german};

/// The stored text of a language (a BCP 47 tag), and back; case-sensitive, any other text gives
/// none.
QString rawValue(AppLanguage language);
std::optional<AppLanguage> appLanguageFromRawValue(QStringView text);

/// The language's own name for itself, as the menu shows it.
QString nativeName(AppLanguage language);

} // namespace kelpa
