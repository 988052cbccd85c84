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

    /// The names made up for windows whose identifiers have become certain with the last `of`, each
    /// with the name that the window has now.
    const std::map<QByteArray, QByteArray>& replaced() const { return m_replaced; }

private:
    const QByteArray m_prefix;
    std::map<ToplevelID, QByteArray> m_names;
    std::map<QByteArray, QByteArray> m_replaced;
};

} // namespace kelpa::wayland
