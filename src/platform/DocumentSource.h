// The documents that windows show, as their applications tell the accessibility bus.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QString>

#include <optional>
#include <vector>

namespace kelpa {

/// A window as the window server describes it, for whoever knows it by nothing else.
struct DocumentQuery
{
    ProcessID process = 0;
    /// In screen points.
    Rect frame;
    QString title;

    friend bool operator==(const DocumentQuery&, const DocumentQuery&) = default;
};

class DocumentSource
{
public:
    virtual ~DocumentSource() = default;

    /// Path or URL of the document that the window shows, as last heard; absent when its
    /// application has not told (yet) or offers none. Any thread; never waits.
    virtual std::optional<QString> document(const DocumentQuery& window) = 0;

    /// Says which windows there are now: all of them, after each look at the desktop. What is worth
    /// asking is asked in the background. Any thread; never waits.
    virtual void noteWindows(std::vector<DocumentQuery> windows) = 0;
};

} // namespace kelpa
