#include "views/ViewEngine.h"

#include "platform/LoggingCategories.h"
#include "shell/BoardInput.h"
#include "store/WindowStore.h"
#include "views/ViewTypes.h"
#include "views/appearance/DesktopAppearance.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/windows/AppIconProvider.h"
#include "views/windows/PreviewResolution.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <utility>

namespace kelpa {

namespace {

ViewSettings* viewSettings(QQmlEngine& engine)
{
    return engine.singletonInstance<ViewSettings*>(
        qmlTypeId("Kelpa.Appearance", 1, 0, "ViewSettings"));
}

/// The item that contains the window's menus and sheets.
QQuickItem* popups(const QQuickWindow& window)
{
    return window.property("overlay").value<QQuickItem*>();
}

/// Follows the store's windows as long as `context` lives.
std::shared_ptr<IconWindows> iconWindowsOf(WindowStore& store, QObject& context)
{
    auto windows = std::make_shared<IconWindows>();
    const auto update = [&store, windows] { windows->set(store.windows()); };
    QObject::connect(&store, &WindowStore::windowsChanged, &context, update);
    update();
    return windows;
}

} // namespace

struct ViewEngine::Parts
{
    Parts(WindowStore& storeToShow, Applications& applications,
          std::shared_ptr<Workers> iconReaders, Options chosen)
        : store(storeToShow), options(std::move(chosen)), controller(storeToShow)
    {
        engine.addImportPath(QStringLiteral(":/qt/qml"));
        auto provider =
            std::make_unique<AppIconProvider>(applications, iconWindows, std::move(iconReaders));
        // The engine takes ownership of its image providers.
        engine.addImageProvider(AppIconProvider::name(), provider.release());
    }

    WindowStore& store;
    Options options;
    /// Connected before anything else follows the store: a card that appears, or whose application
    /// becomes known, requests its icon at once.
    QObject iconsFollow;
    std::shared_ptr<IconWindows> iconWindows = iconWindowsOf(store, iconsFollow);
    BoardController controller;
    std::unique_ptr<DesktopAppearance> desktopAppearance;
    bool isOccluded = false;
    QQmlApplicationEngine engine;
    /// Destroyed before the window, which the engine owns.
    std::unique_ptr<BoardInput> input;
};

ViewEngine::ViewEngine(WindowStore& store, Applications& applications,
                       std::shared_ptr<Workers> iconReaders, Options options)
{
    registerViewTypes();
    m_parts =
        std::make_unique<Parts>(store, applications, std::move(iconReaders), std::move(options));
}

ViewEngine::~ViewEngine() = default;

bool ViewEngine::show()
{
    QQmlApplicationEngine& engine = m_parts->engine;
    auto* const settings = viewSettings(engine);
    if (settings == nullptr)
        return false;
    const auto followLanguage = [this, settings] {
        settings->setLanguage(m_parts->store.language(), m_parts->options.keyNames);
    };
    connect(&m_parts->store, &WindowStore::languageChanged, settings, followLanguage);
    followLanguage();
    m_parts->desktopAppearance = std::make_unique<DesktopAppearance>(
        *settings, m_parts->options.appearance, m_parts->options.isReducingMotion);

    engine.setInitialProperties(
        {{QStringLiteral("board"), QVariant::fromValue(&m_parts->controller)}});
    engine.load(QUrl(QStringLiteral("qrc:/qt/qml/Kelpa/Board/Main.qml")));
    QQuickWindow* const board = window();
    qCDebug(logViews, "views %s", board == nullptr ? "failed to load" : "loaded");
    if (board == nullptr || popups(*board) == nullptr)
        return false;
    board->installEventFilter(this);
    new PreviewResolution(m_parts->store, *board->contentItem());

    connect(
        board, &QQuickWindow::frameSwapped, this,
        [this] {
            qCDebug(logViews, "first frame shown");
            takeKeys();
            Q_EMIT boardShown();
        },
        static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
    // Maximised, the window's frame takes the usable area, whatever the window manager adds to it.
    board->showMaximized();
    return true;
}

void ViewEngine::takeKeys()
{
    m_parts->input = std::make_unique<BoardInput>(*window(), *popups(*window()), m_parts->store);
    connect(m_parts->input.get(), &BoardInput::menuRequested, &m_parts->controller,
            &BoardController::selectionMenuRequested);
    connect(m_parts->input.get(), &BoardInput::editorLeft, m_parts->controller.todos(),
            &TodoController::giveUpEditor);
    connect(m_parts->input.get(), &BoardInput::searchStarted, m_parts->controller.search(),
            &SearchController::typingStarted);
}

void ViewEngine::setDoubleTapOffered(bool isOffered)
{
    m_parts->controller.setDoubleTapOffered(isOffered);
}

void ViewEngine::followAppearance(AppearanceSetting& setting)
{
    m_parts->desktopAppearance->followAppearance(setting);
}

void ViewEngine::followMotion(MotionSetting& setting)
{
    m_parts->desktopAppearance->followMotion(setting);
}

void ViewEngine::setOccluded(bool isOccluded)
{
    m_parts->isOccluded = isOccluded;
    updateSeen();
}

void ViewEngine::finishWriting()
{
    m_parts->controller.todos()->finishWriting();
}

bool ViewEngine::eventFilter(QObject* watched, QEvent* event)
{
    // Also sent when the window is minimised, or on another desktop.
    if (event->type() == QEvent::Expose && watched == window())
        updateSeen();
    return QObject::eventFilter(watched, event);
}

void ViewEngine::updateSeen()
{
    ViewSettings* const settings = viewSettings(m_parts->engine);
    const QQuickWindow* const board = window();
    if (settings != nullptr && board != nullptr)
        settings->setSeen(board->isExposed() && !m_parts->isOccluded);
}

QQuickWindow* ViewEngine::window() const
{
    const QList<QObject*> roots = m_parts->engine.rootObjects();
    return roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(roots.front());
}

} // namespace kelpa
