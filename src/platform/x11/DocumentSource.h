// Which document a window shows.
#pragma once

#include "model/Identifiers.h"
#include "model/Rect.h"

#include <QString>

#include <optional>
#include <vector>

namespace kelpa::x11 {

/// One window whose document will be asked for.
struct DocumentQuery
{
    ProcessID process = 0;
    /// In root coordinates, pixels.
    Rect frame;
    QString title;

    friend bool operator==(const DocumentQuery&, const DocumentQuery&) = default;
};

/// Called on the thread that takes a look at the desktop, one call at a time. No call blocks:
/// answers come from a cache that the source fills on its own.
class DocumentSource
{
public:
    virtual ~DocumentSource() = default;

    /// Path or URL, as last learnt; absent when the window shows none or nothing is known yet.
    virtual std::optional<QString> document(ProcessID process, const Rect& frame,
                                            const QString& title) = 0;

    /// After each look: all windows that exist. What is not among them may be forgotten.
    virtual void noteWindows(const std::vector<DocumentQuery>& windows) = 0;
};

} // namespace kelpa::x11
