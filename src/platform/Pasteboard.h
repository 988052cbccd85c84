// The desktop's clipboard.
#pragma once

#include <QString>

namespace kelpa {

class Pasteboard
{
public:
    virtual ~Pasteboard() = default;

    /// Replaces the contents of the clipboard with `text`. Main thread.
    virtual void setText(const QString& text) = 0;
};

} // namespace kelpa
