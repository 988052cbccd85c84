#include "windows/memory/TitleParts.h"

#include "windows/memory/CommonTitles.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <string_view>

namespace kelpa {

namespace {

using Expression = QRegularExpression;

/// Between the parts of a title. Spaced, since a name may contain any of them.
constexpr std::array separators = std::to_array<std::u16string_view>(
    {u" - ", u" – ", u" — ", u" | ", u" · ", u" • ", u" :: ", u" : "});

/// Words in the folded case, without version numbers.
QStringList wordsOf(const QString& text)
{
    QStringList words;
    QString word;
    bool hasLetter = false;
    const auto end = [&] {
        if (hasLetter)
            words.append(word);
        word.clear();
        hasLetter = false;
    };
    for (const QChar each : text.toCaseFolded()) {
        if (!each.isLetterOrNumber() && !each.isMark() && !each.isSurrogate()) {
            end();
            continue;
        }
        word.append(each);
        hasLetter = hasLetter || !each.isDigit();
    }
    end();
    return words;
}

bool containsAll(const QStringList& words, const QStringList& wanted)
{
    return !wanted.isEmpty() && std::ranges::all_of(wanted, [&words](const QString& each) {
        return words.contains(each);
    });
}

bool isMark(QChar each)
{
    constexpr QStringView marks = u"*•·∙!";
    return each.category() == QChar::Symbol_Other || marks.contains(each);
}

} // namespace

std::optional<SeparatorPlace> firstSeparator(QStringView title)
{
    std::optional<SeparatorPlace> first;
    for (const std::u16string_view each : separators) {
        const qsizetype begin = title.indexOf(QStringView(each));
        if (begin >= 0 && (!first || begin < first->begin))
            first = SeparatorPlace{begin, QStringView(each).size()};
    }
    return first;
}

std::optional<SeparatorPlace> lastSeparator(QStringView title)
{
    std::optional<SeparatorPlace> last;
    for (const std::u16string_view each : separators) {
        const qsizetype begin = title.lastIndexOf(QStringView(each));
        if (begin >= 0 && (!last || begin > last->begin))
            last = SeparatorPlace{begin, QStringView(each).size()};
    }
    return last;
}

QStringList partsOf(QStringView title)
{
    QStringList parts;
    while (const std::optional<SeparatorPlace> separator = firstSeparator(title)) {
        parts.append(title.first(separator->begin).trimmed().toString());
        title = title.sliced(separator->begin + separator->length);
    }
    parts.append(title.trimmed().toString());
    return parts;
}

std::optional<BracketedPart> leadingBracket(const QString& title)
{
    if (title.isEmpty() || !QStringView(u"([{【").contains(title.front()))
        return std::nullopt;
    static const Expression bracket(
        QStringLiteral(R"(^[(\[{【]([^()\[\]{}【】]*)[)\]}】]\s*(.*)$)"));
    const auto match = bracket.match(title);
    if (!match.hasMatch() || match.capturedView(2).isEmpty())
        return std::nullopt;
    return BracketedPart{match.captured(1).trimmed(), match.captured(2)};
}

std::optional<BracketedPart> trailingBracket(const QString& title)
{
    if (title.isEmpty() || !QStringView(u")]}】").contains(title.back()))
        return std::nullopt;
    static const Expression bracket(
        QStringLiteral(R"(^(.*?)\s*[(\[{【]([^()\[\]{}【】]*)[)\]}】]$)"));
    const auto match = bracket.match(title);
    if (!match.hasMatch() || match.capturedView(1).isEmpty())
        return std::nullopt;
    return BracketedPart{match.captured(2).trimmed(), match.captured(1).trimmed()};
}

qsizetype lengthOfMark(QStringView title)
{
    if (title.isEmpty())
        return 0;
    // Pictures outside of the first plane, a loudspeaker or a bell, are marks, too.
    if (title.first(1).front().isHighSurrogate() && title.size() > 1) {
        const char32_t point = QChar::surrogateToUcs4(title.at(0), title.at(1));
        return QChar::category(point) == QChar::Symbol_Other ? 2 : 0;
    }
    return isMark(title.front()) ? 1 : 0;
}

bool endsWithBracket(QStringView title)
{
    return !title.isEmpty() && QStringView(u")]}】）］").contains(title.back());
}

bool hasExtension(const QString& name)
{
    static const Expression extension(QStringLiteral(R"(\.[A-Za-z][A-Za-z0-9]{0,4}$)"));
    return extension.match(name).hasMatch();
}

bool isTime(const QString& part)
{
    if (!part.contains(u':'))
        return false;
    static const Expression time(QStringLiteral(
        R"(^(上午|下午|午前|午後|오전|오후)?\s?\d{1,3}:\d{2}(:\d{2})?(\s?[AaPp]\.?[Mm]\.?)?)"
        R"((\s*/\s*\d{1,3}:\d{2}(:\d{2})?)?$)"));
    return time.match(part).hasMatch();
}

bool isProgress(const QString& part)
{
    if (!part.contains(u'%'))
        return false;
    static const Expression progress(
        QStringLiteral(R"(^\d{1,3}([.,]\d+)?\s?%(\s+(complete|completed|done|downloaded|uploaded|)"
                       R"(fertig|abgeschlossen|terminé|effectué|完了|已完成|完成|완료))?$)"),
        Expression::CaseInsensitiveOption);
    return progress.match(part).hasMatch();
}

bool isPosition(const QString& part)
{
    if (std::ranges::none_of(part, [](QChar each) { return each.isDigit(); }))
        return false;
    static const Expression position(
        QStringLiteral(
            R"(^((page|seite|página|pagina|strona|страница|第|페이지)\s*\d{1,6})"
            R"((\s*(/|of|von|sur|de|di|van|z|из|页|頁|ページ)[\s,，]*(共)?\s*\d{0,6}\s*(页|頁|ページ)?)?|)"
            R"(\d{1,6}\s*(/|of|von|sur)\s*\d{1,6}(\s*(pages?|seiten|ページ|페이지))?)$)"),
        Expression::CaseInsensitiveOption);
    return position.match(part).hasMatch();
}

bool isPassing(const QString& part)
{
    return isTime(part) || isProgress(part) || isStatePhrase(part);
}

ApplicationNames::ApplicationNames(const QString& application, const QString& name)
{
    add(name);
    // "org.kde.kate" is Kate, "libreoffice-writer" LibreOffice Writer.
    add(application.section(u'.', -1));
}

bool ApplicationNames::contains(const QString& part) const
{
    constexpr qsizetype mostWordsOfMaker = 2;
    const QStringList words = wordsOf(part);
    return !words.isEmpty() && std::ranges::any_of(m_names, [&words](const QStringList& name) {
        const qsizetype more = words.size() - name.size();
        if (more <= 0)
            return containsAll(name, words);
        return more <= mostWordsOfMaker && words.sliced(more) == name;
    });
}

void ApplicationNames::add(const QString& name)
{
    const QStringList words = wordsOf(name);
    if (!words.isEmpty() && !m_names.contains(words))
        m_names.append(words);
}

} // namespace kelpa
