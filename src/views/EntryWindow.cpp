#include "views/EntryWindow.h"

#include "platform/LoggingCategories.h"
#include "shell/EarlyKeys.h"
#include "views/ViewEngine.h"
#include "views/ViewTypes.h"

#include <QCursor>
#include <QEvent>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QScreen>

#include <chrono>

namespace kelpa {

namespace {

/// An input method or the window manager may take the keyboard for a moment; nobody comes back from
/// another window sooner.
constexpr std::chrono::milliseconds leavingTime{150};
/// In so many parts of that time the window receives its events, or they do not count: on a busy
/// machine the time may be over as soon as this program runs again, while the keyboard is back.
constexpr int leavingParts = 3;
/// Where the field is on its screen, in parts of the usable height.
constexpr double topPart = 0.24;

} // namespace

EntryWindow::EntryWindow(WindowStore& store, ViewEngine& views, OwnWindow& desktop)
    : m_views(views), m_desktop(desktop), m_entry(store)
{
    m_leaving.setInterval(leavingTime / leavingParts);
    connect(&m_leaving, &QTimer::timeout, this, [this] {
        if (--m_leavingParts > 0)
            return;
        m_leaving.stop();
        close();
    });
    // The controller closes after an operation of the field, which goes on for a moment.
    connect(&m_entry, &EntryController::changed, this, [this] {
        if (!m_entry.isOpen())
            hide();
    });
}

EntryWindow::~EntryWindow() = default;

bool EntryWindow::open(const ActivationContext& context)
{
    const QWindow* const board = m_views.window();
    // A board that has just been hidden, or left, may still count as the window with the keyboard.
    const bool isOverBoard = board != nullptr && board->isVisible() &&
                             QGuiApplication::focusWindow() == board &&
                             !m_desktop.hasLostKeyboard(*board);
    if (!m_entry.isOpen())
        m_entry.open(isOverBoard ? EntryOver::board : EntryOver::window);
    if (!m_root && !load()) {
        m_entry.close();
        return false;
    }
    m_leaving.stop();
    if (!window()->isVisible()) {
        place();
        window()->show();
    }
    QMetaObject::invokeMethod(window(), "focusField");
    requestKeyboard(context);
    return true;
}

void EntryWindow::requestKeyboard(const ActivationContext& context)
{
    // Wayland compositors do not know the new window yet; the other desktops look for Kelpa's
    // windows by process or title, and would bring the board forward instead. Compositors give a
    // new window the keyboard themselves.
    const QWindow* const board = m_views.window();
    const bool isBoardShown = board != nullptr && board->isVisible();
    if (isBoardShown && QGuiApplication::platformName() != QStringLiteral("xcb"))
        window()->requestActivate();
    else
        m_desktop.requestFront(*window(), context);
}

void EntryWindow::close()
{
    if (m_root)
        QMetaObject::invokeMethod(window(), "finishComposition");
    m_entry.close();
}

void EntryWindow::hide()
{
    m_leaving.stop();
    if (!m_root || !window()->isVisible())
        return;
    // The items stay; what they have drawn takes most of the memory, and is drawn again in a
    // moment.
    window()->setPersistentGraphics(false);
    window()->setPersistentSceneGraph(false);
    window()->hide();
    qCDebug(logViews, "the field for a todo is closed");
    Q_EMIT closed();
}

bool EntryWindow::load()
{
    if (!m_views.prepare())
        return false;
    // That runs the event loop, in which the field may be asked for again.
    if (m_root)
        return true;
    QQmlComponent file(&m_views.engine(), ViewTypes::entryFile(), QQmlComponent::PreferSynchronous);
    m_root.reset(file.createWithInitialProperties(
        {{QStringLiteral("entry"), QVariant::fromValue(&m_entry)}}));
    for (const QQmlError& error : file.errors())
        qWarning("%s", qPrintable(error.toString()));
    if (window() == nullptr) {
        m_root.reset();
        return false;
    }
    window()->installEventFilter(this);
    m_earlyKeys =
        std::make_unique<EarlyKeys>(*window(), [](const QKeyEvent&, bool) { return true; });
    connect(
        window(), &QQuickWindow::frameSwapped, this,
        [] { qCDebug(logViews, "the field for a todo is shown"); },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    Q_EMIT loaded();
    return true;
}

void EntryWindow::place()
{
    const QScreen* screen = QGuiApplication::screenAt(QCursor::pos());
    if (screen == nullptr)
        screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return;
    const QRect area = screen->availableGeometry();
    window()->setPosition(area.center().x() - window()->width() / 2,
                          area.top() + static_cast<int>(area.height() * topPart));
}

QQuickWindow* EntryWindow::window() const
{
    return qobject_cast<QQuickWindow*>(m_root.get());
}

bool EntryWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != window())
        return QObject::eventFilter(watched, event);
    // All windows are closed when the program ends, also hidden ones; one that refused would keep
    // it.
    if (event->type() == QEvent::Close && m_entry.isOpen()) {
        event->ignore();
        close();
        return true;
    }
    if (event->type() == QEvent::FocusOut && m_entry.isOpen()) {
        m_leavingParts = leavingParts;
        m_leaving.start();
    }
    if (event->type() == QEvent::FocusIn)
        m_leaving.stop();
    return QObject::eventFilter(watched, event);
}

} // namespace kelpa
