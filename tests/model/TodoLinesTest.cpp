#include "model/TodoLines.h"

#include <gtest/gtest.h>

#include <array>

namespace kelpa {
namespace {

struct Line
{
    const char16_t* text;
    const char16_t* title;
    bool isCompleted = false;
};

TEST(TodoLines, Marks_of_lists_are_taken_off_and_nothing_else)
{
    const std::array lines{
        Line{u"Buy milk", u"Buy milk"},
        Line{u"- Buy milk", u"Buy milk"},
        Line{u"* Buy milk", u"Buy milk"},
        Line{u"+ Buy milk", u"Buy milk"},
        Line{u"•\tBuy milk", u"Buy milk"},
        Line{u"1. Buy milk", u"Buy milk"},
        Line{u"12) Buy milk", u"Buy milk"},
        Line{u"- [ ] Buy milk", u"Buy milk"},
        Line{u"- [x] Buy milk", u"Buy milk", true},
        Line{u"2. [X]  Buy milk", u"Buy milk", true},
        Line{u"[x] Buy milk", u"Buy milk", true},
        Line{u"  \t- [ ] Buy milk  ", u"Buy milk"},
        Line{u"-5 degrees", u"-5 degrees"},
        Line{u"--- ", u"---"},
        Line{u"**Now**", u"**Now**"},
        Line{u"1.5 litres", u"1.5 litres"},
        Line{u"2024. A year", u"2024. A year"},
        Line{u"- - twice", u"- twice"},
        Line{u"- [draft] Letter", u"[draft] Letter"},
        Line{u"- [x]y", u"[x]y"},
        Line{u"- [link](there)", u"[link](there)"},
        Line{u". dot", u". dot"},
    };
    for (const Line& line : lines) {
        const QList<TodoLine> expected{{QString::fromUtf16(line.title), line.isCompleted}};
        EXPECT_EQ(todosInLines(QString::fromUtf16(line.text)), expected)
            << QString::fromUtf16(line.text).toStdString();
    }
}

TEST(TodoLines, Every_line_that_is_not_blank_is_a_todo)
{
    const QList<TodoLine> expected{{QStringLiteral("one"), false},
                                   {QStringLiteral("two"), true},
                                   {QStringLiteral("three"), false},
                                   {QStringLiteral("four"), false}};
    EXPECT_EQ(todosInLines(QStringLiteral("\r\n- one\r\n\r\n- [x] two\rthree\n - \n [ ]\n") +
                           QChar(QChar::LineSeparator) + QStringLiteral("four\n")),
              expected);
    EXPECT_TRUE(todosInLines(QString()).isEmpty());
    EXPECT_TRUE(todosInLines(QStringLiteral(" \n\t\n1.\n")).isEmpty());
}

TEST(TodoLines, Are_offered_where_a_change_brings_lines)
{
    const QString nothing;
    const QString lines = QStringLiteral("one\ntwo");
    EXPECT_EQ(pastedTodoCount(nothing, lines), 2);
    EXPECT_EQ(pastedTodoCount(QStringLiteral("z"), QStringLiteral("zone\n\ntwo\r\nthree\n")), 3);
    EXPECT_EQ(pastedTodoCount(lines, QStringLiteral("one\ntwo\nthree")), 3);
    EXPECT_EQ(pastedTodoCount(lines, QStringLiteral("one\ntwo!")), 0) << "typed";
    EXPECT_EQ(pastedTodoCount(lines, nothing), 0);
    EXPECT_EQ(pastedTodoCount(nothing, QStringLiteral("one\n")), 0) << "a single todo";
    EXPECT_EQ(pastedTodoCount(nothing, QStringLiteral("one two")), 0);
}

} // namespace
} // namespace kelpa
