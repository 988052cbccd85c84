// The text within a line of Markdown: escaping what would be markup, and reading it back.
#pragma once

#include <QString>
#include <QStringView>

namespace kelpa {

/// A text that Markdown shows as it is, in one line.
QString escapedMarkdown(const QString& text);
/// The text that a line of Markdown shows, where that is certain: escapes, line breaks and the
/// common entities become their characters, code and all other markup stay as they are.
QString unescapedMarkdown(QStringView text);

/// Whether the character at `index` is escaped by the backslashes before it.
bool isEscaped(QStringView text, qsizetype index);

} // namespace kelpa
