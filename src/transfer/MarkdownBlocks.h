// Divides a Markdown file into headings, list items and everything else, line by line.
#pragma once

#include "model/TodoItem.h"
#include "transfer/TransferText.h"

#include <QString>
#include <QStringView>

#include <cstdint>
#include <optional>

namespace kelpa {

struct MarkdownBlock
{
    enum class Kind : std::uint8_t {
        heading,
        /// Of a list, or a line that begins with a box.
        item,
        /// A line of anything else.
        other,
    };

    Kind kind = Kind::other;
    /// Without the marks of the block; within the line as it is.
    QString text;
    /// Of its first line.
    qsizetype line = 0;
    /// Of a heading: 1 … 6, and 7 for a line in bold.
    int level = 0;
    /// Of an item, by its box.
    TodoStatus status = TodoStatus::todo;
};

class MarkdownBlocks
{
public:
    /// `text` outlives this.
    explicit MarkdownBlocks(const QString& text);

    /// Absent at the end. Blank lines, rules between sections and quotation marks are left out.
    std::optional<MarkdownBlock> next();

private:
    /// Reads one more line, and returns the block that it ends or is.
    std::optional<MarkdownBlock> takeLine(QStringView line);
    std::optional<MarkdownBlock> begin(MarkdownBlock block);
    /// The block under way, unless there is none.
    std::optional<MarkdownBlock> finish();
    bool isLiteral(QStringView line);

    LineReader m_lines;
    /// A paragraph, whose next line may make it a heading, or an item, whose next line may continue
    /// it.
    std::optional<MarkdownBlock> m_open;
    /// A block that is ready after the one that `next` returned.
    std::optional<MarkdownBlock> m_ready;
    /// The mark that ends the code block under way; empty outside.
    QString m_fence;
    /// The line that ends the header with values of other programs; 0 without one.
    qsizetype m_headerEnd = 0;
};

} // namespace kelpa
