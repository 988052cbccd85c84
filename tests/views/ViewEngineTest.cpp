#include "views/ViewEngine.h"

#include "support/LogRecorder.h"
#include "views/ViewEngineFixture.h"
#include "views/appearance/FontLoading.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/board/notices/FirstSteps.h"
#include "views/windows/AppIconProvider.h"

#include <QFile>
#include <QFont>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSemaphore>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <chrono>
#include <functional>
#include <memory>

using namespace std::chrono_literals;

namespace kelpa::test {
namespace {

class ViewEngineTest : public ViewEngineFixture
{
protected:
    /// Whether a text with these words can be seen.
    bool shows(const QString& words) const
    {
        const auto items = view.window()->findChildren<QQuickItem*>();
        return std::ranges::any_of(items, [&words](const QQuickItem* item) {
            return item->isVisible() && item->property("text").toString().contains(words);
        });
    }

    /// The sizes and weights of the texts that can be seen and are not among `fonts`.
    QStringList otherFonts(const QList<QFont>& fonts) const
    {
        QSet<QString> other;
        addOtherFonts(*view.window()->contentItem(), fonts, other);
        return other.values();
    }

    BoardController& controller() const
    {
        return *view.window()->property("board").value<BoardController*>();
    }

    static void activate(QWindow& wanted)
    {
        wanted.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&wanted));
    }

    const ViewSettings& settings()
    {
        return *view.engine().singletonInstance<ViewSettings*>(
            qmlTypeId("Kelpa.Appearance", 1, 0, "ViewSettings"));
    }

    /// How many items of a type of the views there are.
    int count(const QByteArray& type) const { return count(*view.window()->contentItem(), type); }

private:
    static void addOtherFonts(const QQuickItem& item, const QList<QFont>& fonts,
                              QSet<QString>& other)
    {
        if (!item.isVisible())
            return;
        const QVariant font = item.property("font");
        const auto has = [&font](const QFont& known) {
            const auto wanted = font.value<QFont>();
            return known.pixelSize() == wanted.pixelSize() && known.weight() == wanted.weight() &&
                   known.families() == wanted.families();
        };
        if (font.isValid() && !item.property("text").toString().isEmpty() &&
            std::ranges::none_of(fonts, has)) {
            const auto unknown = font.value<QFont>();
            other.insert(QStringLiteral("%1 %2").arg(unknown.pixelSize()).arg(unknown.weight()));
        }
        const QList<QQuickItem*> children = item.childItems();
        for (const QQuickItem* const child : children)
            addOtherFonts(*child, fonts, other);
    }
    static int count(const QQuickItem& item, const QByteArray& type)
    {
        int sum = isOfType(item, type) ? 1 : 0;
        const QList<QQuickItem*> children = item.childItems();
        for (const QQuickItem* const child : children)
            sum += count(*child, type);
        return sum;
    }
};

TEST_F(ViewEngineTest, The_first_frame_of_the_window_fills_the_usable_area)
{
    ASSERT_TRUE(view.show());
    EXPECT_EQ(view.window()->windowStates(), Qt::WindowMaximized);
    EXPECT_EQ(view.window()->frameGeometry(), view.window()->screen()->availableGeometry());
}

TEST_F(ViewEngineTest, The_first_frame_shows_the_windows_that_were_found_while_the_views_loaded)
{
    desktop.addWindow(1, 1000, QStringLiteral("Letter"));
    desktop.addWindow(2, 2000, QStringLiteral("Invoice"));
    store().discoverAhead();
    ASSERT_TRUE(view.load());
    EXPECT_FALSE(shows(QStringLiteral("Letter")));
    store().awaitWindows(50ms);
    const LogRecorder log(QStringLiteral("kelpa.views"));
    ASSERT_TRUE(view.show());
    bool areShown = false;
    // All items are in place, and about to be drawn.
    QObject::connect(
        view.window(), &QQuickWindow::afterAnimating, &view,
        [&] { areShown = shows(QStringLiteral("Letter")) && shows(QStringLiteral("Invoice")); },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    ASSERT_TRUE(QSignalSpy(&view, &ViewEngine::boardShown).wait());
    EXPECT_TRUE(areShown);
    EXPECT_EQ(log.messages().first(), QStringLiteral("first frame shows 2 windows"));
}

TEST_F(ViewEngineTest, What_cannot_be_seen_in_the_first_frame_comes_after_it)
{
    for (int number = 1; number <= 40; ++number)
        makeGoal(QString::number(number));
    makeTodo(store().goals().first().id);
    ASSERT_TRUE(view.show());
    int menuButtons = -1;
    int entries = 0;
    QObject::connect(
        view.window(), &QQuickWindow::afterAnimating, &view,
        [&] {
            menuButtons = count("TodoMenuButton");
            entries = count("BreadcrumbEntry");
        },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    ASSERT_TRUE(QSignalSpy(&view, &ViewEngine::boardShown).wait());
    EXPECT_EQ(menuButtons, 0);
    EXPECT_GT(entries, 0);
    // The todo is in the list of all todos, and in its goal, which may be below the first steps.
    EXPECT_TRUE(QTest::qWaitFor([&] { return count("TodoMenuButton") > 0; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return count("BreadcrumbEntry") > entries; }));
}

TEST_F(ViewEngineTest, All_fonts_of_an_empty_board_are_loaded_before_its_first_frame)
{
    ASSERT_TRUE(view.show());
    EXPECT_EQ(otherFonts(fontsOfFirstFrame(settings(), {.hasFirstSteps = true})), QStringList());
    // The numbers of the steps have one of their own.
    EXPECT_EQ(otherFonts(fontsOfFirstFrame(settings(), {})), QStringList(QStringLiteral("11 600")));
}

TEST_F(ViewEngineTest, All_fonts_of_a_board_with_goals_are_loaded_before_its_first_frame)
{
    for (int number = 1; number <= 3; ++number)
        makeTodo(makeGoal(QString::number(number)));
    desktop.addWindow(1, 1000, QStringLiteral("Letter"));
    store().discoverAhead();
    ASSERT_TRUE(view.load());
    store().awaitWindows(50ms);
    ASSERT_TRUE(view.show());
    // The board was empty when the views began.
    EXPECT_EQ(otherFonts(fontsOfFirstFrame(settings(), {.hasFirstSteps = true})), QStringList());
}

TEST_F(ViewEngineTest, Nothing_of_the_views_needs_the_library_of_layouts)
{
    ASSERT_TRUE(view.show());
    QFile libraries(QStringLiteral("/proc/self/maps"));
    ASSERT_TRUE(libraries.open(QIODevice::ReadOnly));
    const QByteArray names = libraries.readAll();
    EXPECT_TRUE(names.contains("libQt6QuickTemplates2"));
    EXPECT_FALSE(names.contains("libQt6QuickLayouts"));
}

TEST_F(ViewEngineTest, Keys_do_nothing_before_the_board_has_been_drawn)
{
    QSignalSpy shown(&view, &ViewEngine::boardShown);
    ASSERT_TRUE(view.show());
    QQuickWindow& window = *view.window();
    // As soon as the window has the keyboard, so that nothing else keeps it from the keys.
    int presses = 0;
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &window, [&] {
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Space, Qt::Key_Down}) {
            if (!window.isActive() || !shown.isEmpty())
                return;
            QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &event);
            ++presses;
        }
    });
    ASSERT_TRUE(shown.wait());
    EXPECT_EQ(presses, 3);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());

    ASSERT_TRUE(window.isActive());
    QTest::keyClick(&window, Qt::Key_Right);
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::on(TargetSelection::unifiedTodos()));
    EXPECT_EQ(shown.size(), 1);
}

TEST_F(ViewEngineTest, What_is_typed_before_the_board_has_been_drawn_begins_a_search)
{
    QSignalSpy shown(&view, &ViewEngine::boardShown);
    ASSERT_TRUE(view.show());
    QQuickWindow& window = *view.window();
    const auto press = [&window](Qt::Key key, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(&window, &event);
    };
    bool isTyped = false;
    QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, &window, [&] {
        if (isTyped || !window.isActive() || !shown.isEmpty())
            return;
        press(Qt::Key_Space, QStringLiteral(" "));
        press(Qt::Key_T, QStringLiteral("t"));
        press(Qt::Key_Space, QStringLiteral(" "));
        press(Qt::Key_Right, {});
        press(Qt::Key_U, QStringLiteral("u"));
        isTyped = true;
    });
    ASSERT_TRUE(shown.wait());
    ASSERT_TRUE(isTyped);
    auto& search = *window.property("board").value<BoardController*>()->search();
    EXPECT_TRUE(QTest::qWaitFor([&] { return search.text() == QStringLiteral("t u"); }))
        << search.text().toStdString();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
}

TEST_F(ViewEngineTest, What_is_typed_before_a_board_that_comes_back_is_active_is_searched)
{
    ASSERT_TRUE(view.show());
    ASSERT_TRUE(QSignalSpy(&view, &ViewEngine::boardShown).wait());
    QWindow other;
    other.show();
    activate(other);
    const auto press = [this](Qt::Key key, const QString& text) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(view.window(), &event);
    };
    press(Qt::Key_Backspace, QStringLiteral("\b"));
    press(Qt::Key_Space, QStringLiteral(" "));
    press(Qt::Key_T, QStringLiteral("t"));
    press(Qt::Key_Space, QStringLiteral(" "));
    press(Qt::Key_Right, {});
    press(Qt::Key_U, QStringLiteral("u"));
    press(Qt::Key_Backspace, QStringLiteral("\b"));
    press(Qt::Key_V, QStringLiteral("v"));
    activate(*view.window());
    const auto& search = *controller().search();
    EXPECT_TRUE(QTest::qWaitFor([&] { return search.text() == QStringLiteral("t v"); }))
        << search.text().toStdString();
    EXPECT_EQ(store().boardNavigation(), BoardNavigationState::idle());
}

TEST_F(ViewEngineTest, A_call_shows_the_selection_only_where_the_board_comes_forward_soon)
{
    ASSERT_TRUE(view.show());
    ASSERT_TRUE(QSignalSpy(&view, &ViewEngine::boardShown).wait());
    const QSignalSpy forward(&controller(), &BoardController::cameForward);
    QWindow other;
    other.show();
    const auto callThen = [&](const std::function<void()>& then) {
        activate(other);
        view.noteCall(scheduler);
        then();
        activate(*view.window());
        return forward.count();
    };
    EXPECT_EQ(callThen([&] { scheduler.advance(1999ms); }), 1);
    EXPECT_EQ(callThen([&] { scheduler.advance(2000ms); }), 1);
    EXPECT_EQ(callThen([&] { QTest::mouseClick(view.window(), Qt::LeftButton); }), 1);
    EXPECT_EQ(callThen([] {}), 2);
}

TEST_F(ViewEngineTest, A_board_that_was_minimised_is_not_wanted_in_front)
{
    ASSERT_TRUE(view.show());
    const QSignalSpy wanted(&view, &ViewEngine::frontWanted);
    Q_EMIT controller().goals()->frontWanted();
    EXPECT_EQ(wanted.count(), 1);
    view.window()->showMinimized();
    Q_EMIT controller().goals()->frontWanted();
    EXPECT_EQ(wanted.count(), 1);
    view.window()->showMaximized();
    Q_EMIT controller().goals()->frontWanted();
    EXPECT_EQ(wanted.count(), 2);
}

TEST_F(ViewEngineTest, The_double_tap_is_told_of_only_while_it_would_be_noticed)
{
    store().setLanguage(AppLanguage::english);
    ASSERT_TRUE(view.show());
    const QString keys = QStringLiteral("Arrows Select");
    const QString tap = QStringLiteral("Press Super twice");
    EXPECT_TRUE(shows(keys));
    EXPECT_FALSE(shows(tap));
    view.setDoubleTapOffered(true);
    // The first steps of an empty board say it instead.
    EXPECT_FALSE(shows(tap));
    view.window()->property("board").value<BoardController*>()->firstSteps()->dismiss();
    EXPECT_TRUE(shows(tap));
    view.setDoubleTapOffered(false);
    EXPECT_FALSE(shows(tap));
    EXPECT_TRUE(shows(keys));
}

/// Tells of which application an icon was asked for in a size of which the board asks for none.
class AskedIcons : public FakeDesktop
{
public:
    static constexpr int ownSize = 77;

    QImage icon(const WindowItem& window, int pixels) override
    {
        if (pixels == ownSize) {
            application = window.bundleIdentifier;
            hasBeenAsked.release();
        }
        return {};
    }

    std::optional<QString> application;
    QSemaphore hasBeenAsked;
};

TEST_F(ViewEngineTest, When_a_card_learns_of_its_application_that_ones_icon_can_be_had)
{
    desktop.addAccessibleWindow(1, 1000, QStringLiteral("Letter"));
    store().refresh();
    AskedIcons icons;
    ViewEngine other(store(), icons, iconReaders, {});
    ASSERT_TRUE(other.show());
    auto& controller = *other.window()->property("board").value<BoardController*>();
    auto& provider = *dynamic_cast<QQuickAsyncImageProvider*>(
        qmlEngine(other.window())->imageProvider(AppIconProvider::name()));
    std::unique_ptr<QQuickImageResponse> response;
    QObject::connect(
        controller.columns()->windows(std::nullopt), &QAbstractItemModel::dataChanged, &controller,
        [&] {
            response.reset(provider.requestImageResponse(
                QStringLiteral("1"), {AskedIcons::ownSize, AskedIcons::ownSize}));
        },
        Qt::SingleShotConnection);
    desktop.applications[1000].bundleIdentifier = QStringLiteral("org.example.Known");
    store().refresh();
    ASSERT_NE(response, nullptr);
    ASSERT_TRUE(icons.hasBeenAsked.tryAcquire(1, 10'000));
    EXPECT_EQ(icons.application, QStringLiteral("org.example.Known"));
}

} // namespace
} // namespace kelpa::test
