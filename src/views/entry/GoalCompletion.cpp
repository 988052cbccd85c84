#include "views/entry/GoalCompletion.h"

#include "model/Text.h"
#include "windows/WindowSearch.h"

#include <QHash>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

/// The best first.
enum class Rank : std::uint8_t { title, beginning, word, within, none };

/// A person names one goal; a pasted text may have any number of signs, and titles any length.
constexpr int examinedMentions = 20;
constexpr qsizetype longestNamed = 400;

/// Of a long title, as much as anybody sees.
QString comparable(const QString& text, const QLocale& locale)
{
    return foldedForSearch(text.left(longestShownText).normalized(QString::NormalizationForm_KC),
                           locale);
}

Rank rankOf(const QString& title, const QString& query)
{
    if (title == query.trimmed())
        return Rank::title;
    if (title.startsWith(query))
        return Rank::beginning;
    Rank rank = Rank::none;
    for (qsizetype at = title.indexOf(query); at >= 0; at = title.indexOf(query, at + 1)) {
        if (!title.at(at - 1).isLetterOrNumber())
            return Rank::word;
        rank = Rank::within;
    }
    return rank;
}

/// Whether a title may end before this position.
bool isTitleEnd(const QString& text, qsizetype position)
{
    const auto isSpaceOrEnd = [&text](qsizetype at) {
        return at == text.size() || text.at(at).isSpace();
    };
    return isSpaceOrEnd(position) || (text.at(position).isPunct() && isSpaceOrEnd(position + 1));
}

} // namespace

QList<EntryGoal> matchingGoals(const QList<EntryGoal>& goals, const QString& query,
                               const QLocale& locale)
{
    const QString sought = comparable(query, locale);
    std::vector<std::pair<Rank, const EntryGoal*>> found;
    for (const EntryGoal& goal : goals) {
        const Rank rank = sought.isEmpty()
                              ? Rank::within
                              : rankOf(comparable(goal.title, locale).trimmed(), sought);
        if (rank != Rank::none)
            found.emplace_back(rank, &goal);
    }
    std::ranges::stable_sort(found, {}, [](const auto& each) { return each.first; });
    QList<EntryGoal> result;
    result.reserve(static_cast<qsizetype>(found.size()));
    for (const auto& [rank, goal] : found)
        result.append(*goal);
    return result;
}

bool isTitleOf(const EntryGoal& goal, const QString& text, const QLocale& locale)
{
    const QString title = comparable(goal.title, locale).trimmed();
    return !title.isEmpty() && title == comparable(text, locale).trimmed();
}

std::optional<NamedGoal> goalNamedIn(const QString& text, const QList<EntryGoal>& goals,
                                     const QLocale& locale, std::optional<qsizetype> declined)
{
    QHash<QString, const EntryGoal*> byTitle;
    qsizetype longest = 0;
    for (const EntryGoal& goal : goals) {
        const QString title = comparable(goal.title, locale).trimmed();
        // The first of several goals with one title.
        if (!title.isEmpty() && !byTitle.contains(title))
            byTitle.insert(title, &goal);
        longest = std::max(longest, goal.title.size());
    }
    int examined = 0;
    for (qsizetype start = text.size() - 1; start >= 0 && examined < examinedMentions; --start) {
        if (!beginsMention(text, start) || start == declined)
            continue;
        ++examined;
        // Folding and full-width letters change the length a little.
        const qsizetype furthest =
            std::min(text.size(), start + 1 + std::min(2 * longest, longestNamed));
        for (qsizetype end = furthest; end > start + 1; --end) {
            if (!isTitleEnd(text, end) || text.at(end - 1).isSpace() ||
                text.at(start + 1).isSpace())
                continue;
            const QString written = text.mid(start + 1, end - start - 1);
            if (const EntryGoal* const goal = byTitle.value(comparable(written, locale)))
                return NamedGoal{*goal, {start, end, written}};
        }
    }
    return std::nullopt;
}

std::optional<GoalID> proposedGoal(const QList<EntryGoal>& goals, std::optional<GoalID> ofWindow,
                                   std::optional<GoalID> last)
{
    const auto isThere = [&goals](const std::optional<GoalID>& goalID) {
        return goalID && std::ranges::any_of(goals, [&goalID](const EntryGoal& goal) {
                   return goal.goalID == goalID;
               });
    };
    if (isThere(ofWindow))
        return ofWindow;
    return isThere(last) ? last : std::nullopt;
}

} // namespace kelpa
