#include "shell/EarlyKeys.h"

#include "shell/BoardInputFixture.h"

#include <gtest/gtest.h>

#include <QGuiApplication>

namespace kelpa::test {
namespace {

/// A window with a field that has the focus while the window is active.
class EarlyKeysTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QQmlComponent component(&engine);
        component.setData("import QtQuick\n"
                          "Window { width: 200; height: 100; visible: true\n"
                          "  TextInput { objectName: 'field'; width: 200; height: 40; focus: true\n"
                          "    Keys.onEscapePressed: Window.window.hide() } }\n",
                          QUrl());
        window.reset(qobject_cast<QQuickWindow*>(component.create()));
        ASSERT_NE(window, nullptr) << qPrintable(component.errorString());
        keys = std::make_unique<EarlyKeys>(*window, [](const QKeyEvent& key, bool isFirst) {
            return key.key() != Qt::Key_X && (key.key() != Qt::Key_Space || !isFirst);
        });
        activate(*window);
    }

    void TearDown() override
    {
        keys.reset();
        window.reset();
    }

    static void activate(QWindow& wanted)
    {
        wanted.requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&wanted));
    }

    /// As a compositor does that has given the window the keyboard.
    void send(const QString& letters)
    {
        for (const QChar letter : letters) {
            for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(type, letter.toUpper().unicode(), Qt::NoModifier, letter);
                QCoreApplication::sendEvent(window.get(), &event);
            }
        }
    }

    void sendEscape()
    {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QCoreApplication::sendEvent(window.get(), &event);
    }

    QString text() const
    {
        return window->findChild<QQuickItem*>(QStringLiteral("field"))->property("text").toString();
    }

    QQmlEngine engine;
    std::unique_ptr<QQuickWindow> window;
    std::unique_ptr<EarlyKeys> keys;
};

TEST_F(EarlyKeysTest, What_is_kept_of_keys_before_the_window_is_active_is_written_once_it_is)
{
    QWindow other;
    other.show();
    activate(other);
    ASSERT_FALSE(window->isActive());
    send(QStringLiteral("fxi"));
    EXPECT_EQ(text(), QString());

    activate(*window);
    send(QStringLiteral("nd"));
    EXPECT_EQ(text(), QStringLiteral("find"));

    activate(other);
    activate(*window);
    EXPECT_EQ(text(), QStringLiteral("find"));
}

TEST_F(EarlyKeysTest, What_has_waited_for_long_is_dropped)
{
    QWindow other;
    other.show();
    activate(other);
    send(QStringLiteral("late"));
    QTest::qWait(static_cast<int>(EarlyKeys::longestWait.count()) + 50);
    send(QStringLiteral("now"));
    activate(*window);
    EXPECT_EQ(text(), QStringLiteral("now"));
}

TEST_F(EarlyKeysTest, What_is_kept_only_behind_another_key_is_dropped_with_that_one)
{
    QWindow other;
    other.show();
    activate(other);
    send(QStringLiteral("o"));
    QTest::qWait(static_cast<int>(EarlyKeys::longestWait.count()) + 50);
    send(QStringLiteral(" to me"));
    activate(*window);
    EXPECT_EQ(text(), QStringLiteral("to me"));
}

TEST_F(EarlyKeysTest, A_window_that_one_of_the_keys_hides_gets_none_of_the_others)
{
    QWindow other;
    other.show();
    activate(other);
    send(QStringLiteral("be"));
    sendEscape();
    send(QStringLiteral("hind"));
    window->requestActivate();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window->isVisible(); }));
    EXPECT_EQ(text(), QStringLiteral("be"));
    window->show();
    activate(*window);
    EXPECT_EQ(text(), QStringLiteral("be"));
}

TEST_F(EarlyKeysTest, A_window_that_is_hidden_forgets_what_was_typed)
{
    QWindow other;
    other.show();
    activate(other);
    send(QStringLiteral("gone"));
    window->hide();
    window->show();
    activate(*window);
    EXPECT_EQ(text(), QString());
}

} // namespace
} // namespace kelpa::test
