#include "views/FirstFrame.h"

#include "platform/LoggingCategories.h"
#include "views/appearance/ViewSettings.h"

#include <QColor>
#include <QEvent>
#include <QQuickItem>
#include <QQuickWindow>

#include <utility>

namespace kelpa {

namespace {

bool isPress(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::TabletPress:
    case QEvent::TouchBegin:
        return true;
    default:
        return false;
    }
}

/// How many cards of windows are shown below an item.
int shownWindowCards(const QQuickItem& item)
{
    if (!item.isVisible())
        return 0;
    // The face of a card, which is below it, has this property too. No other type has it.
    if (item.property("previewMessage").isValid())
        return 1;
    int count = 0;
    const QList<QQuickItem*> children = item.childItems();
    for (const QQuickItem* const child : children)
        count += shownWindowCards(*child);
    return count;
}

} // namespace

FirstFrame::FirstFrame(QQuickWindow& window) : m_window(window)
{
    connect(
        &m_window, &QQuickWindow::frameSwapped, this, [this] { m_isOnScreen = true; },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
    connect(&m_window, &QQuickWindow::frameSwapped, this, &FirstFrame::noteShown,
            static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    m_window.installEventFilter(this);
    m_wait.setSingleShot(true);
    m_wait.setInterval(longestWait);
    connect(&m_wait, &QTimer::timeout, this, &FirstFrame::needControls);
}

void FirstFrame::limitWait()
{
    if (!m_areControlsNeeded)
        m_wait.start();
}

bool FirstFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &m_window && isPress(*event)) {
        if (!m_isOnScreen)
            return true;
        // Where the frame shows a control, the press is for that and not for what lies below.
        needControls();
    }
    return QObject::eventFilter(watched, event);
}

void FirstFrame::needControls()
{
    m_wait.stop();
    if (!std::exchange(m_areControlsNeeded, true))
        Q_EMIT controlsNeeded();
}

void FirstFrame::noteShown()
{
    m_window.removeEventFilter(this);
    needControls();
    Q_EMIT shown();
}

void logFirstFrame(QQuickWindow& window, const ViewSettings& settings)
{
    if (!logViews().isDebugEnabled())
        return;
    QObject::connect(
        &window, &QQuickWindow::afterAnimating, &window,
        [&window, &settings] {
            qCDebug(logViews, "first frame shows %d windows",
                    shownWindowCards(*window.contentItem()));
            const QColor accent = settings.desktopAccent();
            qCDebug(logViews, "first frame is %s, texts %.2f, accent %s, ground %s",
                    settings.isDark() ? "dark" : "light", settings.textScale(),
                    accent.isValid() ? qPrintable(accent.name()) : "none",
                    qPrintable(window.color().name()));
        },
        static_cast<Qt::ConnectionType>(Qt::DirectConnection | Qt::SingleShotConnection));
}

} // namespace kelpa
