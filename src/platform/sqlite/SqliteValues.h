// Settings values in SQLite's terms: bound to statements, read from columns; and its result codes
// as errors.
#pragma once

#include "platform/SettingsStore.h"
#include "platform/sqlite/SettingsError.h"

#include <QByteArray>
#include <QString>

#include <optional>

struct sqlite3_stmt;

namespace kelpa {

/// Absent for the codes of success.
std::optional<SettingsError> errorUnlessDone(int code);

// Parameters and columns count as in SQLite: from 1 and from 0.

/// The caller keeps the text or bytes alive until the statement is reset. Returns SQLite's code.
int bind(sqlite3_stmt* statement, int index, const QString& text);
int bind(sqlite3_stmt* statement, int index, bool isTrue);
int bind(sqlite3_stmt* statement, int index, const QByteArray& bytes);

QString columnText(sqlite3_stmt* statement, int column);
/// Absent for types that settings do not have.
std::optional<SettingsValue> columnValue(sqlite3_stmt* statement, int column);

} // namespace kelpa
