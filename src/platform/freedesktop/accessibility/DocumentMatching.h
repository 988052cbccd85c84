// Which document of a process belongs to which of its windows. Pure functions.
#pragma once

#include "platform/DocumentSource.h"

#include <QString>

#include <optional>
#include <vector>

namespace kelpa {

/// A document that an application shows.
struct ShownDocument
{
    /// Path or URL; never empty.
    QString document;
    /// What the application calls it; window titles usually contain it. May be empty.
    QString name;
    /// In screen points; absent when the application does not tell.
    std::optional<Rect> extents;

    friend bool operator==(const ShownDocument&, const ShownDocument&) = default;
};

struct WindowDocument
{
    DocumentQuery window;
    std::optional<QString> document;

    friend bool operator==(const WindowDocument&, const WindowDocument&) = default;
};

/// The windows of one process, in the order given, with their documents. A document belongs to the
/// one window that contains it (8 points of tolerance) and has its name in the title, else to the
/// one that contains it, else, where the application does not say where the document is, to the one
/// with its name in the title or the only window that there is. Of several documents in one window
/// (frames within a page) the largest counts, of equal ones the first. A window for which nothing
/// was found keeps what `previous` says of it, because minimised windows show nothing.
std::vector<WindowDocument> matchDocuments(const std::vector<DocumentQuery>& windows,
                                           const std::vector<ShownDocument>& documents,
                                           const std::vector<WindowDocument>& previous);

/// What `known`, the windows of the process of `window`, says of it: of the only one with its title
/// and frame, else with its title, else with its frame. Absent where that leaves a choice between
/// different documents.
std::optional<QString> documentOf(const DocumentQuery& window,
                                  const std::vector<WindowDocument>& known);

} // namespace kelpa
