#include "transfer/MarkdownInline.h"

#include <array>
#include <utility>

namespace kelpa {

namespace {

constexpr QStringView lineBreak = u"<br>";

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c.isSurrogate();
}

bool isPunctuation(QChar c)
{
    const char16_t unit = c.unicode();
    return (unit >= u'!' && unit <= u'/') || (unit >= u':' && unit <= u'@') ||
           (unit >= u'[' && unit <= u'`') || (unit >= u'{' && unit <= u'~');
}

/// Whether the character may be markup. An underscore within a word is none.
bool isMarkup(QStringView text, qsizetype i)
{
    switch (text[i].unicode()) {
    case u'\\':
    case u'`':
    case u'*':
    case u'[':
    case u']':
    case u'<':
    case u'~':
        return true;
    case u'_':
        return i == 0 || i + 1 == text.size() || !isWordCharacter(text[i - 1]) ||
               !isWordCharacter(text[i + 1]);
    case u'&':
        return i + 1 < text.size() && (text[i + 1].isLetter() || text[i + 1] == u'#');
    default:
        return false;
    }
}

struct Entity
{
    QStringView text;
    QChar character;
};

constexpr std::array entities{
    Entity{u"&amp;", u'&'},  Entity{u"&lt;", u'<'},   Entity{u"&gt;", u'>'},
    Entity{u"&quot;", u'"'}, Entity{u"&#39;", u'\''}, Entity{u"&nbsp;", u'\u00a0'},
};

/// What stands for one character at the beginning of the text, as its length and the character;
/// a length of 0 where nothing does.
std::pair<qsizetype, QChar> characterAt(QStringView text)
{
    if (text[0] == u'\\' && text.size() > 1 && isPunctuation(text[1]))
        return {2, text[1]};
    for (const QStringView breaks : {lineBreak, QStringView(u"<br/>"), QStringView(u"<br />")}) {
        if (text.startsWith(breaks, Qt::CaseInsensitive))
            return {breaks.size(), u'\n'};
    }
    for (const Entity& entity : entities) {
        if (text.startsWith(entity.text))
            return {entity.text.size(), entity.character};
    }
    return {0, {}};
}

} // namespace

QString escapedMarkdown(const QString& text)
{
    QString escaped;
    escaped.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c == u'\n' || c == u'\r') {
            escaped.append(lineBreak);
            if (c == u'\r' && i + 1 < text.size() && text.at(i + 1) == u'\n')
                ++i;
            continue;
        }
        if (isMarkup(text, i))
            escaped.append(u'\\');
        escaped.append(c == QChar(QChar::Null) ? QChar(QChar::ReplacementCharacter) : c);
    }
    return escaped;
}

QString unescapedMarkdown(QStringView text)
{
    QString shown;
    shown.reserve(text.size());
    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text[i];
        // Code shows backslashes.
        const qsizetype codeEnd = c == u'`' ? text.indexOf(u'`', i + 1) : -1;
        if (codeEnd > 0) {
            shown.append(text.sliced(i, codeEnd + 1 - i));
            i = codeEnd + 1;
            continue;
        }
        const bool isSpecial = c == u'\\' || c == u'<' || c == u'&';
        const auto [length, character] =
            isSpecial ? characterAt(text.sliced(i)) : std::pair<qsizetype, QChar>(0, {});
        shown.append(length > 0 ? character : c);
        i += length > 0 ? length : 1;
    }
    return shown;
}

bool isEscaped(QStringView text, qsizetype index)
{
    qsizetype first = index;
    while (first > 0 && text[first - 1] == u'\\')
        --first;
    return (index - first) % 2 != 0;
}

} // namespace kelpa
