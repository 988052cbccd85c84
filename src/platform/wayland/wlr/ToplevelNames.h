// The names by which the windows of a compositor are numbered: those of the compositor where it has
// any, else names that Kelpa makes up and that hold while it runs.
#pragma once

#include "platform/wayland/toplevels/ToplevelList.h"

#include <QByteArray>

#include <map>
#include <utility>
#include <vector>

namespace kelpa::wayland {

/// Used on one thread at a time.
class ToplevelNames
{
public:
    /// No other object's `prefix` is the same, nor one of an earlier start.
    explicit ToplevelNames(QByteArray prefix) : m_prefix(std::move(prefix)) {}

    /// In the order of `windows`, which are all that there are. A window has its identifier as soon
    /// as that is certain, and keeps it when it is not for a moment.
    std::vector<QByteArray> of(const std::vector<Toplevel>& windows);

private:
    const QByteArray m_prefix;
    std::map<ToplevelID, QByteArray> m_names;
};

} // namespace kelpa::wayland
