#include "views/AppIconProvider.h"

#include "platform/Applications.h"

#include <QImage>
#include <QMutexLocker>
#include <QQuickTextureFactory>

#include <atomic>

namespace kelpa {

namespace {

/// Cards show icons at 20 points; asked for when QML names no size.
constexpr int defaultPixels = 20;

QImage absentIcon()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

class IconResponse : public QQuickImageResponse
{
public:
    QQuickTextureFactory* textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_image);
    }

    /// Views no longer want it; it still has to finish.
    void cancel() override { m_isCancelled = true; }

    /// On a thread of the pool.
    void read(Applications& applications, const std::optional<WindowItem>& window, int pixels)
    {
        if (!m_isCancelled && window)
            m_image = applications.icon(*window, pixels);
        if (m_image.isNull())
            m_image = absentIcon();
        Q_EMIT finished();
    }

private:
    std::atomic<bool> m_isCancelled = false;
    QImage m_image;
};

} // namespace

void IconWindows::set(const QList<WindowItem>& windows)
{
    QHash<WindowID, WindowItem> byID;
    byID.reserve(windows.size());
    for (const WindowItem& window : windows)
        byID.insert(window.id, window);
    const QMutexLocker lock(&m_mutex);
    m_windows.swap(byID);
}

std::optional<WindowItem> IconWindows::window(WindowID windowID) const
{
    const QMutexLocker lock(&m_mutex);
    const auto found = m_windows.constFind(windowID);
    return found != m_windows.constEnd() ? std::optional(*found) : std::nullopt;
}

QString AppIconProvider::name()
{
    return QStringLiteral("appicon");
}

AppIconProvider::AppIconProvider(Applications& applications,
                                 std::shared_ptr<const IconWindows> windows)
    : m_applications(applications), m_windows(std::move(windows))
{
    // Icons come from one window server; asking it from several threads gains nothing.
    m_pool.setMaxThreadCount(1);
}

AppIconProvider::~AppIconProvider()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QQuickImageResponse* AppIconProvider::requestImageResponse(const QString& id,
                                                           const QSize& requestedSize)
{
    bool isNumber = false;
    const WindowID windowID = id.toUInt(&isNumber);
    const std::optional<WindowItem> window = isNumber ? m_windows->window(windowID) : std::nullopt;
    const int pixels = requestedSize.width() > 0 ? requestedSize.width() : defaultPixels;

    // The engine takes ownership of the response.
    auto response = std::make_unique<IconResponse>();
    IconResponse* const reader = response.get();
    m_pool.start([&applications = m_applications, reader, window, pixels] {
        reader->read(applications, window, pixels);
    });
    return response.release();
}

} // namespace kelpa
