// Accents that are typed before their letters, where no text field composes them.
#pragma once

#include <QChar>
#include <QString>

#include <optional>

namespace kelpa {

/// The combining character of a dead key, as a Qt::Key; absent for any other key.
std::optional<QChar> accentOf(int key);

/// The letter with the accent, as one character; absent where there is none.
std::optional<QString> accented(const QString& letter, QChar accent);

} // namespace kelpa
