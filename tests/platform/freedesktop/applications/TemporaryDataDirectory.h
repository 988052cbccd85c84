// A data directory made for one test.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QString>
#include <QTemporaryDir>

#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace kelpa {

class TemporaryDataDirectory
{
public:
    QString path(const QString& relative = {}) const
    {
        return relative.isEmpty() ? m_directory.path() : m_directory.filePath(relative);
    }

    void write(const QString& relative, const QByteArray& contents) const
    {
        const QString target = path(relative);
        QDir().mkpath(QFileInfo(target).path());
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
            throw std::runtime_error("a test file could not be written");
        }
    }

    /// An entry of applications/ whose program, /bin/true, is there.
    void writeEntry(const QString& id, const QByteArray& name, const QByteArray& more = {}) const
    {
        const QByteArray command = more.contains("Exec=") ? "" : "Exec=/bin/true %U\n";
        write(QStringLiteral("applications/%1.desktop").arg(id),
              "[Desktop Entry]\nType=Application\nName=" + name + "\n" + command + more + "\n");
    }

    /// Makes the folder of entries look as if it was last changed `ago`.
    void ageEntries(std::chrono::seconds ago) const
    {
        std::filesystem::last_write_time(path(QStringLiteral("applications")).toStdString(),
                                         std::filesystem::file_time_type::clock::now() - ago);
    }

private:
    QTemporaryDir m_directory;
};

} // namespace kelpa
