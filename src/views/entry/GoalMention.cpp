#include "views/entry/GoalMention.h"

#include <QChar>

namespace kelpa {

namespace {

/// Longer than any title that a person would write out.
constexpr qsizetype longestQuery = 200;
constexpr QChar prolongedSound(u'ー');

bool isNumberSign(QChar character)
{
    return character == u'#' || character == u'＃';
}

/// Whether words of the character's script follow each other without a space.
bool isWrittenWithoutSpaces(QChar character)
{
    const QChar::Script script = character.script();
    return script == QChar::Script_Han || script == QChar::Script_Hiragana ||
           script == QChar::Script_Katakana || character == prolongedSound;
}

bool goesOnOver(QChar before)
{
    const bool isOfWord = before.isLetterOrNumber() || before.isMark() || before == u'_' ||
                          before == u'&' || before == u'/' || isNumberSign(before);
    return isOfWord && !isWrittenWithoutSpaces(before);
}

} // namespace

bool beginsMention(const QString& text, qsizetype position)
{
    return position >= 0 && position < text.size() && isNumberSign(text.at(position)) &&
           (position == 0 || !goesOnOver(text.at(position - 1)));
}

std::optional<GoalMention> mentionAt(const QString& text, qsizetype caret)
{
    if (caret < 0 || caret > text.size())
        return std::nullopt;
    qsizetype start = caret - 1;
    while (start >= 0 && !beginsMention(text, start) && caret - start <= longestQuery)
        --start;
    if (!beginsMention(text, start))
        return std::nullopt;
    const QString query = text.mid(start + 1, caret - start - 1);
    if (!query.isEmpty() && query.front().isSpace())
        return std::nullopt;
    qsizetype end = caret;
    while (end < text.size() && !text.at(end).isSpace() && !beginsMention(text, end))
        ++end;
    return GoalMention{start, end, query};
}

EditedText withoutMention(const QString& text, const GoalMention& mention)
{
    const QString before = text.first(mention.start);
    QString after = text.sliced(mention.end);
    const bool isSpaced = before.isEmpty() || before.back().isSpace();
    if (isSpaced && !after.isEmpty() && after.front().isSpace())
        after.remove(0, 1);
    return {before + after, mention.start};
}

} // namespace kelpa
