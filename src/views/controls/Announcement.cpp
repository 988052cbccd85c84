#include "views/controls/Announcement.h"

#include <QQuickWindow>

namespace kelpa {

namespace {

using namespace std::chrono_literals;

/// How long screen readers and the toolkit need to know of each other once there is a window, or
/// accessibility is switched on. What is announced earlier is lost.
constexpr std::chrono::milliseconds acquaintance = 1s;

} // namespace

Announcement::Announcement(QQuickItem* parent) : QQuickItem(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &Announcement::announce);
    QAccessible::installActivationObserver(this);
}

Announcement::~Announcement()
{
    QAccessible::removeActivationObserver(this);
}

void Announcement::setText(const QString& text)
{
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    announceAfter(0ms);
}

void Announcement::itemChange(ItemChange change, const ItemChangeData& data)
{
    if (change == ItemVisibleHasChanged && data.boolValue)
        announceAfter(0ms);
    if (change == ItemSceneChange) {
        disconnect(m_windowFollowing);
        if (data.window != nullptr)
            m_windowFollowing =
                connect(data.window, &QWindow::visibleChanged, this, [this](bool isShown) {
                    if (isShown && m_isDue)
                        announceAfter(acquaintance);
                });
    }
    QQuickItem::itemChange(change, data);
}

void Announcement::accessibilityActiveChanged(bool isActive)
{
    // Nobody has heard of what is shown.
    if (isActive)
        announceAfter(acquaintance);
}

/// Not at once: by then the item says all of it, and its bindings have made it part of what is
/// read.
void Announcement::announceAfter(std::chrono::milliseconds delay)
{
    m_isDue = !m_text.isEmpty();
    // What waits for screen readers goes on to wait.
    if (m_isDue && !(m_timer.isActive() && m_timer.intervalAsDuration() > delay))
        m_timer.start(delay);
}

void Announcement::announce()
{
    const bool isShown = isVisible() && window() != nullptr && window()->isVisible();
    if (!m_isDue || !isShown || parentItem() == nullptr)
        return;
    m_isDue = false;
    // A screen reader that knows the item as shown takes notice only of one that was hidden.
    for (const auto type : {QAccessible::ObjectHide, QAccessible::ObjectShow}) {
        QAccessibleEvent event(parentItem(), type);
        QAccessible::updateAccessibility(&event);
    }
    Q_EMIT announced();
}

} // namespace kelpa
