#include "views/windows/WindowController.h"

#include "store/WindowStore.h"
#include "views/models/ColumnID.h"
#include "views/models/DragPayload.h"
#include "views/windows/TitleLengths.h"

namespace kelpa {

WindowController::WindowController(WindowStore& store, QObject* parent)
    : QObject(parent), m_store(store), m_picker(store), m_memory(store)
{
    connect(&store, &WindowStore::abilitiesChanged, this, &WindowController::abilitiesChanged);
}

bool WindowController::areListed() const
{
    return m_store.abilities().has(DesktopAbility::windows);
}

bool WindowController::canAct() const
{
    return m_store.abilities().has(DesktopAbility::actions);
}

bool WindowController::canQuit() const
{
    return m_store.abilities().has(DesktopAbility::quitting);
}

void WindowController::focusWindow(quint32 windowID)
{
    if (const std::optional<WindowItem> window = listedWindow(windowID))
        m_store.focus(*window);
}

void WindowController::selectWindow(quint32 windowID)
{
    m_store.selectWindow(windowID);
}

void WindowController::closeWindowProcess(quint32 windowID)
{
    if (const std::optional<WindowItem> window = listedWindow(windowID))
        m_store.closeProcess(*window);
}

void WindowController::moveWindow(quint32 windowID, const QString& columnID)
{
    if (const std::optional<ColumnID> column = columnFromText(columnID))
        m_store.assign(windowID, column->goalID);
}

void WindowController::createGoalForWindow(const QString& title, quint32 windowID)
{
    m_store.createGoal(title, windowID);
}

QString WindowController::titleLengths(const QString& title)
{
    return kelpa::titleLengths(title);
}

QString WindowController::windowDragText(quint32 windowID) const
{
    return dragText(windowID);
}

void WindowController::noteWindowInView(WindowID windowID)
{
    m_store.noteWindowInView(windowID);
}

QImage WindowController::preview(WindowID windowID) const
{
    return m_store.previews().value(windowID).image;
}

std::optional<WindowItem> WindowController::listedWindow(WindowID windowID) const
{
    const WindowItem* const window = windowWith(windowID, m_store.windows());
    return window != nullptr ? std::optional(*window) : std::nullopt;
}

void WindowController::setUnsortedUnfolded(bool isUnfolded)
{
    m_store.setUnsortedFold(isUnfolded ? UnsortedFold::unfolded : UnsortedFold::folded);
}

} // namespace kelpa
