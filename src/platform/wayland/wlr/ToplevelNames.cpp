#include "platform/wayland/wlr/ToplevelNames.h"

namespace kelpa::wayland {

std::vector<QByteArray> ToplevelNames::of(const std::vector<Toplevel>& windows)
{
    std::map<ToplevelID, QByteArray> present;
    std::vector<QByteArray> names;
    names.reserve(windows.size());
    for (const Toplevel& window : windows) {
        const auto known = m_names.find(window.id);
        QByteArray name = m_prefix + QByteArray::number(window.id);
        if (!window.identifier.isEmpty())
            name = "id " + window.identifier;
        else if (known != m_names.end())
            name = known->second;
        names.push_back(name);
        present.emplace(window.id, std::move(name));
    }
    m_names = std::move(present);
    return names;
}

} // namespace kelpa::wayland
