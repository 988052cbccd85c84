// The applications that run on the desktop.
#pragma once

#include "model/Identifiers.h"
#include "model/WindowItem.h"

#include <QImage>

namespace kelpa {

class Applications
{
public:
    virtual ~Applications() = default;

    /// This program's own process. Any thread.
    virtual ProcessID currentProcess() const = 0;

    /// The icon of the application that owns `window`, at most `pixels` wide and high; a null image
    /// when it has none or is gone. Any thread but the main one: it reads files and asks the window
    /// server.
    virtual QImage icon(const WindowItem& window, int pixels) = 0;
};

} // namespace kelpa
