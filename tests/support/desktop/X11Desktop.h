// A private X server with a window manager, and Kelpa's window server on it.
#pragma once

#include "platform/x11/X11WindowServer.h"
#include "support/MemoryNumbers.h"
#include "support/desktop/LoopScheduler.h"
#include "support/desktop/Programs.h"
#include "support/desktop/TestClient.h"
#include "support/desktop/WaitUntil.h"

#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace kelpa::test {

/// Knows no desktop entries: an application is named after its window class.
class ClassNameResolver : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues& clues) override
    {
        return {std::nullopt, clues.wmClassName};
    }
};

/// The parts of a window server on a display.
struct X11Surroundings
{
    std::unique_ptr<x11::X11WindowServer>
    makeServer(const QByteArray& display, std::optional<ProcessID> ownProcess = std::nullopt)
    {
        return std::make_unique<x11::X11WindowServer>(x11::X11WindowServerNeeds{
            std::make_shared<x11::DisplayConnector>(display, scale), resolver, nullptr, reservation,
            reservation.mark, scheduler, taken, ownProcess, owners, recordedOwners});
    }

    ClassNameResolver resolver;
    MemoryReservation reservation;
    /// As in `X11WindowServerNeeds`.
    std::set<WindowID> taken;
    OwnerStorage* owners = nullptr;
    RecordedOwners recordedOwners;
    LoopScheduler scheduler;
    const std::shared_ptr<PointScale> scale = std::make_shared<PointScale>();
};

/// The windows of one discovery pass; empty when the list is absent.
inline std::vector<WindowListEntry> runDiscoveryPass(x11::X11WindowServer& server,
                                                     WindowListScope scope = WindowListScope::all)
{
    return server.openDiscoverySource()->windowList(scope).value_or(std::vector<WindowListEntry>());
}

/// The entry with `title`; absent when none or several have it.
inline std::optional<WindowListEntry> entryNamed(const std::vector<WindowListEntry>& entries,
                                                 const QString& title)
{
    std::optional<WindowListEntry> found;
    for (const WindowListEntry& entry : entries) {
        if (entry.name == title) {
            if (found) {
                return std::nullopt;
            }
            found = entry;
        }
    }
    return found;
}

} // namespace kelpa::test
