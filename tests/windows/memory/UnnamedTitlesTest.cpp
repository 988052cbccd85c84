// Titles that say nothing, in many languages: a window that has one is never certainly another.

#include "windows/memory/KnownApplications.h"
#include "windows/memory/MemoryBuilders.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa::test {
namespace {

struct Unnamed
{
    const char* language;
    const Application& application;
    const char16_t* title;
};

// A title a line.
// clang-format off
inline constexpr auto unnamedTitles = std::to_array<Unnamed>({
    {"Albanian", firefox, u"Skedë e Re — Mozilla Firefox"},
    {"Arabic", firefox, u"لسان جديد — Mozilla Firefox"},
    {"Arabic", chrome, u"علامة تبويب جديدة - Google Chrome"},
    {"Arabic", writer, u"بدون عنوان 1 — LibreOffice Writer"},
    {"Arabic, in its digits", writer, u"بدون عنوان ١ — LibreOffice Writer"},
    {"Azerbaijani", firefox, u"Yeni Vərəq — Mozilla Firefox"},
    {"Basque", writer, u"Izengabea 1 — LibreOffice Writer"},
    {"Belarusian", firefox, u"Новая картка — Mozilla Firefox"},
    {"Bengali", chrome, u"নতুন ট্যাব - Google Chrome"},
    {"Bosnian", firefox, u"Novi tab — Mozilla Firefox"},
    {"Bulgarian", firefox, u"Нов раздел — Mozilla Firefox"},
    {"Bulgarian", writer, u"Неозаглавен 2 — LibreOffice Writer"},
    {"Catalan", firefox, u"Pestanya nova — Mozilla Firefox"},
    {"Catalan", gedit, u"Document sense títol 1 - gedit"},
    {"Croatian", firefox, u"Nova kartica — Mozilla Firefox"},
    {"Croatian", writer, u"Bez naslova 1 — LibreOffice Writer"},
    {"Czech", firefox, u"Nový panel — Mozilla Firefox"},
    {"Czech", writer, u"Bez názvu 1 — LibreOffice Writer"},
    {"Czech", nautilus, u"Domů"},
    {"Danish", firefox, u"Nyt faneblad — Mozilla Firefox"},
    {"Danish", nautilus, u"Hjem"},
    {"Dutch", writer, u"Naamloos 1 — LibreOffice Writer"},
    {"Dutch", nautilus, u"Persoonlijke map"},
    {"Estonian", firefox, u"Uus kaart — Mozilla Firefox"},
    {"Finnish", firefox, u"Uusi välilehti — Mozilla Firefox"},
    {"Finnish", nautilus, u"Koti"},
    {"Greek", firefox, u"Νέα καρτέλα — Mozilla Firefox"},
    {"Greek, with a final sigma", writer, u"Χωρίς τίτλο 1 — LibreOffice Writer"},
    {"Greek", nautilus, u"Προσωπικός φάκελος"},
    {"Hebrew", chrome, u"כרטיסייה חדשה - Google Chrome"},
    {"Hebrew, with marks of direction", firefox, u"\u200fלשונית חדשה\u200f — Mozilla Firefox"},
    {"Hebrew", writer, u"ללא כותרת 1 — LibreOffice Writer"},
    {"Hindi", chrome, u"नया टैब - Google Chrome"},
    {"Hungarian", firefox, u"Új lap — Mozilla Firefox"},
    {"Hungarian", writer, u"Névtelen 1 — LibreOffice Writer"},
    {"Icelandic", firefox, u"Nýr flipi — Mozilla Firefox"},
    {"Indonesian", chrome, u"Tab Baru - Google Chrome"},
    {"Indonesian", writer, u"Tanpa Judul 1 — LibreOffice Writer"},
    {"Irish", firefox, u"Cluaisín Nua — Mozilla Firefox"},
    {"Italian", writer, u"Senza nome 1 — LibreOffice Writer"},
    {"Italian", dolphin, u"Scrivania — Dolphin"},
    {"Kazakh", firefox, u"Жаңа бет — Mozilla Firefox"},
    {"Latvian", firefox, u"Jauna cilne — Mozilla Firefox"},
    {"Lithuanian", firefox, u"Nauja kortelė — Mozilla Firefox"},
    {"Lithuanian", writer, u"Be pavadinimo 1 — LibreOffice Writer"},
    {"Malay", chrome, u"Tab Baharu - Google Chrome"},
    {"Norwegian", firefox, u"Ny fane — Mozilla Firefox"},
    {"Norwegian", writer, u"Uten navn 1 — LibreOffice Writer"},
    {"Persian", firefox, u"زبانه جدید — Mozilla Firefox"},
    {"Persian, joined by a character that is not seen", writer, u"بی\u200cنام 1 — LibreOffice Writer"},
    {"Polish", firefox, u"Nowa karta — Mozilla Firefox"},
    {"Polish", dolphin, u"Pulpit — Dolphin"},
    {"Portuguese", firefox, u"Novo separador — Mozilla Firefox"},
    {"Portuguese", nautilus, u"Pasta pessoal"},
    {"Romanian", firefox, u"Filă nouă — Mozilla Firefox"},
    {"Romanian", writer, u"Fără titlu 1 — LibreOffice Writer"},
    {"Serbian", firefox, u"Нови језичак — Mozilla Firefox"},
    {"Slovak", writer, u"Bez mena 1 — LibreOffice Writer"},
    {"Slovenian", firefox, u"Nov zavihek — Mozilla Firefox"},
    {"Slovenian", writer, u"Neimenovano 1 — LibreOffice Writer"},
    {"Spanish", writer, u"Sin título 1 — LibreOffice Writer"},
    {"Swedish", firefox, u"Ny flik — Mozilla Firefox"},
    {"Swedish", nautilus, u"Hem"},
    {"Tamil", chrome, u"புதிய தாவல் - Google Chrome"},
    {"Thai", firefox, u"แท็บใหม่ — Mozilla Firefox"},
    {"Thai, with a letter of two", nautilus, u"กำลังโหลด"},
    {"Turkish", firefox, u"Yeni Sekme — Mozilla Firefox"},
    {"Turkish, with a dotted capital", gedit, u"İsimsiz Belge 1 - gedit"},
    {"Turkish", nautilus, u"İndirilenler"},
    {"Ukrainian", firefox, u"Нова вкладка — Mozilla Firefox"},
    {"Ukrainian", nautilus, u"Домівка"},
    {"Urdu", chrome, u"نیا ٹیب - Google Chrome"},
    {"Vietnamese", firefox, u"Thẻ mới — Mozilla Firefox"},
    {"Vietnamese", writer, u"Không tên 1 — LibreOffice Writer"},
    {"Welsh", firefox, u"Tab Newydd — Mozilla Firefox"},
    // Pages that stand in for any other.
    {"English, without a network", firefox, u"Problem loading page — Mozilla Firefox"},
    {"English, without a network", firefox, u"Server Not Found — Mozilla Firefox"},
    {"German, without a network", firefox, u"Seiten-Ladefehler — Mozilla Firefox"},
    {"French, without a network", firefox, u"Adresse introuvable — Mozilla Firefox"},
    {"Japanese, without a network", firefox, u"ページ読み込みエラー — Mozilla Firefox"},
    {"Chinese, after a crash", firefox, u"恢复会话 — Mozilla Firefox"},
    {"English, without an account", chrome, u"Sign in - Example Accounts - Google Chrome"},
    {"Korean, without an account", chrome, u"로그인 - Google Chrome"},
});

/// The same words within a name.
inline constexpr auto namedTitles = std::to_array<Unnamed>({
    {"Czech", writer, u"Nový panel do kuchyně.odt — LibreOffice Writer"},
    {"Dutch", dolphin, u"Bureaublad van Anna — Dolphin"},
    {"English", firefox, u"How to sign in twice — Mozilla Firefox"},
    {"Greek", firefox, u"Χωρίς τίτλο σπουδών — Mozilla Firefox"},
    {"Hungarian", firefox, u"Új lap indul a városban — Mozilla Firefox"},
    {"Polish", nautilus, u"Dokumenty podatkowe"},
    {"Russian", firefox, u"Вход в метро закрыт — Mozilla Firefox"},
    {"Turkish", nautilus, u"Ev ödevleri"},
});
// clang-format on

WindowTraits unnamedTraits(const Unnamed& of)
{
    return {QString::fromUtf16(of.application.id),
            QString::fromUtf16(of.application.name),
            {},
            {},
            {},
            visibleText(QString::fromUtf16(of.title))};
}

std::optional<MatchCertainty> certaintyOf(const Unnamed& of)
{
    const AbsentWindow before = absentWindow(1, GoalID::create(), unnamedTraits(of));
    const WindowMatches matches = matchedWindows({before}, {newWindow(2, unnamedTraits(of))});
    const auto match = matches.constFind(2);
    return match != matches.constEnd() ? std::optional(match->certainty) : std::nullopt;
}

TEST(UnnamedTitles, Identify_no_window_in_any_of_these_languages)
{
    for (const Unnamed& each : unnamedTitles) {
        EXPECT_EQ(certaintyOf(each), MatchCertainty::perhaps)
            << each.language << ": " << QString::fromUtf16(each.title).toStdString();
    }
}

TEST(UnnamedTitles, A_name_that_has_their_words_identifies_its_window)
{
    for (const Unnamed& each : namedTitles) {
        EXPECT_EQ(certaintyOf(each), MatchCertainty::certain)
            << each.language << ": " << QString::fromUtf16(each.title).toStdString();
    }
}

} // namespace
} // namespace kelpa::test
