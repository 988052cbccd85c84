#include "automation/Finding.h"

#include "model/Text.h"
#include "text/KelpaCopy.h"
#include "windows/WindowSearch.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cstdint>

namespace kelpa::automation {

namespace {

const QString goalPrefix = QStringLiteral("goal:");
const QString todoPrefix = QStringLiteral("todo:");
const QString windowPrefix = QStringLiteral("window:");
const QString iconOfKelpa = QStringLiteral("org.kelpa.Kelpa");

enum class Fit : std::uint8_t { none, within, atBeginnings };

bool continuesWord(QChar before)
{
    return before.isLetterOrNumber() || before.isMark() || before.isSurrogate();
}

Fit fitOf(const QString& word, const QString& folded)
{
    qsizetype place = folded.indexOf(word);
    if (place < 0)
        return Fit::none;
    for (; place >= 0; place = folded.indexOf(word, place + 1)) {
        if (place == 0 || !continuesWord(folded.at(place - 1)))
            return Fit::atBeginnings;
    }
    return Fit::within;
}

class Words
{
public:
    Words(const QStringList& terms, const QLocale& locale) : m_locale(locale)
    {
        static const QRegularExpression space(QStringLiteral("\\s+"),
                                              QRegularExpression::UseUnicodePropertiesOption);
        for (const QString& term : terms) {
            if (term.size() > longestSearchedText) {
                m_isTooLong = true;
                return;
            }
            for (const QString& word : term.split(space, Qt::SkipEmptyParts)) {
                m_isTooLong = m_isTooLong || word.size() > longestSearchedWord;
                if (m_words.size() < mostSearchedWords)
                    m_words.append(foldedForSearch(word, locale));
            }
        }
    }

    bool canBeFound() const { return !m_words.isEmpty() && !m_isTooLong; }

    /// Each word may be in any of the texts.
    template <std::size_t count>
    Fit fit(const std::array<QString, count>& texts) const
    {
        std::array<QString, count> folded;
        std::ranges::transform(texts, folded.begin(), [this](const QString& text) {
            return foldedForSearch(text.left(longestSearchedText), m_locale);
        });
        Fit worst = Fit::atBeginnings;
        for (const QString& word : m_words) {
            Fit best = Fit::none;
            for (const QString& text : folded)
                best = std::max(best, fitOf(word, text));
            worst = std::min(worst, best);
        }
        return worst;
    }

private:
    const QLocale m_locale;
    QStringList m_words;
    bool m_isTooLong = false;
};

/// The first ones of a kind, by how they fit.
class Places
{
public:
    bool isFull() const { return m_atBeginnings.size() >= mostFoundOfAKind; }
    void add(const FoundID& id, Fit fit)
    {
        if (fit == Fit::none)
            return;
        QList<FoundID>& list = fit == Fit::within ? m_within : m_atBeginnings;
        if (list.size() < mostFoundOfAKind)
            list.append(id);
    }
    const QList<FoundID>& atBeginnings() const { return m_atBeginnings; }
    QList<FoundID> within() const
    {
        return m_within.first(std::min(m_within.size(), mostFoundOfAKind - m_atBeginnings.size()));
    }

private:
    QList<FoundID> m_atBeginnings;
    QList<FoundID> m_within;
};

Places foundGoals(const SearchedBoard& board, const Words& words)
{
    Places places;
    for (const Goal& goal : board.goals) {
        if (places.isFull())
            break;
        places.add(goal.id, words.fit(std::array{goal.title}));
    }
    return places;
}

Places foundTodos(const SearchedBoard& board, const Words& words)
{
    QList<const TodoItem*> todos;
    const auto append = [&todos](const QList<TodoItem>& list) {
        for (const TodoItem& todo : list) {
            if (todo.isOpen())
                todos.append(&todo);
        }
    };
    for (const Goal& goal : board.goals)
        append(goal.todos);
    append(board.unassignedTodos);
    std::ranges::stable_sort(todos, {}, [](const TodoItem* todo) { return todo->order; });
    Places places;
    for (const TodoItem* const todo : todos) {
        if (places.isFull())
            break;
        places.add(todo->id, words.fit(std::array{todo->title}));
    }
    return places;
}

Places foundWindows(const SearchedBoard& board, const Words& words)
{
    Places places;
    for (const WindowItem& window : board.windows) {
        if (places.isFull())
            break;
        places.add(window.id, words.fit(std::array{window.displayTitle(), window.ownerName}));
    }
    return places;
}

QString titleOfGoal(const std::optional<GoalID>& id, const QList<Goal>& goals, AppLanguage language)
{
    const Goal* const goal = id ? goalWith(*id, goals) : nullptr;
    return goal != nullptr ? singleLine(goal->title) : KelpaCopy::text(CopyKey::Unsorted, language);
}

class Describing
{
public:
    Describing(const SearchedBoard& board, AppLanguage language)
        : m_board(board), m_language(language)
    {}

    std::optional<FoundDescription> operator()(GoalID id) const
    {
        const Goal* const goal = goalWith(id, m_board.goals);
        if (goal == nullptr)
            return std::nullopt;
        return FoundDescription{id, singleLine(goal->title),
                                KelpaCopy::openTodoCount(goal->openTodoCount(), m_language),
                                iconOfKelpa, iconOfKelpa};
    }
    std::optional<FoundDescription> operator()(TodoID id) const
    {
        if (const TodoItem* const todo = todoWith(id, m_board.unassignedTodos))
            return description(*todo, std::nullopt);
        for (const Goal& goal : m_board.goals) {
            if (const TodoItem* const todo = todoWith(id, goal.todos))
                return description(*todo, goal.id);
        }
        return std::nullopt;
    }
    std::optional<FoundDescription> operator()(WindowID id) const
    {
        const WindowItem* const window = windowWith(id, m_board.windows);
        if (window == nullptr)
            return std::nullopt;
        // Applications name their icon as their desktop entry, as a rule.
        static const QRegularExpression name(QStringLiteral("\\A[A-Za-z0-9._-]{1,255}\\z"));
        const QString icon = window->bundleIdentifier.value_or(QString());
        return FoundDescription{id, singleLine(window->displayTitle()),
                                titleOfGoal(window->goalID, m_board.goals, m_language),
                                name.match(icon).hasMatch() ? icon : iconOfKelpa, iconOfKelpa};
    }

private:
    FoundDescription description(const TodoItem& todo, const std::optional<GoalID>& goalID) const
    {
        return {todo.id, singleLine(todo.title), titleOfGoal(goalID, m_board.goals, m_language),
                QStringLiteral("checkbox-symbolic"), iconOfKelpa};
    }

    const SearchedBoard& m_board;
    const AppLanguage m_language;
};

} // namespace

QString textOf(const FoundID& id)
{
    if (const auto* const goal = std::get_if<GoalID>(&id))
        return goalPrefix + goal->text();
    if (const auto* const todo = std::get_if<TodoID>(&id))
        return todoPrefix + todo->text();
    return windowPrefix + QString::number(std::get<WindowID>(id));
}

std::optional<FoundID> foundIDFrom(const QString& text)
{
    const auto wrapped = [](const auto& id) {
        return id ? std::optional<FoundID>(*id) : std::nullopt;
    };
    if (text.startsWith(goalPrefix))
        return wrapped(GoalID::fromText(QStringView(text).mid(goalPrefix.size())));
    if (text.startsWith(todoPrefix))
        return wrapped(TodoID::fromText(QStringView(text).mid(todoPrefix.size())));
    if (!text.startsWith(windowPrefix))
        return std::nullopt;
    bool isNumber = false;
    const WindowID number = QStringView(text).mid(windowPrefix.size()).toUInt(&isNumber);
    // Not "+7", " 7" or "007".
    const bool isPlain = isNumber && textOf(number) == text;
    return isPlain ? std::optional<FoundID>(number) : std::nullopt;
}

QList<FoundID> found(const SearchedBoard& board, const QStringList& terms)
{
    const Words words(terms, board.locale);
    if (!words.canBeFound())
        return {};
    const std::array kinds{foundGoals(board, words), foundTodos(board, words),
                           foundWindows(board, words)};
    QList<FoundID> all;
    for (const Places& places : kinds)
        all += places.atBeginnings();
    for (const Places& places : kinds)
        all += places.within();
    return all;
}

std::optional<FoundDescription> described(const FoundID& id, const SearchedBoard& board,
                                          AppLanguage language)
{
    return std::visit(Describing(board, language), id);
}

} // namespace kelpa::automation
