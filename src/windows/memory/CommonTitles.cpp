#include "windows/memory/CommonTitles.h"

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

constexpr std::array unnamedTitles = std::to_array<Text>({
    // New tabs and start pages.
    u"new tab", u"start page", u"speed dial", u"startpage", u"homepage", u"home page", u"welcome",
    u"get started", u"getting started", u"new window", u"private browsing", u"neuer tab",
    u"startseite", u"schnellwahl", u"willkommen", u"erste schritte", u"neues fenster",
    u"nouvel onglet", u"page de démarrage", u"page d'accueil", u"page d’accueil", u"bienvenue",
    u"accueil", u"nouvelle fenêtre", u"nueva pestaña", u"página de inicio", u"bienvenido",
    u"nova aba", u"novo separador", u"nova guia", u"página inicial", u"nuova scheda",
    u"pagina iniziale", u"benvenuto", u"nieuw tabblad", u"startpagina", u"nowa karta",
    u"strona startowa", u"ny flik", u"ny fane", u"uusi välilehti", u"nová karta", u"új lap",
    u"yeni sekme", u"новая вкладка", u"стартовая страница", u"нова вкладка", u"新标签页",
    u"新建标签页", u"起始页", u"主页", u"欢迎", u"欢迎使用", u"新分頁", u"新索引標籤",
    u"開新分頁", u"起始頁", u"歡迎", u"新しいタブ", u"スタートページ", u"ようこそ",
    u"ホームページ", u"새 탭", u"시작 페이지", u"시작", u"환영합니다",
    // Documents that have no name yet.
    u"untitled", u"untitled document", u"untitled project", u"untitled presentation",
    u"untitled spreadsheet", u"untitled drawing", u"unnamed", u"no name", u"noname",
    u"new document", u"new file", u"new note", u"new message", u"new presentation",
    u"new project", u"blank", u"blank document", u"document", u"presentation", u"book",
    u"drawing", u"scratch", u"compose", u"write: (no subject",
    u"no subject", u"unbenannt", u"unbenanntes dokument", u"ohne titel", u"neues dokument",
    u"neue datei", u"neue nachricht", u"neue notiz", u"dokument", u"mappe", u"präsentation",
    u"zeichnung", u"kein betreff", u"sans titre", u"document sans titre", u"sans nom",
    u"nouveau document", u"nouveau fichier", u"nouveau message", u"classeur", u"présentation",
    u"dessin", u"pas de sujet", u"sin título", u"documento sin título", u"sin nombre",
    u"documento", u"nuevo documento", u"libro", u"presentación", u"sem título", u"sem nome",
    u"novo documento", u"senza titolo", u"senza nome", u"nuovo documento", u"cartel", u"naamloos",
    u"naamloos document", u"nieuw document", u"bez tytułu", u"bez nazwy", u"nowy dokument",
    u"namnlös", u"uten navn", u"unavngivet", u"nimetön", u"bez názvu", u"névtelen", u"adsız",
    u"başlıksız", u"без имени", u"без названия", u"безымянный", u"новый документ", u"документ",
    u"без назви", u"无标题", u"未命名", u"无标题文档", u"未命名文档", u"新建文档", u"空白文档",
    u"新建文件", u"文档", u"工作簿", u"演示文稿", u"新建文本文档", u"無標題", u"未命名文件",
    u"無標題文件", u"文件", u"活頁簿", u"簡報", u"無題", u"名称未設定", u"無題のドキュメント",
    u"タイトルなし", u"名前なし", u"新規ドキュメント", u"新規文書", u"新規", u"文書",
    u"ドキュメント", u"プレゼンテーション", u"제목 없음", u"제목 없는 문서", u"이름 없음",
    u"무제", u"새 문서", u"문서", u"빈 문서", u"새 파일", u"통합 문서", u"프레젠테이션",
    // What a window shows before it has anything to show.
    u"loading", u"connecting", u"opening", u"starting", u"please wait", u"wird geladen", u"laden",
    u"verbinden", u"verbindung wird hergestellt", u"bitte warten", u"chargement",
    u"chargement en cours", u"connexion", u"ouverture", u"cargando", u"conectando", u"carregando",
    u"caricamento", u"загрузка", u"подключение", u"加载中", u"正在加载", u"正在连接", u"請稍候",
    u"載入中", u"読み込み中", u"接続中", u"로드 중", u"로딩 중", u"불러오는 중", u"연결 중",
});

constexpr std::array commonPlaces = std::to_array<Text>({
    // Shells, and programs that are named after what they are.
    u"terminal", u"console", u"konsole", u"shell", u"bash", u"zsh", u"fish", u"sh", u"dash",
    u"ksh", u"tcsh", u"nu", u"pwsh", u"powershell", u"tmux", u"screen", u"xterm", u"终端",
    u"終端機", u"終端", u"端末", u"ターミナル", u"터미널", u"терминал", u"terminale", u"files",
    u"file manager", u"home", u"home folder", u"desktop", u"documents", u"downloads", u"pictures",
    u"music", u"videos", u"recent", u"trash", u"computer", u"settings", u"preferences",
    u"dateien", u"dateiverwaltung", u"persönlicher ordner", u"schreibtisch", u"arbeitsfläche",
    u"dokumente", u"bilder", u"musik", u"papierkorb", u"einstellungen", u"zuletzt verwendet",
    u"fichiers", u"dossier personnel", u"bureau", u"téléchargements", u"images", u"musique",
    u"vidéos", u"corbeille", u"paramètres", u"préférences", u"récents", u"archivos",
    u"carpeta personal", u"escritorio", u"documentos", u"descargas", u"papelera",
    u"configuración", u"文件管理器", u"主文件夹", u"主目录", u"桌面", u"下载", u"图片", u"音乐",
    u"视频", u"回收站", u"设置", u"最近使用", u"檔案", u"家目錄", u"個人資料夾", u"下載", u"設定",
    u"ファイル", u"ファイルマネージャー", u"ホーム", u"デスクトップ", u"ダウンロード",
    u"ピクチャ", u"画像", u"音楽", u"ビデオ", u"ゴミ箱", u"파일", u"홈", u"바탕 화면",
    u"다운로드", u"사진", u"음악", u"휴지통", u"설정", u"файлы", u"домашняя папка",
    u"рабочий стол", u"документы", u"загрузки", u"настройки",
});

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
    static const QRegularExpression number(QStringLiteral(R"([\s_-]*[(#]?\d{1,4}\)?$)"));
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
    static const QSet<QString> titles = setOf(unnamedTitles);
    const QString folded = text.toCaseFolded();
    return titles.contains(folded) || titles.contains(withoutNumber(folded));
}

bool isCommonPlace(const QString& text)
{
    static const QSet<QString> places = setOf(commonPlaces);
    return places.contains(text.toCaseFolded());
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
