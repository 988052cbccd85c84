// Windows that browse in private, as browsers say so in many languages, and windows that only show
// a page about it.

#include "windows/memory/RememberedWindowsFixture.h"

#include <array>

namespace kelpa::test {
namespace {

constexpr Privacy none = Privacy::none;
constexpr Privacy mentioned = Privacy::mentioned;
constexpr Privacy said = Privacy::said;

struct PrivateCase
{
    const char16_t* title;
    Privacy privacy;
    const char16_t* role = u"";
    const char16_t* instance = u"";
    const char16_t* windowClass = u"";
};

constexpr std::array privateCases = std::to_array<PrivateCase>({
    {u"Weather — Mozilla Firefox", none, u"browser", u"Navigator"},
    {u"Private Ryan — Mozilla Firefox", none},
    {u"Diary (private) - Notes", none},
    {u"Private", none},
    {u"Saving Private Ryan (1998) - Google Chrome", none},
    {u"Weather — Mozilla Firefox (Private Browsing)", said},
    {u"Weather — Mozilla Firefox Private Browsing", said},
    {u"Mozilla Firefox (Private Browsing)", said},
    {u"Weather - Google Chrome (Incognito)", said},
    {u"Weather - Chromium (Incognito)", said},
    {u"Weather - [InPrivate] - Microsoft Edge", said},
    {u"Weather - Brave (Private)", said},
    {u"Weather - Opera (Private)", said},
    {u"Weather - Vivaldi (Private Window)", said},
    {u"Weather - Falkon (Private Browsing)", said},
    {u"New Incognito Tab", mentioned},
    {u"New Private Tab", mentioned},
    {u"How to browse in Incognito mode - Wikipedia — Mozilla Firefox", mentioned},
    {u"Incognito - Wikipedia", mentioned},
    {u"Tor Browser", mentioned},
    // The names of browsers inside other words.
    {u"Report - Operation Incognito", mentioned},
    {u"Report - Knowledge (Incognito)", mentioned},
    {u"Report - Citizen (Private)", none},
    {u"Wetter - Opera115 (Private)", said},
    {u"天气 - 某浏览器 (无痕模式)", said},
    // Firefox and its kin.
    {u"Wetter — Mozilla Firefox (Privater Modus)", said},
    {u"Wetter — Mozilla Firefox Privater Modus", said},
    {u"Météo — Mozilla Firefox (Navigation privée)", said},
    {u"Me\u0301te\u0301o — Mozilla Firefox (Navigation prive\u0301e)", said},
    {u"El tiempo — Mozilla Firefox (Navegación privada)", said},
    {u"Tempo — Mozilla Firefox (Navegação privativa)", said},
    {u"Meteorologia — Mozilla Firefox (Navegação privada)", said},
    {u"Meteo — Mozilla Firefox (Navigazione anonima)", said},
    {u"Weer — Mozilla Firefox (Privénavigatie)", said},
    {u"Pogoda — Mozilla Firefox (Tryb prywatny)", said},
    {u"Počasí — Mozilla Firefox (Anonymní prohlížení)", said},
    {u"Počasie — Mozilla Firefox (Súkromné prehliadanie)", said},
    {u"Időjárás — Mozilla Firefox (Privát böngészés)", said},
    {u"Väder — Mozilla Firefox (Privat surfning)", said},
    {u"Vejr — Mozilla Firefox (Privat browsing)", said},
    {u"Vær — Mozilla Firefox (Privat nettlesing)", said},
    {u"Sää — Mozilla Firefox (Yksityinen selaus)", said},
    {u"Hava — Mozilla Firefox (Gizli Gezinti)", said},
    {u"Καιρός — Mozilla Firefox (Ιδιωτική περιήγηση)", said},
    {u"Vremea — Mozilla Firefox (Navigare privată)", said},
    {u"El temps — Mozilla Firefox (Navegació privada)", said},
    {u"Погода — Mozilla Firefox (Приватный просмотр)", said},
    {u"Погода — Mozilla Firefox (Приватний перегляд)", said},
    {u"Времето — Mozilla Firefox (Поверително разглеждане)", said},
    {u"天気 — Mozilla Firefox (プライベートブラウジング)", said},
    {u"날씨 — Mozilla Firefox (사생활 보호 모드)", said},
    {u"天气 — Mozilla Firefox (隐私浏览)", said},
    {u"天氣 — Mozilla Firefox (隱私瀏覽)", said},
    {u"Thời tiết — Mozilla Firefox (Duyệt web riêng tư)", said},
    {u"Orai — Mozilla Firefox (Privatusis naršymas)", said},
    {u"Laiks — Mozilla Firefox (Privātā pārlūkošana)", said},
    {u"Ilm — Mozilla Firefox (Privaatne veebilehitsemine)", said},
    {u"Moti — Mozilla Firefox (Shfletim Privat)", said},
    {u"Tywydd — Mozilla Firefox (Pori Preifat)", said},
    {u"Aimsir — Mozilla Firefox (Brabhsáil Phríobháideach)", said},
    {u"Sìde — Mozilla Firefox (Brabhsadh prìobhaideach)", said},
    {u"Vetero — Mozilla Firefox (Privata retumo)", said},
    {u"Waar — Mozilla Firefox (Priveenavigaasje)", said},
    {u"Temps — Mozilla Firefox (Navegacion privada)", said},
    {u"Amzer — Mozilla Firefox (Merdeiñ prevez)", said},
    {u"Vrijeme — Mozilla Firefox (Privatno surfanje)", said},
    {u"Hava — Mozilla Firefox (Məxfi Səyahət)", said},
    {u"Cuaca — Mozilla Firefox (Pelayaran Peribadi)", said},
    {u"Veður — Mozilla Firefox (Huliðsgluggi)", said},
    {u"Надвор'е — Mozilla Firefox (Прыватнае агляданне)", said},
    {u"Ауа райы — Mozilla Firefox (Жекелік шолу)", said},
    {u"ამინდი — Mozilla Firefox (პირადი ფანჯარა)", said},
    {u"আবহাওয়া — Mozilla Firefox (ব্যক্তিগত ব্রাউজিং)", said},
    {u"موسم — Mozilla Firefox (نجی براؤزنگ)", said},
    // Chrome and its kin.
    {u"Wetter - Google Chrome (Inkognito)", said},
    {u"Météo - Google Chrome (Navigation privée)", said},
    {u"El tiempo - Google Chrome (Incógnito)", said},
    {u"Tempo - Google Chrome (Navegação anônima)", said},
    {u"Tempo - Google Chrome (Navegação anónima)", said},
    {u"Meteo - Google Chrome (Navigazione in incognito)", said},
    {u"Počasí - Google Chrome (Anonymní režim)", said},
    {u"Hava - Google Chrome (Gizli)", said},
    {u"Καιρός - Google Chrome (Ανώνυμη περιήγηση)", said},
    {u"Погода - Google Chrome (Инкогнито)", said},
    {u"Погода - Google Chrome (Анонімний режим)", said},
    {u"天気 - Google Chrome (シークレット)", said},
    {u"天気 - Google Chrome (ｼｰｸﾚｯﾄ)", said},
    {u"날씨 - Google Chrome (시크릿 모드)", said},
    {u"天气 - Google Chrome (无痕模式)", said},
    {u"天氣 - Google Chrome (無痕)", said},
    {u"Thời tiết - Google Chrome (Ẩn danh)", said},
    {u"Wetter - Brave (Privat)", said},
    {u"Météo - Brave (Privé)", said},
    {u"Veður - Google Chrome (Huliðsstilling)", said},
    {u"Погода - Google Chrome (Анонімний перегляд)", said},
    {u"Vreme - Google Chrome (Brez beleženja zgodovine)", said},
    {u"Hali ya hewa - Google Chrome (Hali fiche)", said},
    {u"Եղանակ - Google Chrome (Ինկոգնիտո)", said},
    {u"ამინდი - Google Chrome (ინკოგნიტო)", said},
    {u"Време - Google Chrome (Без архивирања)", said},
    {u"هوا - Google Chrome (ناشناس)", said},
    {u"موسم - Google Chrome (پوشیدگی)", said},
    {u"আবহাওয়া - Google Chrome (ছদ্মবেশী)", said},
    {u"હવામાન - Google Chrome (છૂપો)", said},
    {u"हवामान - Google Chrome (गुप्त)", said},
    {u"ಹವಾಮಾನ - Google Chrome (ಅಜ್ಞಾತ)", said},
    {u"കാലാവസ്ഥ - Google Chrome (ആൾമാറാട്ട)", said},
    {u"வானிலை - Google Chrome (மறைநிலை)", said},
    {u"వాతావరణం - Google Chrome (అజ్ఞాత)", said},
    {u"Cuaca - Google Chrome (Inkognito)", said},
    {u"Oras - Google Chrome (Inkognito)", said},
    {u"Hava - Google Chrome (Inkoqnito)", said},
    // Words that mean something else where no browser says them.
    {u"ناشناس - Google Chrome", none},
    {u"گزارش (ناشناس)", none},
    {u"प्रतिवेदन (गुप्त)", none},
    {u"రిపోర్ట్ అజ్ఞాత - Google Chrome", none},
    {u"Извештај без архивирања - Google Chrome", none},
    // By role and by class.
    {u"Weather", said, u"incognito-window"},
    {u"Weather", said, u"private"},
    {u"Weather", said, u"", u"firefox-private"},
    {u"Weather", said, u"", u"Private_Browsing"},
    {u"Weather", none, u"", u"privateer"},
    {u"Weather", said, u"", u"", u"firefox-private"},
    {u"Weather", said, u"", u"", u"Incognito-browser"},
    {u"Weather", none, u"", u"", u"Privateer"},
});

WindowItem windowOf(const PrivateCase& tested)
{
    WindowItem window =
        listedWindow(1, QStringLiteral("Browser"), QString::fromUtf16(tested.title));
    window.role = QString::fromUtf16(tested.role);
    window.instance = QString::fromUtf16(tested.instance);
    window.windowClass = QString::fromUtf16(tested.windowClass);
    return window;
}

TEST(PrivateWindows, Say_so_in_many_languages)
{
    for (const PrivateCase& each : privateCases) {
        EXPECT_EQ(privacyOf(windowOf(each)), each.privacy)
            << QString::fromUtf16(each.title).toStdString() << ", "
            << QString::fromUtf16(each.role).toStdString() << ", "
            << QString::fromUtf16(each.instance).toStdString() << ", "
            << QString::fromUtf16(each.windowClass).toStdString();
    }
}

TEST(PrivateWindows, Are_found_by_the_end_of_a_long_title)
{
    const WindowItem window = listedWindow(
        1, QStringLiteral("Browser"),
        QString(100'000, u'x') + QStringLiteral(" — Mozilla Firefox (Private Browsing)"));
    EXPECT_EQ(privacyOf(window), Privacy::said);
}

using PrivateWindowsTest = RememberedWindowsTest;

TEST_F(PrivateWindowsTest, A_window_that_begins_to_browse_in_private_is_forgotten)
{
    const QString privateTitle = reportTitle + QStringLiteral(" (Private Browsing)");
    note({window(1, reportTitle, taxes)});
    EXPECT_FALSE(memory.takeForgottenPrivate());
    EXPECT_TRUE(note({window(1, privateTitle, taxes)}));
    EXPECT_TRUE(memory.takeForgottenPrivate());
    EXPECT_FALSE(memory.takeForgottenPrivate());
    EXPECT_EQ(memory.find(1), nullptr);
    EXPECT_EQ(storedIDs(), QList<WindowID>());
    // A page may call itself what it likes.
    note({window(1, letterTitle, taxes)});
    EXPECT_EQ(memory.find(1), nullptr);
    note({});
    EXPECT_EQ(storedIDs(), QList<WindowID>());
    EXPECT_EQ(absentIDs(), QList<WindowID>());
    EXPECT_FALSE(memory.takeForgottenPrivate());
}

TEST_F(PrivateWindowsTest, A_window_that_browses_in_private_does_so_for_a_memory_that_begins_anew)
{
    note({window(1, reportTitle + QStringLiteral(" (Private Browsing)"), taxes),
          window(2, letterTitle, taxes)});
    ASSERT_EQ(storedIDs(), QList<WindowID>{2});
    memory.forgetAll();
    EXPECT_EQ(storedIDs(), QList<WindowID>());
    note({window(1, reportTitle, taxes), window(2, letterTitle, taxes)});
    EXPECT_EQ(storedIDs(), QList<WindowID>{2});
}

TEST_F(PrivateWindowsTest, A_page_about_private_browsing_is_not_remembered_and_the_next_one_is)
{
    note({window(1, QStringLiteral("Incognito - Wikipedia - Editor"), taxes)});
    EXPECT_EQ(storedIDs(), QList<WindowID>());
    note({window(1, letterTitle, taxes)});
    EXPECT_EQ(storedIDs(), QList<WindowID>{1});
    note({window(1, QStringLiteral("Incognito - Wikipedia - Editor"), taxes)});
    EXPECT_EQ(storedIDs(), QList<WindowID>());
}

TEST_F(PrivateWindowsTest, What_an_earlier_release_has_stored_of_them_is_left_out)
{
    const auto remembered = [this](WindowID id, const QString& title) {
        return RememberedWindow{id, traits(editorName, title), {}, now};
    };
    memory = WindowMemory({9,
                           {remembered(1, reportTitle),
                            remembered(2, QStringLiteral("Počasí — Firefox (Anonymní okno)"))}});
    for (const WindowID id : {1U, 2U})
        assignments.insert(QString::number(id), taxes);
    EXPECT_EQ(absentIDs(), QList<WindowID>{1});
    EXPECT_EQ(storedIDs(), QList<WindowID>{1});
}

} // namespace
} // namespace kelpa::test
