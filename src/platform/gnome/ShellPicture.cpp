#include "platform/gnome/ShellPicture.h"

#include <QBuffer>
#include <QByteArray>
#include <QImageReader>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace kelpa::gnome {

namespace {

constexpr qint64 bytesPerPixel = 4;
/// Beside its pixels, which are compressed.
constexpr qint64 longestHeader = 65'536;

std::optional<QByteArray> contentsOf(int descriptor, qint64 longest)
{
    struct stat file
    {};
    // A pipe or a device might not answer.
    if (::fstat(descriptor, &file) != 0 || !S_ISREG(file.st_mode) || file.st_size <= 0 ||
        file.st_size > longest)
        return std::nullopt;
    QByteArray contents(static_cast<qsizetype>(file.st_size), Qt::Uninitialized);
    qsizetype done = 0;
    while (done < contents.size()) {
        const ssize_t count = ::pread(descriptor, contents.data() + done,
                                      static_cast<std::size_t>(contents.size() - done), done);
        if (count == 0 || (count < 0 && errno != EINTR))
            return std::nullopt;
        done += count < 0 ? 0 : count;
    }
    return contents;
}

bool isWithin(const QSize& size, const QSize& largest)
{
    return size.width() > 0 && size.height() > 0 && size.width() <= largest.width() &&
           size.height() <= largest.height();
}

} // namespace

std::optional<QImage> readPicture(int descriptor, const QSize& largest)
{
    if (largest.isEmpty())
        return std::nullopt;
    const qint64 pixels = qint64{largest.width()} * largest.height();
    std::optional<QByteArray> contents =
        contentsOf(descriptor, 2 * bytesPerPixel * pixels + longestHeader);
    if (!contents)
        return std::nullopt;
    QBuffer buffer(&*contents);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    if (!isWithin(reader.size(), largest))
        return std::nullopt;
    const QImage image = reader.read();
    if (!isWithin(image.size(), largest))
        return std::nullopt;
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace kelpa::gnome
