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
        QStringLiteral(R"(^(?:[^\p{L}\p{N}/~]{0,3}|[^\s@]+@[^\s:]+:\s?)(?=/|~[^/\s]*/))"));
    const QRegularExpressionMatch match = beginning.match(title);
    return match.hasMatch() ? match.capturedEnd() : -1;
}

/// Where the path ends that begins at `start`: before the name of the application, or at the end.
qsizetype pathEnd(const QString& title, qsizetype start)
{
    static const QRegularExpression separator(QStringLiteral(R"(\s(?:[-–—|:]\s|[(\[]))"));
    const QRegularExpressionMatch match = separator.match(title, start);
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
