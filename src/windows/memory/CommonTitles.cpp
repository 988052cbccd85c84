#include "windows/memory/CommonTitles.h"

#include "windows/memory/TitleWords.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace kelpa {

namespace {

using Text = std::u16string_view;

// All in the folded case.
// As many to a line as fit.
// clang-format off

constexpr std::array statePhrases = std::to_array<Text>({
    u"modified", u"edited", u"changed", u"unsaved", u"unsaved changes", u"not saved", u"dirty",
    u"read-only", u"read only", u"readonly", u"ro", u"view only", u"not responding", u"offline",
    u"recording", u"paused", u"playing", u"muted", u"geändert", u"bearbeitet", u"verändert",
    u"nicht gespeichert", u"ungespeichert", u"schreibgeschützt", u"nur lesen",
    u"keine rückmeldung", u"reagiert nicht", u"modifié", u"modifiée", u"non enregistré",
    u"lecture seule", u"en lecture seule", u"ne répond pas", u"pas de réponse", u"modificado",
    u"sin guardar", u"solo lectura", u"sólo lectura", u"no responde", u"não salvo",
    u"somente leitura", u"não está respondendo", u"modificato", u"non salvato", u"sola lettura",
    u"non risponde", u"gewijzigd", u"alleen-lezen", u"reageert niet", u"zmodyfikowany",
    u"tylko do odczytu", u"nie odpowiada", u"изменён", u"изменен", u"изменено",
    u"только для чтения", u"только чтение", u"не отвечает", u"已修改", u"已更改", u"已编辑",
    u"未保存", u"只读", u"未响应", u"无响应", u"已編輯", u"未儲存", u"唯讀", u"沒有回應", u"変更",
    u"変更済み", u"変更あり", u"編集済み", u"更新", u"読み取り専用", u"応答なし", u"未保存の変更",
    u"수정됨", u"변경됨", u"편집됨", u"저장되지 않음", u"저장 안 됨", u"읽기 전용", u"응답 없음",
});

constexpr std::array inboxes = std::to_array<Text>({
    u"inbox", u"unified inbox", u"all inboxes", u"drafts", u"spam", u"junk", u"unread", u"feeds",
    u"all items", u"posteingang", u"entwürfe", u"alle posteingänge", u"ungelesen", u"junk-e-mail",
    u"boîte de réception", u"courrier entrant", u"brouillons", u"non lus", u"indésirables",
    u"bandeja de entrada", u"recibidos", u"borradores", u"caixa de entrada", u"posta in arrivo",
    u"bozze", u"postvak in", u"odebrane", u"входящие", u"черновики", u"вхідні", u"收件箱",
    u"收件匣", u"草稿箱", u"草稿", u"未读", u"垃圾邮件", u"受信トレイ", u"受信箱", u"下書き",
    u"迷惑メール", u"未読", u"받은편지함", u"받은 편지함", u"임시보관함",
});

/// Private modes under names that mean nothing else, in the normalised form (NFKC).
constexpr std::array privatePhrases = std::to_array<Text>({
    u"incognito mode", u"inkognito-modus", u"inkognitomodus", u"无痕模式", u"無痕模式", u"无痕浏览",
    u"無痕瀏覽", u"無痕視窗", u"无痕窗口", u"シークレットモード", u"시크릿 모드", u"시크릿 창",
    u"private browsing", u"private window", u"private tab", u"private mode", u"inprivate",
    u"incognito", u"tor browser", u"privater modus", u"privates fenster", u"privater tab",
    u"privates surfen", u"inkognito", u"inkognitó", u"navigation privée", u"fenêtre privée",
    u"onglet privé", u"navegación privada", u"ventana privada", u"pestaña privada", u"incógnito",
    u"navegação privativa", u"navegação privada", u"navegação anônima", u"navegação anónima",
    u"janela privada", u"janela privativa", u"janela anônima", u"navigazione anonima",
    u"navigazione in incognito", u"navigazione privata", u"finestra anonima", u"finestra privata",
    u"privénavigatie", u"privévenster", u"tryb prywatny", u"przeglądanie prywatne",
    u"okno prywatne", u"privat surfning", u"privat browsing", u"privat nettlesing",
    u"privat fönster", u"privat vindue", u"privat vindu", u"yksityinen selaus",
    u"yksityinen ikkuna", u"anonymní prohlížení", u"anonymní režim", u"anonymní okno",
    u"soukromé okno", u"súkromné prehliadanie", u"súkromné okno", u"privát böngészés",
    u"privát ablak", u"navigare privată", u"fereastră privată", u"navegació privada",
    u"finestra privada", u"d'incògnit", u"nabigatze pribatua", u"privatno pretraživanje",
    u"privatno pregledavanje", u"privatni prozor", u"zasebno brskanje", u"zasebno okno",
    u"anonimni način", u"gizli gezinti", u"gizli pencere", u"gizli mod", u"ιδιωτική περιήγηση",
    u"ανώνυμη περιήγηση", u"поверително разглеждане", u"приватно прегледање", u"приватный просмотр",
    u"приватное окно", u"приватный режим", u"инкогнито", u"приватний перегляд", u"приватне вікно",
    u"анонімний режим", u"גלישה פרטית", u"גלישה בסתר", u"التصفح الخاص", u"تصفح خاص",
    u"التصفح المتخفي", u"مرور خصوصی", u"निजी ब्राउज़िंग", u"การท่องเว็บแบบส่วนตัว", u"ไม่ระบุตัวตน",
    u"duyệt web riêng tư", u"duyệt riêng tư", u"cửa sổ riêng tư", u"penjelajahan pribadi",
    u"jendela pribadi", u"隐私浏览", u"隐私窗口", u"隐身模式", u"隐身窗口", u"无痕", u"無痕", u"隱私瀏覽", u"隱私視窗", u"私密浏览",
    u"私密瀏覽", u"プライベートブラウジング", u"プライベートウィンドウ", u"プライベートタブ", u"シークレット", u"사생활 보호 모드", u"사생활 보호 창",
    u"시크릿", u"프라이빗 브라우징", u"비공개 창",
    u"privatusis naršymas", u"privātā pārlūkošana", u"privaatne veebilehitsemine",
    u"shfletim privat", u"pori preifat", u"brabhsáil phríobháideach", u"brabhsadh prìobhaideach",
    u"privata retumo", u"priveenavigaasje", u"navegacion privada", u"merdeiñ prevez",
    u"privatno surfanje", u"məxfi səyahət", u"pelayaran peribadi", u"huliðsgluggi",
    u"huliðsstilling", u"прыватнае агляданне", u"жекелік шолу", u"анонімний перегляд",
    u"brez beleženja zgodovine", u"hali fiche", u"inkoqnito", u"ինկոգնիտո", u"ინკოგნიტო",
    u"პირადი ფანჯარა", u"ব্যক্তিগত ব্রাউজিং", u"نجی براؤزنگ",
});

/// What stands in brackets behind the name of a browser; elsewhere, it means anything.
constexpr std::array privateMarks = std::to_array<Text>({
    u"private", u"privat", u"privé", u"privée", u"privado", u"privada", u"privato", u"privata",
    u"prywatne", u"prywatny", u"privé-modus", u"anoniem", u"anonymní", u"soukromé", u"súkromné",
    u"privát", u"yksityinen", u"gizli", u"ιδιωτικό", u"приватно", u"приватный", u"приватное",
    u"частный", u"анонимно", u"анонім", u"anonimno", u"anonymous", u"ẩn danh", u"riêng tư",
    u"samaran", u"pribadi", u"गुप्त", u"خاص", u"פרטי", u"隐私", u"隱私", u"私密", u"隐身", u"プライベート",
    u"비공개", u"프라이빗",
    u"без архивирања", u"ناشناس", u"پوشیدگی", u"ছদ্মবেশী", u"છૂપો", u"ಅಜ್ಞಾತ", u"ആൾമാറാട്ട",
    u"மறைநிலை", u"అజ్ఞాత",
});

/// Words of the names by which browsers call themselves.
constexpr std::array browserNames = std::to_array<Text>({
    u"firefox", u"chrome", u"chromium", u"edge", u"opera", u"brave", u"vivaldi", u"epiphany",
    u"falkon", u"konqueror", u"librewolf", u"waterfox", u"midori", u"yandex", u"qutebrowser",
    u"palemoon", u"seamonkey", u"floorp", u"iceweasel", u"icecat", u"browser", u"navigator",
    u"navigateur", u"navegador", u"браузер", u"浏览器", u"瀏覽器", u"ブラウザ", u"브라우저", u"mullvad", u"zen",
    u"thorium", u"ungoogled", u"maxthon",
});

// clang-format on

template <std::size_t Size>
QSet<QString> setOf(const std::array<Text, Size>& texts)
{
    QSet<QString> set;
    set.reserve(static_cast<qsizetype>(Size));
    for (const Text text : texts)
        set.insert(QStringView(text).toString());
    return set;
}

/// Without the number or extension that tells one of many from the next.
QString withoutNumber(const QString& text)
{
    static const QRegularExpression extension(QStringLiteral(R"(\.[a-z0-9]{1,5}$)"));
    static const QRegularExpression number(QStringLiteral(R"([\s_-]*[(#]?\d{1,4}\)?$)"),
                                           QRegularExpression::UseUnicodePropertiesOption);
    QString bare = text;
    if (bare.contains(u'.'))
        bare.remove(extension);
    if (!bare.isEmpty() && (bare.back().isDigit() || bare.back() == u')'))
        bare.remove(number);
    while (bare.endsWith(u'.') || bare.endsWith(u'…'))
        bare.chop(1);
    // "[No Name]", "*scratch*"
    while (bare.size() > 2 && QStringView(u"[<*(").contains(bare.front()))
        bare.remove(0, 1);
    while (bare.size() > 2 && QStringView(u"]>*)").contains(bare.back()))
        bare.chop(1);
    return bare.trimmed();
}

constexpr char16_t firstBeyondAscii = 0x80;

QString foldedForm(const QString& text)
{
    return text.normalized(QString::NormalizationForm_KC).toCaseFolded().trimmed();
}

/// Scripts from here on do not separate words by spaces, or join them freely.
constexpr char16_t firstOfEastAsia = 0x2E80;

/// Whether the name stands there as a word of its own, in scripts that separate words: "Opera" is
/// no part of "operation".
bool containsName(const QString& text, QStringView name)
{
    if (name.front().unicode() >= firstOfEastAsia)
        return text.contains(name);
    for (qsizetype at = text.indexOf(name); at >= 0; at = text.indexOf(name, at + 1)) {
        const qsizetype end = at + name.size();
        const bool begins = at == 0 || !text.at(at - 1).isLetter();
        if (begins && (end == text.size() || !text.at(end).isLetter()))
            return true;
    }
    return false;
}

} // namespace

bool isUnnamed(const QString& text)
{
    const QString folded = text.toCaseFolded();
    return isUnnamedTitle(folded) || isUnnamedTitle(withoutNumber(folded));
}

bool isCommonPlace(const QString& text)
{
    return isCommonPlaceTitle(text.toCaseFolded());
}

bool isStatePhrase(const QString& text)
{
    static const QSet<QString> phrases = setOf(statePhrases);
    return phrases.contains(text.toCaseFolded());
}

bool isInbox(const QString& text)
{
    static const QSet<QString> names = setOf(inboxes);
    return names.contains(text.toCaseFolded());
}

bool isUnreadCount(const QString& text)
{
    static const QRegularExpression count(
        QStringLiteral(R"(^\d{1,5}\+?(\s*(new|unread|neue?r?|ungelesene?|nouve(au|aux|lle|lles)|)"
                       R"(non lue?s?|sin leer|nuev[oa]s?|nov[oa]s?|nuov[ioea]|nieuwe?|нов\w+|)"
                       R"(непрочитан\w+|条|條|封|件|則|개|통)[^()\[\]]{0,30})?$)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return count.match(text).hasMatch();
}

bool namesPrivateBrowsing(const QString& text)
{
    // Most windows are asked whenever their titles change. For needles as short as these, the plain
    // search is several times as fast as that of QString.
    const std::u16string folded = foldedForm(text).toStdU16String();
    const bool isAscii =
        std::ranges::all_of(folded, [](char16_t each) { return each < firstBeyondAscii; });
    return std::ranges::any_of(privatePhrases, [&](Text phrase) {
        return (!isAscii || phrase.front() < firstBeyondAscii) &&
               folded.find(phrase) != std::u16string::npos;
    });
}

bool hasPrivateWord(const QString& names)
{
    static const QRegularExpression word(
        QStringLiteral(R"((^|[^\p{L}])(private|privatebrowsing)([^\p{L}]|$))"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return word.match(names).hasMatch();
}

PrivateEnd privateEnd(const QString& part)
{
    QString text = foldedForm(part);
    const bool isBracketed = !text.isEmpty() && QStringView(u")]】").contains(text.back());
    if (isBracketed)
        text.chop(1);
    const auto endsText = [&text](Text each) { return text.endsWith(QStringView(each)); };
    const auto phrase = std::ranges::find_if(privatePhrases, endsText);
    const bool isPhrase = phrase != privatePhrases.end();
    if (isPhrase) {
        text.chop(QStringView(*phrase).size());
    } else {
        const auto mark = std::ranges::find_if(privateMarks, endsText);
        if (!isBracketed || mark == privateMarks.end())
            return {};
        text.chop(QStringView(*mark).size());
    }
    const bool isAlone =
        isBracketed && !text.isEmpty() && QStringView(u"([【").contains(text.back());
    if (isAlone)
        text.chop(1);
    // A mark is all that the brackets hold.
    if (!isPhrase && !isAlone)
        return {};
    return {true, isPhrase && isAlone, text.trimmed()};
}

bool namesBrowser(const QString& text)
{
    const QString folded = foldedForm(text);
    return std::ranges::any_of(browserNames,
                               [&folded](Text name) { return containsName(folded, name); });
}

} // namespace kelpa
