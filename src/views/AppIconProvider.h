// The icons of windows' applications, read off the main thread: "image://appicon/<window number>".
#pragma once

#include "model/WindowItem.h"

#include <QHash>
#include <QList>
#include <QMutex>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>

#include <memory>
#include <optional>

namespace kelpa {

class Applications;

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

/// A window without an icon, or that is not listed, gives an image of a single pixel: the absence
/// of an icon is no error.
class AppIconProvider : public QQuickAsyncImageProvider
{
public:
    static QString name();

    /// `applications` outlives the provider.
    AppIconProvider(Applications& applications, std::shared_ptr<const IconWindows> windows);
    /// Waits for the icon that is being read.
    ~AppIconProvider() override;

    QQuickImageResponse* requestImageResponse(const QString& id,
                                              const QSize& requestedSize) override;

private:
    Applications& m_applications;
    std::shared_ptr<const IconWindows> m_windows;
    QThreadPool m_pool;
};

} // namespace kelpa
