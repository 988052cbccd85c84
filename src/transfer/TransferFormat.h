// The kinds of files in which a board leaves Kelpa and comes back.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <array>
#include <cstdint>
#include <optional>

namespace kelpa {

enum class TransferFormat : std::uint8_t { json, markdown, todoTxt, iCalendar };

inline constexpr std::array allTransferFormats{TransferFormat::json, TransferFormat::markdown,
                                               TransferFormat::todoTxt, TransferFormat::iCalendar};

/// The name on the command line: "json", "markdown", "todo.txt", "icalendar"; and back, in any
/// case, absent for any other text.
QString rawValue(TransferFormat format);
std::optional<TransferFormat> transferFormatFromRawValue(QStringView text);

/// The name of the format as its users write it, the same in every language: "Kelpa (JSON)",
/// "Markdown", "todo.txt", "iCalendar".
QString displayName(TransferFormat format);

/// What files of the format are called, as patterns for a file dialog: "*.md". The first is that of
/// files that Kelpa writes.
QStringList filePatterns(TransferFormat format);
QString mediaType(TransferFormat format);
/// A file name for an export: "Kelpa.md", or that of one goal with what no file system takes
/// replaced: "Taxes 2026.md".
QString suggestedFileName(TransferFormat format, const QString& goalTitle = {});

/// By the ending of the name, in any case; absent for endings that say nothing.
std::optional<TransferFormat> formatOfFileName(QStringView name);
/// The format that a file most likely has: by its beginning where that is certain, else by its
/// name, else by what most of its first lines look like. Absent where nothing fits.
std::optional<TransferFormat> recognizedFormat(QStringView name, const QByteArray& bytes);

} // namespace kelpa
