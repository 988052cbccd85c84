// A session of a compositor of the wlroots family, which lists its windows and acts on them:
// creates and connects the implementations of the interfaces in platform/.
#pragma once

#include "app/desktops/SessionDesktop.h"
#include "model/Identifiers.h"

#include <QByteArray>

#include <memory>
#include <set>

class QString;

namespace kelpa {

class Scheduler;

class WlrDesktop final : public SessionDesktop
{
public:
    /// `socketPath` is that of the compositor. `boardPath` is the board's file, beside which the
    /// numbers of windows are kept; `assigned` are the windows that the board has assignments for.
    /// `scheduler` outlives this object.
    WlrDesktop(Scheduler& scheduler, const QByteArray& socketPath, const QString& boardPath,
               const std::set<WindowID>& assigned);
    ~WlrDesktop() override;

    Platform platform() override;
    /// The compositor reports no keys.
    GlobalKeys& globalKeys() override;
    OwnWindow& ownWindow() override;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace kelpa
