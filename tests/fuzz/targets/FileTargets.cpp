// Files that any package or program may have put into the person's data folders.
#include "fuzz/FuzzTarget.h"
#include "fuzz/targets/MemoryFile.h"
#include "platform/freedesktop/applications/DesktopEntryFile.h"
#include "platform/freedesktop/applications/LaunchChoice.h"
#include "platform/freedesktop/icons/IconFile.h"
#include "platform/freedesktop/icons/NetWmIcon.h"
#include "platform/freedesktop/icons/SvgComplexityLimit.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace kelpa::fuzz {

namespace {

constexpr int pixels = 32;

void requireSize(const QImage& image)
{
    require(image.width() <= pixels && image.height() <= pixels,
            "an icon is no larger than asked for");
}

} // namespace

void decodeDesktopEntry(const QByteArray& bytes)
{
    const MemoryFile file(bytes);
    const QString id = QStringLiteral("org.test.Entry");
    if (const auto entry = readDesktopEntry(file.path(), id)) {
        require(entry->id == id, "an entry has the id of its file");
        require(!entry->program.contains(u'/'), "a program is a file name");
    }
    const EntryCommands commands = readEntryCommands(file.path());
    commandOf(commands.exec);
    commandOf(commands.newWindowExec);
}

void decodeExecLine(const QByteArray& bytes)
{
    const QString line = QString::fromUtf8(bytes);
    if (const auto command = commandOf(line))
        require(!command->isEmpty() && !command->first().isEmpty(), "a command has a program");
    const QString document = QStringLiteral("/tmp/a \"b\" %f $(c).txt");
    if (const auto command = commandOf(line, document))
        require(!command->isEmpty() && command->mid(1).join(u'\n').contains(document),
                "a document is in an argument, as it is");
}

void decodeIconFile(const QByteArray& bytes)
{
    const MemoryFile file(bytes);
    requireSize(iconFromFile(file.path(), pixels));
}

void decodeSvg(const QByteArray& bytes)
{
    isWithinSvgLimits(bytes);
}

void decodeNetWmIcon(const QByteArray& bytes)
{
    std::vector<std::uint32_t> data(static_cast<std::size_t>(bytes.size()) / 4);
    if (!data.empty())
        std::memcpy(data.data(), bytes.constData(), data.size() * 4);
    requireSize(iconFromNetWmIcon(data, pixels));
}

} // namespace kelpa::fuzz
