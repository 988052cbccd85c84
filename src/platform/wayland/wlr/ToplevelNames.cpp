#include "platform/wayland/wlr/ToplevelNames.h"

namespace kelpa::wayland {

std::vector<QByteArray> ToplevelNames::of(const std::vector<Toplevel>& windows)
{
    m_replaced.clear();
    std::map<ToplevelID, QByteArray> present;
    std::vector<QByteArray> names;
    names.reserve(windows.size());
    for (const Toplevel& window : windows) {
        const auto known = m_names.find(window.id);
        const QByteArray madeUp = m_prefix + QByteArray::number(window.id);
        QByteArray name = known != m_names.end() ? known->second : madeUp;
        if (!window.identifier.isEmpty()) {
            name = "id " + window.identifier;
            if (known != m_names.end() && known->second == madeUp)
                m_replaced.emplace(madeUp, name);
        }
        names.push_back(name);
        present.emplace(window.id, std::move(name));
    }
    m_names = std::move(present);
    return names;
}

} // namespace kelpa::wayland
