#include "shell/DeadKey.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kelpa {

namespace {

using Accent = std::pair<Qt::Key, char16_t>;

constexpr std::array accents{
    Accent{Qt::Key_Dead_Grave, u'\u0300'},       Accent{Qt::Key_Dead_Acute, u'\u0301'},
    Accent{Qt::Key_Dead_Circumflex, u'\u0302'},  Accent{Qt::Key_Dead_Tilde, u'\u0303'},
    Accent{Qt::Key_Dead_Macron, u'\u0304'},      Accent{Qt::Key_Dead_Breve, u'\u0306'},
    Accent{Qt::Key_Dead_Abovedot, u'\u0307'},    Accent{Qt::Key_Dead_Diaeresis, u'\u0308'},
    Accent{Qt::Key_Dead_Hook, u'\u0309'},        Accent{Qt::Key_Dead_Abovering, u'\u030a'},
    Accent{Qt::Key_Dead_Doubleacute, u'\u030b'}, Accent{Qt::Key_Dead_Caron, u'\u030c'},
    Accent{Qt::Key_Dead_Horn, u'\u031b'},        Accent{Qt::Key_Dead_Belowdot, u'\u0323'},
    Accent{Qt::Key_Dead_Cedilla, u'\u0327'},     Accent{Qt::Key_Dead_Ogonek, u'\u0328'},
};

} // namespace

std::optional<QChar> accentOf(int key)
{
    const auto* const found = std::ranges::find(accents, key, &Accent::first);
    return found != accents.end() ? std::optional<QChar>(found->second) : std::nullopt;
}

std::optional<QString> accented(const QString& letter, QChar accent)
{
    const QString composed = (letter + accent).normalized(QString::NormalizationForm_C);
    return composed.size() == letter.size() ? std::optional(composed) : std::nullopt;
}

} // namespace kelpa
