// What is kept of the titles that people type and paste.
#include "support/CaseName.h"
#include "support/StoreFixture.h"

namespace kelpa::test {
namespace {

struct TitleCase
{
    const char* name;
    QString title;
    QString kept;
};

class TodoTitles : public StoreFixture, public testing::WithParamInterface<TitleCase>
{};

TEST_P(TodoTitles, Survive_a_restart)
{
    store().addTodo(GetParam().title, std::nullopt);
    makeGoal();
    restartedStore();

    ASSERT_EQ(store().unassignedTodos().size(), 1);
    EXPECT_EQ(store().unassignedTodos().first().title, GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(
    TodoOperations, TodoTitles,
    testing::Values(
        TitleCase{"quotes_and_backslashes", QStringLiteral("\"a\\b\"/"),
                  QStringLiteral("\"a\\b\"/")},
        TitleCase{"emoji_sequences", QStringLiteral("👩‍👩‍👧‍👦🏳️‍🌈"),
                  QStringLiteral("👩‍👩‍👧‍👦🏳️‍🌈")},
        TitleCase{"combining_marks", QStringLiteral("e\u0301\u0327"),
                  QStringLiteral("e\u0301\u0327")},
        TitleCase{"arabic_and_hebrew", QStringLiteral("مرحبا שלום"), QStringLiteral("مرحبا שלום")},
        TitleCase{"devanagari_and_thai", QStringLiteral("नमस्ते สวัสดี"), QStringLiteral("नमस्ते สวัสดี")},
        TitleCase{"cjk", QStringLiteral("准备周五的提案"), QStringLiteral("准备周五的提案")},
        TitleCase{"newlines_within", QStringLiteral("a\n\r\u2028b"),
                  QStringLiteral("a\n\r\u2028b")},
        TitleCase{"nul_within", QStringLiteral("a\0b"), QStringLiteral("a\0b")},
        TitleCase{"unicode_space_around", QStringLiteral("\u3000\u00a0\u2029a\u0085\u2003"),
                  QStringLiteral("a")},
        TitleCase{"half_a_surrogate_pair", QString(u'a') + QChar(0xd83d) + u'b',
                  QStringLiteral("a\ufffdb")},
        TitleCase{"hundred_thousand_characters", QString(100'000, u'x'), QString(100'000, u'x')}),
    caseName);

} // namespace
} // namespace kelpa::test
