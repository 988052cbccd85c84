// The icons of windows' applications, read off the main thread: "image://appicon/<window number>".
// A further part behind a slash makes it another image for caches that key images by their address.
#pragma once

#include "model/WindowItem.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QQuickAsyncImageProvider>

#include <memory>
#include <optional>

namespace kelpa {

class Applications;
class Workers;

/// The windows whose icons may be asked for. Any thread.
class IconWindows
{
public:
    void set(const QList<WindowItem>& windows);
    std::optional<WindowItem> window(WindowID windowID) const;

private:
    mutable QMutex m_mutex;
    QHash<WindowID, WindowItem> m_windows;
};

/// A window that has no icon, or that is not listed, yields an image of a single pixel: the absence
/// of an icon is no error.
class AppIconProvider : public QQuickAsyncImageProvider
{
public:
    static QString name();

    /// Icons come from one window server: one reader is enough. The provider never waits for it,
    /// and `applications` must live for as long as it may be reading, also after the provider.
    AppIconProvider(Applications& applications, std::shared_ptr<const IconWindows> windows,
                    std::shared_ptr<Workers> readers);

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    Applications& m_applications;
    std::shared_ptr<const IconWindows> m_windows;
    std::shared_ptr<Workers> m_readers;
};

} // namespace kelpa
