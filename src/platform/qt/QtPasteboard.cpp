#include "platform/qt/QtPasteboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace kelpa {

void QtPasteboard::setText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

} // namespace kelpa
