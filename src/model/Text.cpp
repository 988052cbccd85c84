#include "model/Text.h"

#include "model/DirectionalNesting.h"

#include <QList>
#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace kelpa {

namespace {

/// The most marks that a character keeps in a line. Hebrew and Tibetan need about half as many.
constexpr int mostMarks = 10;

constexpr QChar ellipsis = u'\u2026';

/// `text` with U+FFFD in place of every unpaired surrogate.
QString wellFormed(QString text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!text.at(i).isSurrogate())
            continue;
        const bool isPair =
            text.at(i).isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        if (isPair)
            ++i;
        else
            text[i] = QChar(QChar::ReplacementCharacter);
    }
    return text;
}

bool splitsPair(const QString& text, qsizetype place)
{
    return text.at(place - 1).isHighSurrogate() && text.at(place).isLowSurrogate();
}

/// Whether a line shows something else in place of the character, or something after it.
bool isSpecial(QChar character)
{
    switch (character.category()) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Mark_NonSpacing:
    case QChar::Mark_Enclosing:
    case QChar::Other_Surrogate:
        return true;
    default:
        return false;
    }
}

/// Writes a line character by character.
class LineWriter
{
public:
    explicit LineWriter(qsizetype expectedLength) { m_line.reserve(expectedLength); }

    void write(char32_t character)
    {
        switch (QChar::category(character)) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            m_marks = 0;
            m_line.append(QChar(QChar::Space));
            return;
        case QChar::Mark_NonSpacing:
        case QChar::Mark_Enclosing:
            if (++m_marks > mostMarks)
                return;
            break;
        case QChar::Other_Format:
            if (DirectionalNesting::isControl(character) && !m_nesting.keeps(character))
                return;
            break;
        default:
            m_marks = 0;
        }
        m_line.append(QChar::fromUcs4(character));
    }

    QString take() { return m_line.append(m_nesting.closers()); }

private:
    QString m_line;
    DirectionalNesting m_nesting{DirectionalNesting::Overrides::kept};
    int m_marks = 0;
};

QString inOneLine(const QString& text)
{
    if (std::none_of(text.cbegin(), text.cend(), isSpecial))
        return text;
    LineWriter line(text.size());
    for (const char32_t character : text.toUcs4())
        line.write(character);
    return line.take();
}

} // namespace

QString trimmedText(const QString& text)
{
    const QString trimmed = text.trimmed();
    return trimmed.isValidUtf16() ? trimmed : wellFormed(trimmed);
}

QString beginning(const QString& text, qsizetype length)
{
    if (text.size() <= length)
        return text;
    // Whether a character ends at `length` depends on the code point there, but on nothing later.
    constexpr qsizetype unitsOfCodePoint = 2;
    const QString searched = text.left(length + unitsOfCodePoint);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, searched);
    finder.setPosition(length);
    const qsizetype end = finder.isAtBoundary() ? length : finder.toPreviousBoundary();
    if (end > 0)
        return text.left(end);
    return text.left(splitsPair(text, length) ? length - 1 : length);
}

QString singleLine(const QString& text)
{
    if (text.size() <= longestShownText)
        return inOneLine(text);
    return inOneLine(beginning(text, longestShownText).trimmed()) + ellipsis;
}

} // namespace kelpa
