#include "live/LiveBoard.h"

#include <algorithm>

namespace kelpa::test {

namespace {

AtspiDocumentsOptions onBus(const QString& address)
{
    AtspiDocumentsOptions options;
    options.busAddress = address;
    return options;
}

} // namespace

LiveBoard::LiveBoard(const QByteArray& display, Scheduler& scheduler,
                     const QString& accessibilityBus)
    : m_scheduler(scheduler),
      m_documents([this] { handleDocumentsChanged(); }, onBus(accessibilityBus)),
      m_connector(std::make_shared<x11::DisplayConnector>(display)),
      m_server({.connector = m_connector,
                .resolver = m_entries,
                .documents = &m_documents,
                .reservation = m_reservation,
                .highWaterMark = 0,
                .scheduler = scheduler}),
      m_pager(m_connector, [this](WindowID number) { return m_server.clientWindow(number); }),
      m_applications(display, m_pager, m_serverTime, m_startupIDs, m_applicationIcons, m_launcher)
{
    m_server.openDiscoverySource();
    openStore();
}

LiveBoard::~LiveBoard() = default;

void LiveBoard::handleDocumentsChanged()
{
    if (m_store) {
        m_store->noteWindowsChangedOnDesktop();
    }
}

void LiveBoard::openStore()
{
    m_store = std::make_unique<WindowStore>(
        Platform{m_countingServer, m_windowActions, m_applications, m_rest, m_rest, m_rest},
        m_settings, m_scheduler);
}

std::optional<WindowItem> LiveBoard::window(const QString& title) const
{
    const QList<WindowItem>& windows = m_store->windows();
    const auto first = std::ranges::find(windows, title, &WindowItem::title);
    if (first == windows.end() ||
        std::find_if(std::next(first), windows.end(), [&](const WindowItem& each) {
            return each.title == title;
        }) != windows.end()) {
        return std::nullopt;
    }
    return *first;
}

} // namespace kelpa::test
