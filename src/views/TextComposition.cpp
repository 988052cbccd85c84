#include "views/TextComposition.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>

namespace kelpa {

void TextComposition::cancel(QQuickItem* field) const
{
    if (field == nullptr)
        return;
    // The input method forgets it, and tells nobody.
    QGuiApplication::inputMethod()->reset();
    QInputMethodEvent nothing;
    QCoreApplication::sendEvent(field, &nothing);
}

} // namespace kelpa
