// Divides an iCalendar file into its VTODO components, so that the calendar library gets one small
// piece at a time, however large or deeply nested the file is.
#pragma once

#include "transfer/TransferText.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace kelpa {

/// The bytes of a file with each fold that lies within a character of UTF-8 moved behind it: lines
/// may be folded between any two bytes, and are decoded one by one. Lines keep their numbers.
QByteArray foldedBetweenCharacters(const QByteArray& bytes);

/// A content line with the lines that continue it.
struct ContentLine
{
    /// In upper case.
    QByteArray name{};
    /// As it is in the file, each line ended by CR LF.
    QString text{};
    /// Of its first line.
    qsizetype line = 0;

    /// The value of a line that is not folded.
    QStringView value() const;
};

class ContentLines
{
public:
    /// `text` outlives this.
    explicit ContentLines(QStringView text) : m_lines(text) {}

    /// Absent at the end. Blank lines are left out; a line without a value has no name.
    std::optional<ContentLine> next();

private:
    LineReader m_lines;
    std::optional<QStringView> m_ahead;
};

/// A content line whose place on the board depends on what becomes of its todo.
struct ConditionalLine
{
    enum class Kind : std::uint8_t {
        /// STATUS, COMPLETED or PERCENT-COMPLETE; the first of them speaks for all.
        state,
        priority,
        categories,
    };
    Kind kind = Kind::state;
    qsizetype line = 0;
    QString text{};
};

/// One thing that the file has: a todo, or something that is left out.
struct CalendarPiece
{
    /// Of a todo, without its beginning and end and what is nested in it; empty otherwise.
    QByteArray contentLines{};
    /// Where it begins.
    qsizetype line = 0;
    /// For a person: the line of its title, or that which is left out.
    QString text{};
    /// Absent for a todo.
    std::optional<SkipReason> skipped{};
    /// Of a todo, in the order of the file.
    QList<ConditionalLine> conditional{};
};

/// Reads the file piece by piece.
class CalendarFile
{
public:
    /// `text` outlives this.
    explicit CalendarFile(QStringView text) : m_lines(text) {}

    /// Absent at the end, and where the file is refused.
    std::optional<CalendarPiece> next();

    /// Why the file is refused; absent otherwise. Valid once `next` returned nothing.
    std::optional<ImportRefusal> refusal() const;
    /// The name of the list that the file was made of, as far as it has been read; empty for none.
    const QString& name() const { return m_name; }

private:
    std::optional<CalendarPiece> take(const ContentLine& line);
    std::optional<CalendarPiece> begin(const ContentLine& line);
    std::optional<CalendarPiece> end(const ContentLine& line);
    std::optional<CalendarPiece> takeProperty(const ContentLine& line);

    ContentLines m_lines;
    /// The components that have begun, the innermost last.
    QList<QByteArray> m_open;
    /// How many have begun below the deepest that are kept in `m_open`.
    qsizetype m_tooDeep = 0;
    /// The component of the calendar that has begun last.
    CalendarPiece m_piece;
    /// Whether one of its conditional lines tells its state.
    bool m_hasState = false;
    QString m_name;
    bool m_hasCalendar = false;
    bool m_isOther = false;
};

} // namespace kelpa
