// A desktop of plain data whose applications and windows have icons of one colour.
#pragma once

#include "support/FakeDesktop.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QMutex>

namespace kelpa::test {

/// Applications have green icons, and windows may have ones of their own.
class IconDesktop : public FakeDesktop
{
public:
    void setIcon(WindowID windowID, const QColor& color)
    {
        const QMutexLocker lock(&m_mutex);
        m_icons.insert(windowID, color);
    }
    QImage icon(const WindowItem& window, int pixels) override
    {
        const QMutexLocker lock(&m_mutex);
        const bool isKnown = window.bundleIdentifier == QStringLiteral("org.example.Known");
        if (!isKnown && !m_icons.contains(window.id))
            return {};
        QImage image(pixels, pixels, QImage::Format_RGB32);
        image.fill(isKnown ? QColor(Qt::green) : m_icons.value(window.id));
        return image;
    }

private:
    QMutex m_mutex;
    QHash<WindowID, QColor> m_icons;
};

} // namespace kelpa::test
