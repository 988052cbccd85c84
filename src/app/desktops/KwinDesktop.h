// A session of KDE Plasma on Wayland: creates and connects the implementations of the interfaces in
// platform/.
#pragma once

#include "app/desktops/SessionDesktop.h"
#include "model/Identifiers.h"

#include <memory>
#include <set>

class QString;

namespace kelpa {

class Scheduler;

class KwinDesktop final : public SessionDesktop
{
public:
    /// `boardPath` is the board's file, beside which the numbers of windows are kept; `assigned`
    /// are the windows that the board has assignments for. `scheduler` outlives this object.
    KwinDesktop(Scheduler& scheduler, const QString& boardPath, const std::set<WindowID>& assigned);
    ~KwinDesktop() override;

    Platform platform() override;
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
