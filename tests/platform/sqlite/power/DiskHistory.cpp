#include "platform/sqlite/power/DiskHistory.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace kelpa::test {

namespace {

using Kind = DiskStep::Kind;

constexpr qint64 sectorSize = 512;

QString folderOf(const QString& name)
{
    return name.contains(u'/') ? name.section(u'/', 0, -2) : QString();
}

bool chance(double probability, std::mt19937_64& random)
{
    return std::bernoulli_distribution(probability)(random);
}

/// The sectors of a write, each with its part of the bytes.
DiskHistory sectorsOf(const DiskStep& write)
{
    DiskHistory sectors;
    const qint64 end = write.offset + write.bytes.size();
    for (qint64 from = write.offset; from < end;) {
        const qint64 to = std::min(end, (from / sectorSize + 1) * sectorSize);
        DiskStep sector = write;
        sector.offset = from;
        sector.bytes = write.bytes.mid(from - write.offset, to - from);
        sectors.append(sector);
        from = to;
    }
    return sectors;
}

/// Where a file has grown and its bytes are lost, it holds zeros or those of a deleted file.
QByteArray staleBytes(qint64 size, std::mt19937_64& random)
{
    QByteArray bytes(size, '\0');
    if (chance(0.5, random)) {
        for (char& byte : bytes)
            byte = static_cast<char>(random());
    }
    return bytes;
}

/// The part of `step` that reaches the disk; the length of the file and its bytes independently.
DiskHistory remainsOf(const DiskStep& step, double survival, std::mt19937_64& random)
{
    if (step.kind != Kind::write)
        return chance(survival, random) ? DiskHistory{step} : DiskHistory{};
    DiskHistory remains;
    if (chance(survival, random)) {
        DiskStep grown = step;
        grown.kind = Kind::growth;
        grown.bytes = staleBytes(step.bytes.size(), random);
        remains.append(grown);
    }
    for (const DiskStep& sector : sectorsOf(step)) {
        if (chance(survival, random))
            remains.append(sector);
    }
    return remains;
}

} // namespace

void DiskImage::writeTo(const QString& folder) const
{
    const QDir root(folder);
    for (const QString& name : folders)
        root.mkpath(name);
    for (const auto& [name, bytes] : files.asKeyValueRange()) {
        QFile file(root.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("a disk image cannot be written to %s", qPrintable(file.fileName()));
    }
}

QByteArray DiskImage::digest() const
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    for (const auto& [name, bytes] : files.asKeyValueRange()) {
        hash.addData(name.toUtf8() + '\0' + QByteArray::number(bytes.size()) + '\0');
        hash.addData(bytes);
    }
    QStringList names(folders.begin(), folders.end());
    names.sort();
    hash.addData(names.join(u'\n').toUtf8());
    return hash.result();
}

void CutDisk::Contents::apply(const DiskStep& step)
{
    switch (step.kind) {
    case Kind::createFolder:
        folders.insert(step.inode);
        names.insert(step.name, step.inode);
        break;
    case Kind::createFile:
        names.insert(step.name, step.inode);
        break;
    case Kind::write:
    case Kind::growth: {
        QByteArray& file = files[step.inode];
        const qint64 oldEnd = file.size();
        if (oldEnd < step.offset + step.bytes.size())
            file.append(step.offset + step.bytes.size() - oldEnd, '\0');
        const qint64 from = step.kind == Kind::growth ? std::max(step.offset, oldEnd) : step.offset;
        const qint64 skipped = std::min(from - step.offset, qint64{step.bytes.size()});
        file.replace(from, step.bytes.size() - skipped, step.bytes.mid(skipped));
        break;
    }
    case Kind::truncate: {
        QByteArray& file = files[step.inode];
        file.append(std::max<qint64>(0, step.offset - file.size()), '\0');
        file.truncate(step.offset);
        break;
    }
    case Kind::rename:
        names.remove(step.name);
        names.insert(step.newName, step.inode);
        break;
    case Kind::remove:
        names.remove(step.name);
        break;
    case Kind::syncFile:
    case Kind::syncFolder:
        break;
    }
}

void CutDisk::perform(const DiskStep& step)
{
    const auto isOfFile = [](const DiskStep& pending) {
        return pending.kind == Kind::write || pending.kind == Kind::truncate;
    };
    if (step.kind == Kind::syncFile)
        applyPending([&](const DiskStep& pending) {
            return isOfFile(pending) && pending.inode == step.inode;
        });
    else if (step.kind == Kind::syncFolder)
        applyPending([&](const DiskStep& pending) {
            return !isOfFile(pending) && folderOf(pending.name) == step.name;
        });
    else
        m_pending.append(step);
}

void CutDisk::applyPending(const std::function<bool(const DiskStep&)>& isSynced)
{
    DiskHistory left;
    for (const DiskStep& step : std::as_const(m_pending)) {
        if (isSynced(step))
            m_synced.apply(step);
        else
            left.append(step);
    }
    m_pending = left;
}

DiskImage CutDisk::imageAfter(Loss loss, std::mt19937_64& random) const
{
    Contents contents = m_synced;
    // Few losses and few survivors are the cases in which one step matters.
    const double survival = std::uniform_real_distribution<>(0, 1)(random);
    const auto kept = std::uniform_int_distribution<qsizetype>(0, m_pending.size())(random);
    for (qsizetype i = 0; i < m_pending.size(); ++i) {
        const DiskStep& step = m_pending[i];
        if (loss == Loss::nothing || (loss == Loss::laterOnes && i < kept)) {
            contents.apply(step);
        } else if (loss == Loss::any || (loss == Loss::laterOnes && i == kept)) {
            for (const DiskStep& part : remainsOf(step, survival, random))
                contents.apply(part);
        }
    }
    // A name is there only if its folders are.
    DiskImage image;
    for (const auto& [name, inode] : std::as_const(contents.names).asKeyValueRange()) {
        const QString folder = folderOf(name);
        if (!folder.isEmpty() && !image.folders.contains(folder))
            continue;
        if (contents.folders.contains(inode))
            image.folders.insert(name);
        else
            image.files.insert(name, contents.files.value(inode));
    }
    return image;
}

} // namespace kelpa::test
