// The documents that windows show, as their applications report them on the accessibility bus.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QString>

#include <optional>
#include <vector>

namespace kelpa {

/// A window as the window server describes it, for a source that has no other identity of it.
struct DocumentQuery
{
    ProcessID process = 0;
    /// In points, see model/Rect.h.
    Rect frame;
    QString title;

    friend bool operator==(const DocumentQuery&, const DocumentQuery&) = default;
};

class DocumentSource
{
public:
    virtual ~DocumentSource() = default;

    /// Path or URL of the document that the window shows, as last reported; absent when its
    /// application has not reported one (yet). Any thread; never waits.
    virtual std::optional<QString> document(const DocumentQuery& window) = 0;

    /// Receives all windows there are, after each discovery pass, and queries in the background
    /// those whose document may have changed. Any thread; never waits.
    virtual void noteWindows(std::vector<DocumentQuery> windows) = 0;
};

} // namespace kelpa
