// What a person writes after a number sign to say which goal a todo is for.
#pragma once

#include <QString>

#include <optional>

namespace kelpa {

/// A part of a text that begins with a number sign. Positions are in UTF-16 units.
struct GoalMention
{
    /// Of the sign.
    qsizetype start = 0;
    /// Behind the last character.
    qsizetype end = 0;
    /// What is to be searched for: the text behind the sign, as far as it is typed.
    QString query;

    friend bool operator==(const GoalMention&, const GoalMention&) = default;
};

/// Whether a goal may be named from this position of the text on: a number sign, also a full-width
/// one, is there, and no word goes on over it, as in "C#". Chinese and Japanese write no space
/// before it.
bool beginsMention(const QString& text, qsizetype position);

/// The mention that is being typed at `caret`, from the nearest sign before it to the end of the
/// word that `caret` is in. It may have spaces, as the titles of goals have. Absent without a sign,
/// and where white space follows the sign.
std::optional<GoalMention> mentionAt(const QString& text, qsizetype caret);

struct EditedText
{
    QString text;
    qsizetype caret = 0;

    friend bool operator==(const EditedText&, const EditedText&) = default;
};

/// The text without the mention, and with at most one of the spaces around it. The caret is where
/// the mention was.
EditedText withoutMention(const QString& text, const GoalMention& mention);

} // namespace kelpa
