// Finds the installed applications that open URLs.
#pragma once

#include <QString>

#include <optional>

namespace kelpa {

/// Whether an application is installed that opens URLs of this scheme. Any thread but the main one:
/// it reads files.
bool hasHandler(const QString& scheme);

/// Whether an application is installed that shows folders. Any thread but the main one.
bool hasFileManager();

/// The id, without its suffix, of the entry of the application that opens web pages; none when
/// there is none. Any thread but the main one.
std::optional<QString> defaultBrowser();

} // namespace kelpa
