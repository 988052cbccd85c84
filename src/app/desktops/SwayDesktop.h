// A sway session: creates and connects the implementations of the interfaces in platform/.
#pragma once

#include "app/desktops/SessionDesktop.h"
#include "model/Identifiers.h"

#include <QByteArray>

#include <memory>
#include <set>

class QString;

namespace kelpa {

class Scheduler;

struct SwaySockets
{
    /// As in the SWAYSOCK variable.
    QByteArray ipc;
    /// As `socketPath` in platform/wayland/connection gives it.
    QByteArray compositor;
};

class SwayDesktop final : public SessionDesktop
{
public:
    /// `boardPath` is the board's file, beside which the numbers of windows are kept; `assigned`
    /// are the windows that the board has assignments for. `scheduler` outlives this object.
    SwayDesktop(Scheduler& scheduler, const SwaySockets& sockets, const QString& boardPath,
                const std::set<WindowID>& assigned);
    ~SwayDesktop() override;

    Platform platform() override;
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
