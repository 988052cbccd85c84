// The JSON form of the remembered windows. As in BoardJson.h, unknown members are ignored, and one
// invalid record fails the whole document.
#pragma once

#include "model/RememberedWindow.h"

#include <QByteArray>

#include <optional>

namespace kelpa {

/// The greatest document that is read, in bytes. A thousand windows with texts of full length take
/// less.
inline constexpr qsizetype greatestWindowMemory = qsizetype{8} << 20;

QByteArray encodeRememberedWindows(const RememberedWindows& windows);

/// Absent when `json` is too great, of another version, or not of exactly the expected form.
std::optional<RememberedWindows> decodeRememberedWindows(const QByteArray& json);

} // namespace kelpa
