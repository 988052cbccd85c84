#include "platform/numbers/NameTable.h"

#include <QCryptographicHash>
#include <QList>

#include <algorithm>
#include <set>
#include <utility>

namespace kelpa {

namespace {

constexpr char heading[] = "Kelpa window names 1";

QByteArray checksum(const QByteArray& text)
{
    return QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex();
}

/// The bytes that `text` encodes; absent unless they encode to the same text.
std::optional<QByteArray> bytesOf(const QByteArray& text)
{
    QByteArray bytes = QByteArray::fromHex(text);
    return bytes.isEmpty() || bytes.toHex() != text ? std::nullopt
                                                    : std::optional(std::move(bytes));
}

/// The number that `text` writes in decimal; absent unless it is written in the same way.
std::optional<WindowID> numberOf(const QByteArray& text)
{
    const WindowID number = text.toUInt();
    const bool isBelieved = number != 0 && number <= greatestBelievedWindow;
    return isBelieved && QByteArray::number(number) == text ? std::optional(number) : std::nullopt;
}

} // namespace

QByteArray encodedNameTable(const NameTable& table)
{
    QByteArray text = QByteArray(heading) + '\n' + table.run.toHex() + '\n';
    for (const auto& [name, number] : table.numbers)
        text += QByteArray::number(number) + ' ' + name.toHex() + '\n';
    return text + checksum(text) + '\n';
}

std::optional<NameTable> decodedNameTable(const QByteArray& text)
{
    QList<QByteArray> lines = text.split('\n');
    // The heading, the run, the checksum, and nothing after the last line's end.
    if (lines.size() < 4 || lines.takeFirst() != heading || !lines.takeLast().isEmpty())
        return std::nullopt;
    const QByteArray sum = lines.takeLast();
    if (text.size() < sum.size() + 1 || checksum(text.chopped(sum.size() + 1)) != sum)
        return std::nullopt;
    const std::optional<QByteArray> run = bytesOf(lines.takeFirst());
    if (!run || static_cast<std::size_t>(lines.size()) > NameTable::mostWindows)
        return std::nullopt;
    NameTable table{.run = *run, .numbers = {}};
    std::set<WindowID> numbers;
    for (const QByteArray& line : std::as_const(lines)) {
        const qsizetype space = line.indexOf(' ');
        const std::optional<WindowID> number = numberOf(line.left(std::max<qsizetype>(space, 0)));
        const std::optional<QByteArray> name = bytesOf(line.mid(space + 1));
        if (!number || !name || name->size() > NameTable::longestName ||
            !numbers.insert(*number).second || !table.numbers.emplace(*name, *number).second)
            return std::nullopt;
    }
    // The order of the lines is a part of the form.
    return encodedNameTable(table) == text ? std::optional(std::move(table)) : std::nullopt;
}

} // namespace kelpa
