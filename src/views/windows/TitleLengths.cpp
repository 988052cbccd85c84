#include "views/windows/TitleLengths.h"

#include <QList>
#include <QRegularExpression>

namespace kelpa {

namespace {

constexpr QChar separatorOfLengths = u'\u009c';
constexpr QChar ellipsis = u'\u2026';

/// In characters; what is longer before a path is a prompt.
constexpr qsizetype longestMark = 3;

/// Of a path: more folders say little, and each form is laid out.
constexpr qsizetype mostFolders = 2;

/// Where the path begins with which the title begins; -1 for none.
qsizetype pathStart(const QString& title)
{
    static const QRegularExpression beginning(
        QStringLiteral(R"(^(?:[^\p{L}\p{N}/~]{0,3}|[^\s@\[]+@[^\s:]+:\s?)(?=/|~[^/\s]*/))"));
    const QRegularExpressionMatch match = beginning.match(title);
    return match.hasMatch() ? match.capturedEnd() : -1;
}

/// Whether what looks like the end of a path, from `start` on, is in the name of a folder: a slash
/// follows before what looks like the next end, at `next`.
bool isInFolder(QStringView title, qsizetype start, qsizetype next)
{
    const QStringView rest = title.sliced(start, next - start).trimmed();
    if (rest.startsWith(u'(') || rest.startsWith(u'[')) {
        // In brackets may be a path of its own.
        const qsizetype close = rest.indexOf(rest.front() == u'(' ? u')' : u']');
        return close >= 0 && rest.sliced(close).contains(u'/');
    }
    // The name of an application may have a slash too.
    return next < title.size() && rest.contains(u'/');
}

/// Where the path ends that begins at `start`: before the name of the application, before what a
/// shell runs there, or at the end.
qsizetype pathEnd(const QString& title, qsizetype start)
{
    static const QRegularExpression separator(
        QStringLiteral(R"(\s[-\x{2013}\x{2014}|:]\s|\s[(\[]|(?<command>:\s))"));
    QRegularExpressionMatch match = separator.match(title, start);
    while (match.hasMatch() && !match.hasCaptured(u"command")) {
        const QRegularExpressionMatch next = separator.match(title, match.capturedEnd());
        const qsizetype nextStart = next.hasMatch() ? next.capturedStart() : title.size();
        if (!isInFolder(title, match.capturedStart(), nextStart))
            break;
        match = next;
    }
    return match.hasMatch() ? match.capturedStart() : title.size();
}

/// The places of the last slashes of the path, the one after all other folders first; without a
/// slash at its end.
QList<qsizetype> lastSlashes(const QString& title, qsizetype start, qsizetype end)
{
    QList<qsizetype> places;
    for (qsizetype place = end - 2; place > start && places.size() <= mostFolders; --place) {
        if (title.at(place) == u'/')
            places.prepend(place);
    }
    return places;
}

} // namespace

QString titleLengths(const QString& title)
{
    const qsizetype start = pathStart(title);
    if (start < 0)
        return title;
    const QList<qsizetype> slashes = lastSlashes(title, start, pathEnd(title, start));
    QString lengths = title;
    for (const qsizetype slash : slashes) {
        // No shorter with an ellipsis.
        if (slash - start < 2)
            continue;
        lengths += separatorOfLengths + title.left(start) + ellipsis + title.mid(slash);
    }
    // The folder says more than the machine.
    if (start > longestMark && !slashes.isEmpty())
        lengths += separatorOfLengths + (ellipsis + title.mid(slashes.last()));
    return lengths;
}

} // namespace kelpa
