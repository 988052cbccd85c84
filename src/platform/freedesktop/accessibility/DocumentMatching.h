// Matches the documents of a process with its windows. Pure functions.
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
    /// The application's name for it, which window titles usually contain. May be empty.
    QString name;
    /// In points (`model/Rect.h`); absent when the application does not report them.
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
/// only window that contains it (8 points of tolerance) and has its name in the title, else
/// to the only one that contains it. A document without extents belongs to the only window with its
/// name in the title, else to the only window that there is. Among several documents in one window
/// (frames within a page) the largest counts, among equal ones the first. A window without a match
/// keeps its document in `previous`, because minimised windows show none.
std::vector<WindowDocument> matchDocuments(const std::vector<DocumentQuery>& windows,
                                           const std::vector<ShownDocument>& documents,
                                           const std::vector<WindowDocument>& previous);

/// The document that `known`, the windows of the same process, gives for `window`: that of the only
/// one with its title and frame, else with its title, else with its frame. Absent when the
/// candidates have different documents.
std::optional<QString> documentOf(const DocumentQuery& window,
                                  const std::vector<WindowDocument>& known);

} // namespace kelpa
