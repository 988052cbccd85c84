// The latest picture of a window.
#pragma once

#include "model/Identifiers.h"

#include <QHash>
#include <QImage>
#include <QSizeF>

namespace kelpa {

struct Preview
{
    QImage image;
    /// In points, from `previewDisplaySize`: at most 720 on the longer side.
    QSizeF displaySize;

    /// Whether both are the same capture; equal pixels are not enough.
    friend bool operator==(const Preview& a, const Preview& b)
    {
        return a.image.cacheKey() == b.image.cacheKey();
    }
};

using Previews = QHash<WindowID, Preview>;

/// The result of one capture, handed to the store on the main thread: at most one picture.
struct PreviewCaptureBatch
{
    Previews images;
    /// The capture was asked to stop, which may be why there is no picture.
    bool wasStopped = false;
    /// There is no picture, nor would there be one of another window, at present.
    bool isPausing = false;
};

} // namespace kelpa
