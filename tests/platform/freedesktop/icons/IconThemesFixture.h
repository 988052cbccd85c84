// Icon themes in a folder of a test's own.
#pragma once

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"
#include "platform/freedesktop/icons/IconTheme.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

namespace kelpa::test {

/// A picture of one colour.
inline QByteArray png(int side, Qt::GlobalColor color)
{
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

inline const QByteArray greenDrawing = R"(<?xml version="1.0"?>
<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16" viewBox="0 0 16 16">
<rect width="16" height="16" fill="#00ff00"/></svg>)";

class IconThemes : public testing::Test
{
protected:
    TemporaryDataDirectory data;

    void writeTheme(const QString& name, const QByteArray& inherits, const QByteArray& folders)
    {
        QByteArray list;
        for (const QByteArray& line : folders.split('\n')) {
            if (line.startsWith('[')) {
                list += line.mid(1, line.size() - 2) + ',';
            }
        }
        data.write(QStringLiteral("icons/%1/index.theme").arg(name),
                   "[Icon Theme]\nName=Theme\nInherits=" + inherits + "\nDirectories=" + list +
                       "\n" + folders);
    }

    void writeHicolor()
    {
        writeTheme(QStringLiteral("hicolor"), "",
                   "[16x16/apps]\nSize=16\nType=Fixed\n"
                   "[48x48/apps]\nSize=48\nType=Threshold\n"
                   "[24x24@2/apps]\nSize=24\nScale=2\nType=Fixed\n"
                   "[256x256/apps]\nSize=256\nType=Fixed\n"
                   "[scalable/apps]\nSize=128\nMinSize=8\nMaxSize=512\nType=Scalable\n");
    }

    void writeIcon(const QString& relative) { data.write(relative, png(1, Qt::red)); }

    QString find(const QString& theme, const QString& icon, int pixels)
    {
        const IconTheme icons(theme, {data.path(QStringLiteral("icons"))},
                              {data.path(QStringLiteral("pixmaps"))});
        const std::optional<QString> path = icons.find(icon, pixels);
        return path ? path->mid(data.path().size() + 1) : QStringLiteral("(none)");
    }
};

} // namespace kelpa::test
