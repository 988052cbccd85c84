#include "model/BoardJson.h"
#include "support/Seed.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace kelpa {

namespace {

/// Draws boards of every kind of content, and damages their stored form.
class Draw
{
public:
    explicit Draw(std::uint64_t seed) : m_random(seed) {}

    /// 0 … count - 1.
    int below(int count)
    {
        return static_cast<int>(m_random() % static_cast<std::uint64_t>(count));
    }

    QUuid uuid()
    {
        const auto byte = [this] { return static_cast<uchar>(m_random()); };
        return {static_cast<uint>(m_random()),
                static_cast<ushort>(m_random()),
                static_cast<ushort>(m_random()),
                byte(),
                byte(),
                byte(),
                byte(),
                byte(),
                byte(),
                byte(),
                byte()};
    }

    std::int64_t integer()
    {
        constexpr std::array<std::int64_t, 7> edges{std::numeric_limits<std::int64_t>::min(),
                                                    std::numeric_limits<std::int64_t>::max(),
                                                    0,
                                                    1,
                                                    -1,
                                                    (1LL << 53) + 1,
                                                    -(1LL << 53) - 1};
        if (below(3) == 0)
            return edges.at(static_cast<std::size_t>(below(edges.size())));
        return static_cast<std::int64_t>(m_random()) >> below(64);
    }

    /// Any finite double: a calendar time mostly, or any bits.
    double seconds()
    {
        if (below(2) == 0)
            return static_cast<double>(integer() % 4'000'000'000'000) / 1000.0;
        const double any = std::bit_cast<double>(m_random());
        return std::isfinite(any) ? any : std::numeric_limits<double>::denorm_min();
    }

    QString text()
    {
        QString text;
        const int length = below(20) == 0 ? 400 : below(24);
        for (int i = 0; i < length; ++i)
            text += QString::fromUcs4(&(m_character = character()), 1);
        return text;
    }

    TodoItem todo()
    {
        TodoItem todo{TodoID{uuid()}, text(), static_cast<TodoStatus>(below(3)), {}, integer()};
        if (below(2) == 0)
            todo.completedAt = Date{seconds()};
        return todo;
    }

    QList<TodoItem> todos()
    {
        QList<TodoItem> todos(below(6));
        for (TodoItem& item : todos)
            item = todo();
        return todos;
    }

    QList<Goal> goals()
    {
        QList<Goal> goals(below(5));
        for (Goal& goal : goals)
            goal = {GoalID{uuid()}, text(), static_cast<GoalAccent>(below(5)),
                    static_cast<GoalPriority>(below(4)), todos()};
        return goals;
    }

    Assignments assignments()
    {
        Assignments assignments;
        for (int i = below(6); i > 0; --i)
            assignments.insert(below(2) == 0 ? QString::number(m_random() >> 32) : text(),
                               GoalID{uuid()});
        return assignments;
    }

    /// `json` with a few of its bytes changed, doubled, moved or taken away.
    QByteArray damaged(QByteArray json)
    {
        static constexpr std::string_view telling = "[]{}\",:\\u0eE+-.tfn \0\x80\xff\xed";
        for (int i = 1 + below(4); i > 0 && !json.isEmpty(); --i) {
            const qsizetype at = below(static_cast<int>(json.size()));
            const qsizetype length = 1 + below(12);
            switch (below(6)) {
            case 0:
                json[at] = static_cast<char>(m_random());
                break;
            case 1:
                json[at] = telling[static_cast<std::size_t>(below(telling.size()))];
                break;
            case 2:
                json.insert(at, telling[static_cast<std::size_t>(below(telling.size()))]);
                break;
            case 3:
                json.remove(at, length);
                break;
            case 4:
                json.insert(at, json.mid(below(static_cast<int>(json.size())), length));
                break;
            default:
                json.truncate(at);
            }
        }
        return json;
    }

private:
    /// Any Unicode scalar value, ASCII, quotes, controls, marks and emoji more often than others.
    char32_t character()
    {
        constexpr std::array<char32_t, 16> edges{0,       0x1f,    U'"',     U'\\',  0x7f,   0x301,
                                                 0x200d,  0xd7ff,  0xe000,   0xfeff, 0xfffd, 0xffff,
                                                 0x10000, 0x1f600, 0x10ffff, 0x5d0};
        switch (below(4)) {
        case 0:
            return edges.at(static_cast<std::size_t>(below(edges.size())));
        case 1:
            return static_cast<char32_t>(0x4e00 + below(0x5000));
        case 2: {
            const auto any = static_cast<char32_t>(below(0x110000));
            return QChar::isSurrogate(any) ? U'x' : any;
        }
        default:
            return static_cast<char32_t>(below(128));
        }
    }

    std::mt19937_64 m_random;
    char32_t m_character = 0;
};

TEST(BoardJsonProperty, What_is_encoded_decodes_to_the_same_board)
{
    const std::uint64_t seed = test::seed();
    SCOPED_TRACE(test::seedText(seed));
    Draw draw(seed);
    for (int i = 0; i < 5000 && !HasFailure(); ++i) {
        const QList<Goal> goals = draw.goals();
        const std::optional<QByteArray> goalsJson = encodeGoals(goals);
        ASSERT_TRUE(goalsJson);
        EXPECT_EQ(decodeGoals(*goalsJson), goals) << goalsJson->toStdString();

        const QList<TodoItem> todos = draw.todos();
        EXPECT_EQ(decodeTodos(encodeTodos(todos).value_or(QByteArray())), todos);

        const Assignments assignments = draw.assignments();
        EXPECT_EQ(decodeAssignments(encodeAssignments(assignments)), assignments);
    }
}

TEST(BoardJsonProperty, Damaged_documents_are_refused_or_read_but_never_half_read)
{
    const std::uint64_t seed = test::seed();
    SCOPED_TRACE(test::seedText(seed));
    Draw draw(seed);
    int refused = 0;
    int read = 0;
    for (int i = 0; i < 20'000 && !HasFailure(); ++i) {
        const QByteArray json = draw.damaged(encodeGoals(draw.goals()).value_or(QByteArray()));
        const std::optional<QList<Goal>> goals = decodeGoals(json);
        // What was read is a board like any other: it is stored and read again as it is.
        if (goals) {
            const std::optional<QByteArray> again = encodeGoals(*goals);
            ASSERT_TRUE(again) << json.toStdString();
            EXPECT_EQ(decodeGoals(*again), goals) << json.toStdString();
        }
        ++(goals ? read : refused);
        const std::optional<Assignments> assignments =
            decodeAssignments(draw.damaged(encodeAssignments(draw.assignments())));
        if (assignments) {
            EXPECT_EQ(decodeAssignments(encodeAssignments(*assignments)), assignments);
        }
    }
    EXPECT_GT(refused, 1000);
    EXPECT_GT(read, 100);
}

TEST(BoardJsonProperty, A_title_of_a_hundred_thousand_characters_reads_back)
{
    for (const char32_t character : {U'a', U'"', U'\0', U'目', U'\U0001f600', U'\u0301'}) {
        const TodoItem todo{TodoID::create(), QString::fromUcs4(&character, 1).repeated(100'000),
                            TodoStatus::todo, std::nullopt, 0};
        const std::optional<QByteArray> json = encodeTodos({todo});
        ASSERT_TRUE(json);
        EXPECT_EQ(decodeTodos(*json), QList<TodoItem>{todo});
    }
}

} // namespace

} // namespace kelpa
