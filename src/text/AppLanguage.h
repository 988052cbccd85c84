// The languages of the interface.
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa {

/// In the order of the language menu. A new one does not compile before it has its row in
/// AppLanguage.cpp, its place in `allAppLanguages`, its parameter in `PerLanguage`, each of its
/// texts and its font in the views.
enum class AppLanguage : std::uint8_t { chinese, english, japanese, korean, french, german };

inline constexpr std::array allAppLanguages{AppLanguage::chinese,  AppLanguage::english,
                                            AppLanguage::japanese, AppLanguage::korean,
                                            AppLanguage::french,   AppLanguage::german};

/// The stored text of a language (a BCP 47 tag), and back: case-sensitive, and none for any other
/// text.
QString rawValue(AppLanguage language);
std::optional<AppLanguage> appLanguageFromRawValue(QStringView text);

/// The first of a person's languages that the interface speaks; none when it speaks none of them.
/// `preferred` holds BCP 47 tags, the dearest first. Of Chinese, it speaks the simplified script.
std::optional<AppLanguage> spokenLanguage(const QStringList& preferred);

/// The name of the language in that language, as the menu shows it.
QString nativeName(AppLanguage language);

} // namespace kelpa
