#include "windows/memory/TitleIdentity.h"

#include "windows/memory/CommonTitles.h"
#include "windows/memory/TitleParts.h"

#include <QRegularExpression>

#include <algorithm>
#include <optional>

namespace kelpa {

namespace {

using Pattern = QRegularExpression;

/// Titles with more parts than this are not stripped any further.
constexpr int mostParts = 8;

/// Takes off one thing after the other until nothing is left that changes by itself.
class Stripped
{
public:
    Stripped(QString text, const ApplicationNames& names, bool isPictureEditor)
        : m_text(std::move(text)), m_names(names)
    {
        for (int i = 0; i < 2 * mostParts; ++i) {
            const bool isChanged = stripMarks() || stripLeadingBracket() ||
                                   stripTrailingBracket() || stripFirstPart() || stripLastPart() ||
                                   stripRest();
            if (!isChanged)
                break;
        }
        if (isPictureEditor)
            stripPictureNumber();
    }

    const QString& text() const { return m_text; }

private:
    /// False when nothing would be left, or is taken off.
    bool replaceBy(const QString& text)
    {
        const QString trimmed = text.trimmed();
        if (trimmed.isEmpty() || trimmed == m_text)
            return false;
        m_text = trimmed;
        return true;
    }

    bool stripMarks()
    {
        if (const qsizetype length = lengthOfMark(m_text); length > 0)
            return replaceBy(m_text.sliced(length));
        if (m_text.isEmpty() || !QStringView(u"*•●+]").contains(m_text.back()))
            return false;
        static const Pattern trailing(QStringLiteral(R"((\s*[*•●]|\s+\+|\s*\[[+*]\])$)"));
        QString text = m_text;
        return replaceBy(text.remove(trailing));
    }

    bool stripLeadingBracket()
    {
        const std::optional<BracketedPart> bracket = leadingBracket(m_text);
        if (!bracket)
            return false;
        // "(2) Minutes.pdf" is a name.
        const bool isCount = isUnreadCount(bracket->inside) && !hasExtension(bracket->rest);
        const bool isPlace = isPosition(bracket->inside) && hasExtension(bracket->rest);
        return (isCount || isPlace || isPassing(bracket->inside)) && replaceBy(bracket->rest);
    }

    bool stripTrailingBracket()
    {
        const std::optional<BracketedPart> bracket = trailingBracket(m_text);
        if (!bracket)
            return false;
        // "Minutes (2)" is a name.
        const bool isCount = isUnreadCount(bracket->inside) &&
                             (isInbox(bracket->rest) || m_names.contains(bracket->rest) ||
                              !bracket->inside.back().isDigit());
        const bool isPlace = isPosition(bracket->inside) && hasExtension(bracket->rest);
        return (isCount || isPlace || isPassing(bracket->inside)) && replaceBy(bracket->rest);
    }

    bool stripFirstPart()
    {
        const std::optional<SeparatorPlace> end = firstSeparator(m_text);
        if (!end)
            return false;
        const QString part = m_text.first(end->begin).trimmed();
        const QString rest = m_text.sliced(end->begin + end->length);
        if (isTime(part) || isProgress(part))
            return replaceBy(rest);
        // "Inbox (3) - anna@example.org"
        const std::optional<BracketedPart> bracket = trailingBracket(part);
        if (bracket && isUnreadCount(bracket->inside) &&
            (isInbox(bracket->rest) || m_names.contains(bracket->rest) ||
             !bracket->inside.back().isDigit()))
            return replaceBy(bracket->rest + m_text.sliced(end->begin));
        return false;
    }

    bool stripLastPart()
    {
        const std::optional<SeparatorPlace> begin = lastSeparator(m_text);
        if (!begin)
            return false;
        const QString part = m_text.sliced(begin->begin + begin->length).trimmed();
        const QString rest = m_text.first(begin->begin);
        // Its own name stands there once: what precedes it may be a page about the application.
        const bool isName = !m_isNameStripped && m_names.contains(part);
        if (!isName && !isPassing(part) && !isPosition(part))
            return false;
        m_isNameStripped = m_isNameStripped || isName;
        return replaceBy(rest);
    }

    bool stripRest()
    {
        if (m_text.isEmpty())
            return false;
        // "45% of disk.iso", "photo.xcf @ 66,7% (RGB)", "Call with Anna 00:12:33", "main.c +
        // (~/src)".
        static const Pattern share(
            QStringLiteral(R"(^\d{1,3}([.,]\d+)?\s?%\s+(of|von|de|di|из)\s+)"),
            Pattern::CaseInsensitiveOption);
        static const Pattern zoom(QStringLiteral(R"(\s@\s?\d{1,4}([.,]\d+)?\s?%.*$)"));
        static const Pattern running(
            QStringLiteral(R"(\s\d{1,3}:\d{2}:\d{2}(\s*/\s*\d{1,3}:\d{2}:\d{2})?$)"));
        static const Pattern modified(QStringLiteral(R"(\s=?[+-]\s\()"));
        QString text = m_text;
        if (text.contains(u'%')) {
            text.remove(share);
            text.remove(zoom);
        }
        if (text.contains(u':') && text.back().isDigit())
            text.remove(running);
        if (text.contains(u'('))
            text.replace(modified, QStringLiteral(" ("));
        return replaceBy(text);
    }

    /// "photo.png-3.0 (RGB colour, 2 layers) 1920x1080": the third picture opened, its first view.
    void stripPictureNumber()
    {
        static const Pattern number(QStringLiteral(R"(-\d{1,4}\.\d{1,3}\s\(.*$)"));
        QString text = m_text;
        replaceBy(text.remove(number));
    }

    QString m_text;
    const ApplicationNames& m_names;
    bool m_isNameStripped = false;
};

/// A shell's prompt in the home folder: of every new terminal.
bool isHomePrompt(const QString& part)
{
    if (!part.contains(u'~') && !part.contains(u'/') && !part.contains(u'@'))
        return false;
    static const Pattern prompt(
        QStringLiteral(
            R"(^(\[?[\w.-]+@[\w.-]+(:\s?|\s))?(~|/root|/home/[\w.-]+|/Users/[\w.-]+)/?\]?\s?[$#%>]?$)"),
        Pattern::UseUnicodePropertiesOption);
    static const Pattern host(QStringLiteral(R"(^\[?[\w.-]+@[\w.-]+\]?[:$#%]?$)"),
                              Pattern::UseUnicodePropertiesOption);
    return prompt.match(part).hasMatch() || host.match(part).hasMatch();
}

bool isBlankAddress(const QString& part)
{
    if (!part.contains(u':'))
        return false;
    static const Pattern address(QStringLiteral(
        R"(^(about:\w*|(chrome|edge|brave|vivaldi|opera)://(newtab|new-tab-page|startpage)/?|data:,?)$)"));
    return address.match(part).hasMatch();
}

bool hasLetter(const QString& text)
{
    return std::ranges::any_of(text,
                               [](QChar each) { return each.isLetter() || each.isSurrogate(); });
}

/// A single letter says nothing, a single ideograph may.
bool isTooShort(const QString& text)
{
    return text.size() < 2 && (text.isEmpty() || text.front().script() != QChar::Script_Han);
}

bool saysNothing(const QString& text, const ApplicationNames& names)
{
    if (isTooShort(text) || (!hasLetter(text) && !text.front().isDigit()))
        return true;
    const auto isEmpty = [&names](const QString& part) {
        return part.isEmpty() || names.contains(part) || isUnnamed(part) || isCommonPlace(part) ||
               isBlankAddress(part) || isHomePrompt(part) || isPassing(part);
    };
    const QStringList parts = partsOf(text);
    // "Untitled - name of a site": the first part is the document.
    return isEmpty(text) || std::ranges::all_of(parts, isEmpty) || isUnnamed(parts.front());
}

} // namespace

QString visibleText(const QString& text)
{
    QString visible;
    visible.reserve(std::min(text.size(), longestTitle));
    for (const QChar each : text) {
        if (visible.size() == longestTitle)
            break;
        switch (each.category()) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            visible.append(QChar(QChar::Space));
            break;
        case QChar::Other_Format:
            // Directions of reading, joiners and byte order marks.
            break;
        default:
            visible.append(each);
        }
    }
    if (!visible.isEmpty() && visible.back().isHighSurrogate())
        visible.chop(1);
    return visible.simplified();
}

TitleIdentity titleIdentity(const QString& title, const QString& application,
                            const QString& applicationName)
{
    QString text = visibleText(title);
    const auto isAscii = [](QChar each) { return each.unicode() < 0x80; };
    if (!std::ranges::all_of(text, isAscii))
        text = text.normalized(QString::NormalizationForm_KC).simplified();
    const ApplicationNames names(application, applicationName);
    const bool isPictureEditor =
        application.contains(QStringLiteral("gimp"), Qt::CaseInsensitive) ||
        applicationName.contains(QStringLiteral("image manipulation"), Qt::CaseInsensitive);
    TitleIdentity identity{Stripped(text, names, isPictureEditor).text(), true};
    identity.saysNothing = saysNothing(identity.text, names);
    return identity;
}

bool contradict(const TitleIdentity& left, const TitleIdentity& right)
{
    if (left.saysNothing || right.saysNothing)
        return false;
    const QStringList parts = partsOf(left.text);
    return !std::ranges::any_of(partsOf(right.text),
                                [&parts](const QString& part) { return parts.contains(part); });
}

} // namespace kelpa
