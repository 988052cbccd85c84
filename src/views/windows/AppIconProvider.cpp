#include "views/windows/AppIconProvider.h"

#include "platform/Applications.h"
#include "platform/Workers.h"

#include <QImage>
#include <QMutexLocker>
#include <QQuickTextureFactory>
#include <QRecursiveMutex>

#include <utility>

namespace kelpa {

namespace {

/// Cards show icons at 20 points; used when QML names no size.
constexpr int defaultPixels = 20;

QImage absentIcon()
{
    QImage image(1, 1, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The request for an icon, shared by the response and the reading thread: either may go first.
class IconRequest
{
public:
    explicit IconRequest(QQuickImageResponse* response) : m_response(response) {}

    bool isWanted() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_response != nullptr && !m_isCancelled;
    }

    void cancel()
    {
        const QMutexLocker lock(&m_mutex);
        m_isCancelled = true;
    }

    void forget()
    {
        const QMutexLocker lock(&m_mutex);
        m_response = nullptr;
    }

    void finish(const QImage& image)
    {
        const QMutexLocker lock(&m_mutex);
        m_image = image.isNull() ? absentIcon() : image;
        if (m_response != nullptr)
            Q_EMIT m_response->finished();
    }

    QImage image() const
    {
        const QMutexLocker lock(&m_mutex);
        return m_image;
    }

private:
    /// Recursive, since the receiver of `finished` may request the picture at once.
    mutable QRecursiveMutex m_mutex;
    QQuickImageResponse* m_response;
    bool m_isCancelled = false;
    QImage m_image;
};

class IconResponse : public QQuickImageResponse
{
public:
    IconResponse() = default;
    IconResponse(const IconResponse&) = delete;
    IconResponse& operator=(const IconResponse&) = delete;
    ~IconResponse() override { m_request->forget(); }

    QQuickTextureFactory* textureFactory() const override
    {
        return QQuickTextureFactory::textureFactoryForImage(m_request->image());
    }

    /// Called when views no longer want the image; the response still has to finish.
    void cancel() override { m_request->cancel(); }

    std::shared_ptr<IconRequest> request() const { return m_request; }

private:
    std::shared_ptr<IconRequest> m_request = std::make_shared<IconRequest>(this);
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
                                 std::shared_ptr<const IconWindows> windows,
                                 std::shared_ptr<Workers> readers)
    : m_applications(applications), m_windows(std::move(windows)), m_readers(std::move(readers))
{}

QQuickImageResponse* AppIconProvider::requestImageResponse(const QString& id,
                                                           const QSize& requestedSize)
{
    bool isNumber = false;
    const WindowID windowID = id.section(QLatin1Char('/'), 0, 0).toUInt(&isNumber);
    std::optional<WindowItem> window = isNumber ? m_windows->window(windowID) : std::nullopt;
    // No window has this number: the icon is the application's own.
    if (isNumber && windowID == 0) {
        window.emplace();
        window->bundleIdentifier = id.section(QLatin1Char('/'), 1, 1);
    }
    const int pixels = requestedSize.width() > 0 ? requestedSize.width() : defaultPixels;

    // The engine takes ownership of the response.
    auto response = std::make_unique<IconResponse>();
    m_readers->start(
        [&applications = m_applications, request = response->request(), window, pixels] {
            const bool isRead = window && request->isWanted();
            request->finish(isRead ? applications.icon(*window, pixels) : QImage());
        });
    return response.release();
}

} // namespace kelpa
