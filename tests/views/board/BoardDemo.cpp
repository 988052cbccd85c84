// Shows the board over a desktop of plain data, for looking at it: in every language, light and
// dark, empty, full, and with texts that are hard to lay out.
#include "app/RenderBackend.h"
#include "platform/qt/WorkerPool.h"
#include "store/WindowStore.h"
#include "support/FakeDesktop.h"
#include "support/ManualScheduler.h"
#include "support/MemorySettingsStore.h"
#include "views/ViewEngine.h"

#include <QCommandLineParser>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QTimer>

#include <array>
#include <memory>

namespace {

using namespace kelpa;

class DemoDesktop : public test::FakeDesktop
{
public:
    QImage icon(const WindowItem& window, int pixels) override
    {
        if (window.processIdentifier % 4 == 3)
            return {};
        QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(QColor::fromHsv((window.processIdentifier * 67) % 360, 150, 210));
        painter.drawRoundedRect(image.rect(), pixels / 5.0, pixels / 5.0);
        return image;
    }

    /// A page of text that scrolls on, in a colour of the window's own.
    std::optional<WindowCapture> captureWindow(const CaptureRequest& request,
                                               const std::stop_token&) override
    {
        const WindowID window = request.window;
        if (!captureSizes.contains(window))
            return std::nullopt;
        const QSize pixels = captureSizes.value(window);
        QImage image(pixels.scaled(360, 360, Qt::KeepAspectRatio), QImage::Format_RGB32);
        image.fill(QColor::fromHsv(static_cast<int>(window) * 47 % 360, 40, 250));
        QPainter painter(&image);
        painter.fillRect(0, 0, image.width(), 40,
                         QColor::fromHsv(static_cast<int>(window) * 47 % 360, 120, 120));
        ++m_line;
        for (int y = 70; y < image.height() - 20; y += 26)
            painter.fillRect(30, y, (y * 7 + m_line * 31) % (image.width() - 60), 10,
                             QColor(70, 80, 100));
        return WindowCapture{image, pixels};
    }

private:
    int m_line = 0;
};

const std::array<QString, 9> titles{
    QStringLiteral("Quarterly report - Draft 3"),
    QStringLiteral("main.cpp - editor"),
    QStringLiteral("A title that is far too long for any card of any width that this board could "
                   "ever reasonably give to a single window"),
    QStringLiteral("قائمة المهام لهذا الأسبوع"),
    QStringLiteral("季度报告——第三稿（待审阅）"),
    QStringLiteral("今週の予定"),
    QStringLiteral(""),
    QStringLiteral("~/projects/kelpa"),
    QStringLiteral("Inbox (14)"),
};

const std::array<QString, 6> goalTitles{
    QStringLiteral("Prepare Friday's proposal"),
    QStringLiteral("Taxes"),
    QStringLiteral("Read the three papers on window management and write a summary of them"),
    QStringLiteral("搬家"),
    QStringLiteral("Vorstellungsgespräche"),
    QStringLiteral("Garden"),
};

void fill(DemoDesktop& desktop, int windows)
{
    for (int i = 0; i < windows; ++i) {
        const auto id = static_cast<WindowID>(100 + i);
        const ProcessID process = 1000 + i % 7;
        const QString& title = titles.at(static_cast<std::size_t>(i) % titles.size());
        desktop.addAccessibleWindow(id, process, title);
        if (i % 5 == 4)
            desktop.accessibilityWindows[process]->back().isMinimized = true;
        if (i % 7 == 5)
            desktop.onScreen.remove(id);
        else if (i % 4 != 3)
            desktop.captureSizes.insert(id, {1600, 900 + i * 10});
    }
}

void fillTodos(WindowStore& store, int count)
{
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<std::size_t>(i);
        store.addTodo(titles.at((place + 2) % titles.size()), std::nullopt);
        const QList<Goal> goals = store.goals();
        for (qsizetype at = 0; at < goals.size(); ++at) {
            // Every third goal stays without todos on a small board.
            if (goals.size() > 2 && goals.size() < 10 && at % 3 == 2)
                continue;
            const std::size_t title = (place + static_cast<std::size_t>(at)) % titles.size();
            store.addTodo(titles.at(title), goals.at(at).id);
        }
    }
    for (const Goal& goal : QList<Goal>(store.goals())) {
        if (goal.todos.size() > 2) {
            store.toggleTodo(goal.todos.at(1).id, goal.id);
            store.toggleTodo(goal.todos.at(2).id, goal.id);
            store.toggleTodo(goal.todos.at(2).id, goal.id);
        }
    }
}

/// Of each goal some windows close. Of those that open, one is certainly one of them and the others
/// may be.
void replaceWindows(DemoDesktop& desktop, WindowStore& store, test::ManualScheduler& scheduler)
{
    scheduler.advance(std::chrono::minutes(3));
    const auto open = [&desktop](WindowID id, ProcessID process, const QString& title) {
        desktop.addAccessibleWindow(id, process, title);
        desktop.captureSizes.insert(id, {1600, 900});
    };
    WindowID id = 500;
    for (const Goal& goal : QList<Goal>(store.goals())) {
        for (const ProcessID process : {2000, 2001, 2002}) {
            open(++id, process, process == 2000 ? titles[0] : titles[process % 2] + goal.title);
            store.refresh();
            store.assign(id, goal.id);
        }
    }
    scheduler.advance(std::chrono::seconds(5));
    for (WindowID closed = 501; closed <= id; ++closed)
        desktop.removeWindow(closed);
    store.refresh();
    open(601, 2000, titles[0]);
    open(602, 2001, QStringLiteral("Loading"));
    open(603, 2002, titles[0] + store.goals().front().title);
    store.refresh();
    scheduler.advance(std::chrono::seconds(2));
}

} // namespace

int main(int argc, char** argv)
{
    chooseRenderBackend();
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    const QCommandLineOption dark(QStringLiteral("dark"), QStringLiteral("Dark colours."));
    const QCommandLineOption light(QStringLiteral("light"), QStringLiteral("Light colours."));
    const QCommandLineOption still(QStringLiteral("still"), QStringLiteral("No motion."));
    const QCommandLineOption denied(QStringLiteral("denied"), QStringLiteral("No permissions."));
    const QCommandLineOption manual(QStringLiteral("manual"), QStringLiteral("No auto-sort."));
    const QCommandLineOption language(QStringLiteral("language"), QStringLiteral("BCP 47 tag."),
                                      QStringLiteral("tag"), QStringLiteral("en"));
    const QCommandLineOption windows(QStringLiteral("windows"), QStringLiteral("How many."),
                                     QStringLiteral("count"), QStringLiteral("24"));
    const QCommandLineOption goals(QStringLiteral("goals"), QStringLiteral("How many."),
                                   QStringLiteral("count"), QStringLiteral("3"));
    const QCommandLineOption search(QStringLiteral("search"), QStringLiteral("Search text."),
                                    QStringLiteral("text"));
    parser.addHelpOption();
    const QCommandLineOption todos(QStringLiteral("todos"), QStringLiteral("How many per list."),
                                   QStringLiteral("count"), QStringLiteral("0"));
    const QCommandLineOption returning(QStringLiteral("returning"),
                                       QStringLiteral("Windows that have been in goals."));
    parser.addOptions(
        {dark, light, still, denied, manual, language, windows, goals, search, todos, returning});
    parser.process(application);

    DemoDesktop desktop;
    desktop.isAccessibilityGranted = !parser.isSet(denied);
    fill(desktop, parser.value(windows).toInt());
    test::MemorySettingsStore settings;
    test::ManualScheduler scheduler;
    WindowStore store(desktop.platform(), settings, scheduler);
    if (const auto wanted = appLanguageFromRawValue(parser.value(language)))
        store.setLanguage(*wanted);
    store.setAutoSortingGoals(!parser.isSet(manual));
    store.refresh();
    const int goalCount = parser.value(goals).toInt();
    for (int i = 0; i < goalCount; ++i)
        store.createGoal(goalTitles.at(static_cast<std::size_t>(i) % goalTitles.size()));
    const QList<WindowItem> listed = store.windows();
    for (qsizetype i = 0; i < listed.size(); ++i) {
        const qsizetype place = i % (goalCount + 1);
        // Every other goal stays without windows.
        if (place > 0 && place % 3 != 0)
            store.assign(listed.at(i).id, store.goals().at(place - 1).id);
    }
    fillTodos(store, parser.value(todos).toInt());
    if (parser.isSet(returning))
        replaceWindows(desktop, store, scheduler);
    store.setSearchText(parser.value(search));
    desktop.isScreenCaptureGranted = !parser.isSet(denied);
    store.startObserving();

    // The manual clock follows the real one.
    QTimer clock;
    QElapsedTimer elapsed;
    elapsed.start();
    QObject::connect(&clock, &QTimer::timeout,
                     [&] { scheduler.advance(std::chrono::milliseconds(elapsed.restart())); });
    clock.start(std::chrono::milliseconds(50));

    ViewEngine::Options options;
    options.keyNames = KeyNames::withSuper();
    if (parser.isSet(dark))
        options.appearance = Appearance::dark;
    else if (parser.isSet(light))
        options.appearance = Appearance::light;
    if (parser.isSet(still))
        options.isReducingMotion = true;
    ViewEngine view(store, desktop, std::make_shared<WorkerPool>(1), options);
    return view.show() ? QGuiApplication::exec() : 1;
}
