#include "windows/memory/TitleWords.h"

#include "windows/memory/TitleIdentity.h"

#include <QSet>

#include <array>
#include <string_view>

namespace kelpa {

namespace {

using Text = std::u16string_view;

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
    // Pages that stand in for others: they could not be loaded, or ask who reads them.
    u"problem loading page", u"server not found", u"page not found", u"404 not found",
    u"not found", u"error", u"restore session", u"sign in", u"log in", u"login",
    u"fehler: seiten-ladefehler", u"seiten-ladefehler", u"fehler: server nicht gefunden",
    u"server nicht gefunden", u"seite nicht gefunden", u"sitzung wiederherstellen", u"anmelden",
    u"anmeldung", u"einloggen", u"erreur de chargement de la page", u"serveur introuvable",
    u"adresse introuvable", u"page introuvable", u"page non trouvée", u"restaurer la session",
    u"se connecter", u"problema al cargar la página", u"servidor no encontrado",
    u"página no encontrada", u"restaurar sesión", u"iniciar sesión", u"pagina non trovata",
    u"server non trovato", u"accedi", u"página não encontrada", u"entrar", u"inloggen",
    u"страница не найдена", u"вход", u"无法载入页面", u"页面载入出错", u"找不到服务器",
    u"找不到网页", u"恢复会话", u"登录", u"登入", u"找不到伺服器", u"找不到頁面",
    u"ページ読み込みエラー", u"サーバーが見つかりません", u"ページが見つかりません",
    u"セッションの復元", u"ログイン", u"サインイン", u"페이지 로딩 오류", u"서버를 찾을 수 없음",
    u"페이지를 찾을 수 없음", u"세션 복원", u"로그인",
    // The same of new tabs and documents without a name, in other languages.
    // Albanian.
    u"skedë e re", u"faqja hyrëse", u"pa titull", u"i patitulluar", u"pa emër", u"dokument i ri",
    u"po ngarkohet",
    // Arabic.
    u"لسان جديد", u"علامة تبويب جديدة", u"تبويب جديد", u"نافذة جديدة", u"الصفحة الرئيسية",
    u"بدون عنوان", u"بلا عنوان", u"بدون اسم", u"بلا اسم", u"مستند بدون عنوان", u"مستند بلا عنوان",
    u"مستند جديد", u"ملف جديد", u"غير معنون", u"غير مسمى", u"جار التحميل", u"جاري التحميل",
    // Armenian.
    u"նոր ներդիր", u"անանուն", u"անվերնագիր",
    // Azerbaijani.
    u"yeni vərəq", u"yeni tab", u"adsız sənəd", u"başlıqsız",
    // Basque.
    u"fitxa berria", u"izengabea", u"izenik gabe", u"titulurik gabea", u"titulurik gabe",
    u"izenik gabeko dokumentua", u"dokumentu berria", u"kargatzen",
    // Belarusian.
    u"новая картка", u"без назвы", u"новы дакумент",
    // Bengali.
    u"নতুন ট্যাব", u"শিরোনামহীন", u"নামহীন", u"শিরোনামহীন নথি", u"লোড হচ্ছে",
    // Bosnian, Croatian and Serbian in Latin letters.
    u"novi tab", u"nova kartica", u"novi jezičak", u"nova stranica", u"bez naslova", u"bez naziva",
    u"bez imena", u"neimenovano", u"neimenovani dokument", u"bezimeno", u"bezimeni",
    u"novi dokument", u"učitavanje", u"dobrodošli",
    // Breton.
    u"ivinell nevez", u"hep titl", u"hep anv",
    // Bulgarian.
    u"нов раздел", u"нов подпрозорец", u"без име", u"без заглавие", u"неозаглавен",
    u"неозаглавен документ", u"нов документ", u"нов файл", u"зареждане", u"добре дошли",
    // Catalan.
    u"pestanya nova", u"nova pestanya", u"pàgina d'inici", u"sense títol", u"document sense títol",
    u"sense nom", u"document nou", u"nou document", u"s'està carregant", u"benvingut",
    u"benvinguda",
    // Czech.
    u"nový panel", u"domovská stránka", u"nepojmenovaný", u"nepojmenovaný dokument",
    u"nepojmenované", u"beze jména", u"nový dokument", u"nový soubor", u"načítání", u"načítá se",
    u"vítejte",
    // Danish.
    u"nyt faneblad", u"startside", u"unavngivet dokument", u"ikke navngivet", u"ikke-navngivet",
    u"uden navn", u"uden titel", u"nyt dokument", u"ny fil", u"indlæser", u"velkommen",
    // Dutch.
    u"zonder titel", u"zonder naam", u"geen naam", u"nieuw bestand", u"nieuw bericht",
    u"nieuwe notitie", u"welkom",
    // Esperanto.
    u"nova langeto", u"sentitola", u"sen titolo", u"sennoma", u"nova dokumento",
    // Estonian.
    u"uus kaart", u"uus vaheleht", u"uus vahekaart", u"nimetu", u"nimeta", u"pealkirjata",
    u"nimetu dokument", u"uus dokument", u"laadimine", u"tere tulemast",
    // Finnish.
    u"aloitussivu", u"nimetön asiakirja", u"nimeämätön", u"otsikoton", u"uusi asiakirja",
    u"uusi tiedosto", u"ladataan", u"tervetuloa",
    // Frisian.
    u"nij ljepblêd", u"sûnder titel", u"nammeleas",
    // Galician.
    u"nova lapela", u"pestana nova", u"nova pestana", u"sen título", u"sen nome",
    u"documento sen título", u"documento novo", u"benvido",
    // Georgian.
    u"ახალი ჩანართი", u"უსახელო", u"უსათაურო",
    // Greek.
    u"νέα καρτέλα", u"αρχική σελίδα", u"χωρίς τίτλο", u"χωρίς όνομα", u"ανώνυμο",
    u"ανώνυμο έγγραφο", u"έγγραφο χωρίς τίτλο", u"νέο έγγραφο", u"νέο αρχείο", u"φόρτωση",
    u"γίνεται φόρτωση", u"καλώς ήρθατε", u"καλώς ορίσατε",
    // Hebrew.
    u"לשונית חדשה", u"כרטיסייה חדשה", u"דף הבית", u"ללא כותרת", u"ללא שם", u"מסמך ללא כותרת",
    u"מסמך ללא שם", u"מסמך חדש", u"קובץ חדש", u"בטעינה", u"טוען",
    // Hindi and Marathi.
    u"नया टैब", u"नवीन टॅब", u"शीर्षकहीन", u"अनाम", u"बिना शीर्षक", u"बिना शीर्षक वाला दस्तावेज़",
    u"शीर्षक रहित", u"नया दस्तावेज़", u"लोड हो रहा है",
    // Hungarian.
    u"új fül", u"kezdőlap", u"névtelen dokumentum", u"cím nélkül", u"cím nélküli dokumentum",
    u"nincs cím", u"új dokumentum", u"új fájl", u"betöltés", u"üdvözöljük",
    // Icelandic.
    u"nýr flipi", u"ónefnt", u"nafnlaust", u"án titils", u"nýtt skjal",
    // Indian scripts.
    u"નવું ટૅબ", u"શીર્ષક વિનાનું", u"ಹೊಸ ಟ್ಯಾಬ್", u"ಶೀರ್ಷಿಕೆರಹಿತ", u"പുതിയ ടാബ്",
    u"തലക്കെട്ടില്ലാത്ത", u"ਨਵੀਂ ਟੈਬ", u"ਬਿਨਾਂ ਸਿਰਲੇਖ", u"புதிய தாவல்", u"தலைப்பிடப்படாதது",
    u"பெயரற்ற", u"కొత్త ట్యాబ్", u"పేరులేని", u"శీర్షికలేని",
    // Indonesian and Malay.
    u"tab baru", u"tab baharu", u"halaman awal", u"tanpa judul", u"tanpa nama", u"tak berjudul",
    u"dokumen tanpa judul", u"dokumen baru", u"berkas baru", u"tidak bertajuk", u"tanpa tajuk",
    u"memuat", u"selamat datang",
    // Irish, Scottish Gaelic and Welsh.
    u"cluaisín nua", u"gan teideal", u"gan ainm", u"taba ùr", u"gun tiotal", u"gun ainm",
    u"tab newydd", u"dideitl", u"di-deitl", u"dienw", u"dogfen newydd",
    // Italian.
    u"nuova finestra", u"nuovo file", u"nuovo messaggio", u"documento senza titolo",
    u"presentazione", u"disegno", u"senza oggetto",
    // Kazakh.
    u"жаңа бет", u"жаңа қойынды", u"атаусыз", u"аты жоқ",
    // Latvian.
    u"jauna cilne", u"sākumlapa", u"bez nosaukuma", u"nenosaukts", u"nenosaukts dokuments",
    u"jauns dokuments", u"ielādē",
    // Lithuanian.
    u"nauja kortelė", u"naujas skirtukas", u"pradžios puslapis", u"be pavadinimo", u"bevardis",
    u"be vardo", u"be antraštės", u"bevardis dokumentas", u"naujas dokumentas", u"įkeliama",
    // Norwegian.
    u"uten tittel", u"navnløs", u"ikke-navngitt", u"dokument uten navn", u"dokument uten tittel",
    u"nytt dokument", u"laster",
    // Occitan.
    u"onglet novèl", u"novèl onglet", u"sens títol", u"sens nom",
    // Persian.
    u"زبانه جدید", u"زبانهٔ جدید", u"برگه جدید", u"برگهٔ جدید", u"صفحه خانگی", u"بدون نام",
    u"بی‌نام", u"بی‌عنوان", u"سند بدون عنوان", u"سند بی‌نام", u"سند جدید", u"در حال بارگذاری",
    u"در حال بار کردن",
    // Polish.
    u"strona domowa", u"dokument bez tytułu", u"dokument bez nazwy", u"bez tematu", u"nowy plik",
    u"nowa wiadomość", u"wczytywanie", u"ładowanie", u"witamy",
    // Portuguese.
    u"nova janela", u"documento sem título", u"documento sem nome", u"novo ficheiro",
    u"novo arquivo", u"nova mensagem", u"sem assunto", u"a carregar", u"bem-vindo", u"apresentação",
    // Romanian.
    u"filă nouă", u"pagină de start", u"fără titlu", u"fără nume", u"document fără titlu",
    u"fișier nou", u"se încarcă", u"bine ați venit",
    // Russian.
    u"новое окно", u"новый файл", u"новая заметка", u"домашняя страница", u"добро пожаловать",
    u"без темы", u"презентация",
    // Serbian.
    u"нова картица", u"нови језичак", u"без наслова", u"без назива", u"без имена", u"неименовано",
    u"безимено", u"нови документ", u"учитавање",
    // Slovak.
    u"nepomenovaný", u"nepomenovaný dokument", u"nepomenované", u"bez mena", u"nový súbor",
    u"načítava sa", u"vitajte",
    // Slovenian.
    u"nov zavihek", u"domača stran", u"brez naslova", u"brez imena", u"neimenovan dokument",
    u"nov dokument", u"nalaganje",
    // Spanish.
    u"nueva ventana", u"archivo nuevo", u"nuevo archivo", u"documento nuevo", u"mensaje nuevo",
    u"sin asunto", u"página principal",
    // Swahili.
    u"kichupo kipya", u"bila kichwa",
    // Swedish.
    u"startsida", u"namnlöst dokument", u"utan titel", u"utan namn", u"nytt meddelande",
    u"läser in", u"laddar", u"välkommen",
    // Thai.
    u"แท็บใหม่", u"หน้าแรก", u"ไม่มีชื่อ", u"ไม่ได้ตั้งชื่อ", u"ไม่ระบุชื่อ", u"เอกสารไม่มีชื่อ",
    u"เอกสารที่ไม่มีชื่อ", u"เอกสารใหม่", u"กำลังโหลด",
    // Turkish.
    u"başlangıç sayfası", u"isimsiz", u"isimsiz belge", u"adsız belge", u"başlıksız belge",
    u"yeni belge", u"yeni dosya", u"yükleniyor", u"hoş geldiniz", u"İsimsiz", u"İsimsiz belge",
    // Ukrainian.
    u"домашня сторінка", u"без імені", u"безіменний", u"безіменний документ", u"документ без назви",
    u"новий документ", u"новий файл", u"завантаження", u"ласкаво просимо",
    // Urdu.
    u"نیا ٹیب", u"بے نام",
    // Vietnamese.
    u"thẻ mới", u"tab mới", u"trang chủ", u"không tên", u"không có tên", u"chưa đặt tên",
    u"không tiêu đề", u"không có tiêu đề", u"vô danh", u"tài liệu không có tiêu đề",
    u"tài liệu chưa đặt tên", u"tài liệu mới", u"đang tải", u"chào mừng",
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
    // Albanian.
    u"shkarkime", u"koshi", u"shtëpi",
    // Arabic.
    u"المنزل", u"مجلد المنزل", u"المجلد الرئيسي", u"سطح المكتب", u"المستندات", u"مستندات",
    u"الوثائق", u"التنزيلات", u"تنزيلات", u"الصور", u"صور", u"المهملات", u"سلة المهملات",
    u"الملفات", u"ملفات", u"الإعدادات", u"الطرفية",
    // Basque.
    u"karpeta nagusia", u"mahaigaina", u"dokumentuak", u"deskargak", u"zakarrontzia",
    u"fitxategiak", u"terminala",
    // Belarusian.
    u"хатняя папка", u"працоўны стол", u"дакументы", u"сцягванні",
    // Bengali.
    u"হোম", u"ডেস্কটপ", u"ডাউনলোড", u"নথি",
    // Bosnian, Croatian and Serbian in Latin letters.
    u"osobna mapa", u"lična fascikla", u"početna mapa", u"početna", u"radna površina", u"dokumenti",
    u"preuzimanja", u"preuzeto", u"smeće", u"otpad", u"datoteke", u"postavke",
    // Bulgarian.
    u"домашна папка", u"работен плот", u"документи", u"изтегляния", u"свалени", u"кошче",
    u"файлове",
    // Catalan.
    u"inici", u"carpeta de l'usuari", u"escriptori", u"baixades", u"paperera", u"fitxers",
    u"paràmetres",
    // Czech.
    u"domov", u"domů", u"domovská složka", u"osobní složka", u"plocha", u"dokumenty", u"stažené",
    u"stažené soubory", u"obrázky", u"koš", u"soubory", u"terminál", u"nastavení",
    // Danish.
    u"hjem", u"hjemmemappe", u"skrivebord", u"dokumenter", u"hentet", u"hentede filer",
    u"overførsler", u"billeder", u"papirkurv", u"filer", u"indstillinger",
    // Dutch.
    u"persoonlijke map", u"thuismap", u"bureaublad", u"documenten", u"afbeeldingen", u"prullenbak",
    u"bestanden", u"instellingen",
    // Estonian.
    u"kodukataloog", u"kodukaust", u"töölaud", u"dokumendid", u"allalaadimised", u"pildid",
    u"prügikast", u"failid", u"seaded",
    // Finnish.
    u"koti", u"kotikansio", u"työpöytä", u"asiakirjat", u"lataukset", u"kuvat", u"roskakori",
    u"tiedostot", u"pääte", u"asetukset",
    // Galician.
    u"cartafol persoal", u"lixo", u"ficheiros",
    // Greek.
    u"προσωπικός φάκελος", u"αρχικός φάκελος", u"επιφάνεια εργασίας", u"έγγραφα", u"λήψεις",
    u"στοιχεία λήψης", u"εικόνες", u"κάδος", u"απορρίμματα", u"αρχεία", u"τερματικό", u"ρυθμίσεις",
    // Hebrew.
    u"בית", u"תיקיית הבית", u"שולחן העבודה", u"שולחן עבודה", u"מסמכים", u"הורדות", u"תמונות",
    u"אשפה", u"סל אשפה", u"סל מחזור", u"קבצים", u"מסוף", u"הגדרות",
    // Hindi and Marathi.
    u"होम", u"घर", u"डेस्कटॉप", u"दस्तावेज़", u"डाउनलोड", u"रद्दी", u"टर्मिनल",
    // Hungarian.
    u"saját mappa", u"saját könyvtár", u"asztal", u"dokumentumok", u"letöltések", u"képek", u"kuka",
    u"fájlok", u"beállítások",
    // Indonesian and Malay.
    u"rumah", u"beranda", u"folder rumah", u"destop", u"dokumen", u"unduhan", u"muat turun",
    u"gambar", u"tempat sampah", u"tong sampah", u"berkas", u"pengaturan",
    // Italian.
    u"cartella home", u"cartella personale", u"scrivania", u"documenti", u"scaricati", u"immagini",
    u"cestino", u"file", u"impostazioni",
    // Latvian.
    u"mājas", u"mājas mape", u"darbvirsma", u"lejupielādes", u"attēli", u"miskaste", u"datnes",
    u"iestatījumi",
    // Lithuanian.
    u"namai", u"namų aplankas", u"darbalaukis", u"dokumentai", u"atsiuntimai", u"parsiuntimai",
    u"paveikslai", u"šiukšlinė", u"failai", u"terminalas", u"nustatymai",
    // Norwegian.
    u"hjemmeområde", u"nedlastinger", u"innstillinger",
    // Persian.
    u"خانه", u"پوشه خانگی", u"رومیزی", u"میزکار", u"اسناد", u"سندها", u"بارگیری‌ها", u"دریافت‌ها",
    u"زباله‌دان", u"پرونده‌ها", u"پایانه", u"تنظیمات",
    // Polish.
    u"katalog domowy", u"folder domowy", u"pulpit", u"pobrane", u"obrazy", u"kosz", u"pliki",
    u"ustawienia",
    // Portuguese.
    u"pasta pessoal", u"área de trabalho", u"ambiente de trabalho", u"transferências", u"imagens",
    u"lixeira", u"arquivos", u"configurações", u"definições",
    // Romanian.
    u"acasă", u"dosar personal", u"birou", u"documente", u"descărcări", u"imagini", u"gunoi",
    u"coș de gunoi", u"fișiere", u"configurări", u"setări",
    // Russian.
    u"корзина", u"изображения", u"музыка", u"видео", u"компьютер",
    // Serbian.
    u"лична фасцикла", u"почетна", u"радна површ", u"радна површина", u"преузимања", u"документа",
    u"смеће", u"датотеке",
    // Slovak.
    u"domovský priečinok", u"stiahnuté", u"prevzaté", u"kôš", u"súbory", u"nastavenia",
    // Slovenian.
    u"domača mapa", u"osebna mapa", u"namizje", u"prejemi", u"prenosi", u"slike", u"smeti",
    u"nastavitve",
    // Spanish.
    u"imágenes", u"equipo", u"ajustes",
    // Swedish.
    u"hem", u"hemmapp", u"hemkatalog", u"skrivbord", u"hämtningar", u"hämtade filer",
    u"nedladdningar", u"papperskorg", u"papperskorgen", u"inställningar",
    // Thai.
    u"บ้าน", u"โฟลเดอร์บ้าน", u"พื้นโต๊ะ", u"เดสก์ท็อป", u"เอกสาร", u"ดาวน์โหลด", u"รูปภาพ",
    u"ถังขยะ", u"แฟ้ม", u"ไฟล์", u"เทอร์มินัล", u"การตั้งค่า",
    // Turkish.
    u"ev", u"ev dizini", u"ev klasörü", u"başlangıç", u"masaüstü", u"belgeler", u"indirilenler",
    u"resimler", u"çöp", u"çöp kutusu", u"dosyalar", u"uçbirim", u"ayarlar", u"İndirilenler",
    // Ukrainian.
    u"домівка", u"домашня тека", u"стільниця", u"звантаження", u"зображення", u"смітник", u"файли",
    u"термінал", u"параметри",
    // Vietnamese.
    u"nhà", u"thư mục nhà", u"thư mục chính", u"màn hình nền", u"tài liệu", u"tải về", u"tải xuống",
    u"ảnh", u"hình ảnh", u"thùng rác", u"tập tin", u"thiết lập", u"cài đặt",
});

// clang-format on

/// In the form in which titles are compared.
template <std::size_t Size>
QSet<QString> foldedSet(const std::array<Text, Size>& texts)
{
    QSet<QString> set;
    set.reserve(static_cast<qsizetype>(Size));
    for (const Text text : texts)
        set.insert(visibleText(QStringView(text).toString())
                       .normalized(QString::NormalizationForm_KC)
                       .toCaseFolded());
    return set;
}

} // namespace

bool isUnnamedTitle(const QString& folded)
{
    static const QSet<QString> titles = foldedSet(unnamedTitles);
    return titles.contains(folded);
}

bool isCommonPlaceTitle(const QString& folded)
{
    static const QSet<QString> places = foldedSet(commonPlaces);
    return places.contains(folded);
}

} // namespace kelpa
