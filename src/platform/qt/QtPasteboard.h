// The desktop's clipboard through Qt.
#pragma once

#include "platform/Pasteboard.h"

namespace kelpa {

/// Needs a QGuiApplication.
class QtPasteboard final : public Pasteboard
{
public:
    void setText(const QString& text) override;
};

} // namespace kelpa
