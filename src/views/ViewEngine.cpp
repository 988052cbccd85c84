#include "views/ViewEngine.h"

#include "platform/LoggingCategories.h"
#include "platform/Scheduler.h"
#include "shell/BoardInput.h"
#include "shell/EarlyKeys.h"
#include "store/WindowStore.h"
#include "views/FirstFrame.h"
#include "views/ViewTypes.h"
#include "views/appearance/DesktopAppearance.h"
#include "views/appearance/FontLoading.h"
#include "views/appearance/ViewSettings.h"
#include "views/board/BoardController.h"
#include "views/board/notices/FirstSteps.h"
#include "views/board/notices/LanguageOffer.h"
#include "views/scene/WaterfallView.h"
#include "views/transfer/FileAsking.h"
#include "views/windows/AppIconProvider.h"
#include "views/windows/PreviewResolution.h"

#include <QCoreApplication>
#include <QDir>
#include <QKeyEvent>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QResizeEvent>

#include <utility>
#include <vector>

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

/// Creates the items of the rows in view. Otherwise they are created when the first frame is due.
void layOut(QQuickItem& item)
{
    if (auto* const view = qobject_cast<WaterfallView*>(&item); view != nullptr)
        view->layOut();
    const QList<QQuickItem*> children = item.childItems();
    for (QQuickItem* const child : children)
        layOut(*child);
}

FirstBoard firstBoard(BoardController& controller)
{
    const LanguageOffer& offer = *controller.languageOffer();
    return {.hasFirstSteps = controller.firstSteps()->isOpen(),
            .offeredLanguages = offer.isOpen() ? offer.texts() + offer.keys() : QStringList()};
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
          std::shared_ptr<Workers> iconReaders, Options chosen, std::unique_ptr<ViewTypes> given)
        : store(storeToShow), options(std::move(chosen)), controller(storeToShow),
          types(std::move(given))
    {
        ViewTypes::serve();
        auto provider =
            std::make_unique<AppIconProvider>(applications, iconWindows, std::move(iconReaders));
        // The engine takes ownership of its image providers.
        types->engine().addImageProvider(AppIconProvider::name(), provider.release());
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
    /// Due while the window is called for and does not have the keyboard yet.
    TaskHandle call;
    std::function<bool()> stays;
    const std::unique_ptr<ViewTypes> types;
    /// Null before `load`. Destroyed before the engine.
    std::unique_ptr<QObject> root;
    /// Null before `show`. Destroyed before the window.
    std::unique_ptr<FirstFrame> firstFrame;
    /// Likewise.
    std::unique_ptr<BoardInput> input;
    /// Likewise.
    std::unique_ptr<EarlyKeys> earlyKeys;
    /// Somebody who starts Kelpa to find a window begins to type before the board is drawn. All
    /// other keys would act on a board that nobody has seen.
    std::vector<std::unique_ptr<QKeyEvent>> typed;
};

ViewEngine::ViewEngine(WindowStore& store, Applications& applications,
                       std::shared_ptr<Workers> iconReaders, Options options)
    : ViewEngine(store, applications, std::move(iconReaders), std::move(options),
                 std::make_unique<ViewTypes>())
{}

ViewEngine::ViewEngine(WindowStore& store, Applications& applications,
                       std::shared_ptr<Workers> iconReaders, Options options,
                       std::unique_ptr<ViewTypes> types)
    : m_parts(std::make_unique<Parts>(store, applications, std::move(iconReaders),
                                      std::move(options), std::move(types)))
{
    // Before the window hears of it, and closes.
    connect(m_parts->controller.presence(), &PresenceController::quitConfirmed, this,
            &ViewEngine::quitConfirmed);
    connect(m_parts->controller.goals(), &GoalController::frontWanted, this, [this] {
        // The person may have minimised it meanwhile.
        if (window() != nullptr && !window()->windowStates().testFlag(Qt::WindowMinimized))
            Q_EMIT frontWanted();
    });
}

ViewEngine::~ViewEngine() = default;

QQmlEngine& ViewEngine::engine()
{
    return m_parts->types->engine();
}

bool ViewEngine::prepare()
{
    if (m_parts->desktopAppearance)
        return true;
    auto* const settings = viewSettings(engine());
    if (settings == nullptr)
        return false;
    const auto followLanguage = [this, settings] {
        settings->setLanguage(m_parts->store.language(), m_parts->options.keyNames);
    };
    connect(&m_parts->store, &WindowStore::languageChanged, settings, followLanguage);
    followLanguage();
    m_parts->desktopAppearance = std::make_unique<DesktopAppearance>(
        *settings, m_parts->options.appearance, m_parts->options.isReducingMotion);
    Q_EMIT prepared();

    // The engine's thread waits whenever this one is to prepare the engine for a module.
    loadFonts(*settings, firstBoard(m_parts->controller),
              [] { QCoreApplication::processEvents(); });
    return true;
}

bool ViewEngine::load()
{
    if (!prepare())
        return false;
    viewSettings(engine())->setStarting(true);
    // Waits for the types that are not read yet.
    QQmlComponent file(&engine(), ViewTypes::mainFile(), QQmlComponent::PreferSynchronous);
    m_parts->root.reset(file.createWithInitialProperties(
        {{QStringLiteral("board"), QVariant::fromValue(&m_parts->controller)}}));
    for (const QQmlError& error : file.errors())
        qWarning("%s", qPrintable(error.toString()));
    QQuickWindow* const board = window();
    qCDebug(logViews, "views %s", board == nullptr ? "failed to load" : "loaded");
    if (board == nullptr || popups(*board) == nullptr)
        return false;
    board->installEventFilter(this);
    new PreviewResolution(m_parts->store, *board->contentItem());
    return true;
}

bool ViewEngine::show()
{
    if (window() == nullptr && !load())
        return false;
    if (!m_parts->firstFrame)
        awaitFirstFrame();
    // Maximised, the window's frame takes the usable area, whatever the window manager adds to it.
    window()->showMaximized();
    // While the window manager places the window: its size is as yet that of the window when it is
    // no longer maximised, which its items do not know before they are told.
    QResizeEvent resize(window()->size(), window()->size());
    QCoreApplication::sendEvent(window(), &resize);
    layOut(*window()->contentItem());
    m_parts->firstFrame->limitWait();
    return true;
}

void ViewEngine::awaitFirstFrame()
{
    logFirstFrame(*window(), *viewSettings(engine()));
    m_parts->firstFrame = std::make_unique<FirstFrame>(*window());
    connect(m_parts->firstFrame.get(), &FirstFrame::controlsNeeded, this, [this] {
        viewSettings(engine())->setStarting(false);
        m_parts->types->readRest();
    });
    connect(m_parts->firstFrame.get(), &FirstFrame::shown, this, [this] {
        qCDebug(logViews, "first frame shown");
        takeKeys();
        Q_EMIT boardShown();
    });
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
    // Nobody has seen a board that comes back either.
    m_parts->earlyKeys = std::make_unique<EarlyKeys>(
        *window(), [](const QKeyEvent& key, bool isFirst) { return typesSearch(key, isFirst); });
    for (std::unique_ptr<QKeyEvent>& key : m_parts->typed)
        QCoreApplication::postEvent(window(), key.release());
    m_parts->typed.clear();
}

void ViewEngine::keepTyped(const QKeyEvent& key)
{
    if (typesSearch(key, m_parts->typed.empty()))
        m_parts->typed.emplace_back(key.clone());
}

void ViewEngine::setBackups(BackupBrowser& backups)
{
    m_parts->controller.backups()->setBrowser(backups);
}

void ViewEngine::setTransfer(BoardTransfer& transfer, FileDialogs& dialogs, const FileAccess& files,
                             Scheduler& scheduler)
{
    const TransferParts parts{transfer, dialogs, files, scheduler, QDir::homePath()};
    m_parts->controller.exporting()->setParts(parts);
    m_parts->controller.importing()->setParts(parts);
}

void ViewEngine::setDoubleTapOffered(bool isOffered)
{
    m_parts->controller.setDoubleTapOffered(isOffered);
}

void ViewEngine::noteDoubleTap()
{
    m_parts->controller.firstSteps()->noteReturn();
}

void ViewEngine::noteCall(Scheduler& scheduler)
{
    m_parts->call.reset();
    if (window() != nullptr && !window()->isActive())
        m_parts->call = scheduler.after(longestCall, [this] { m_parts->call.reset(); });
}

void ViewEngine::followAppearance(AppearanceSetting& setting)
{
    m_parts->desktopAppearance->followAppearance(setting);
}

void ViewEngine::followMotion(MotionSetting& setting)
{
    m_parts->desktopAppearance->followMotion(setting);
}

void ViewEngine::followTextScale(TextScaleSetting& setting)
{
    m_parts->desktopAppearance->followTextScale(setting);
}

void ViewEngine::followContrast(ContrastSetting& setting)
{
    m_parts->desktopAppearance->followContrast(setting);
}

void ViewEngine::followAccent(AccentSetting& setting)
{
    m_parts->desktopAppearance->followAccent(setting);
}

void ViewEngine::setOccluded(bool isOccluded)
{
    m_parts->isOccluded = isOccluded;
    updateSeen();
}

void ViewEngine::closeWithoutAsking()
{
    m_parts->stays = {};
    m_parts->controller.trouble()->closeWithoutAsking();
}

void ViewEngine::setSessionStart(SessionStart& start)
{
    m_parts->controller.presence()->setSessionStart(start);
}

void ViewEngine::setShortcuts(DesktopShortcuts& shortcuts)
{
    m_parts->controller.presence()->shortcuts()->setShortcuts(shortcuts);
}

void ViewEngine::setStaying(std::function<bool()> stays)
{
    m_parts->stays = std::move(stays);
}

void ViewEngine::hide()
{
    // What is drawn takes most of the memory, and is drawn again in a moment.
    window()->setPersistentGraphics(false);
    window()->setPersistentSceneGraph(false);
    window()->hide();
    m_parts->types->engine().collectGarbage();
    Q_EMIT hidden();
}

void ViewEngine::finishWriting()
{
    m_parts->controller.todos()->finishWriting();
}

bool ViewEngine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close && watched == window() && m_parts->stays) {
        finishWriting();
        if (m_parts->stays()) {
            event->ignore();
            hide();
            return true;
        }
    }
    // Also sent when the window is minimised, or on another desktop.
    if (event->type() == QEvent::Expose && watched == window())
        updateSeen();
    if (event->type() == QEvent::FocusIn && watched == window()) {
        m_parts->controller.search()->noteForward();
        if (std::exchange(m_parts->call, nullptr))
            Q_EMIT m_parts->controller.cameForward();
    }
    // Nothing scrolls below a pointer that is pressed.
    if (event->type() == QEvent::MouseButtonPress && watched == window())
        m_parts->call.reset();
    if (event->type() == QEvent::KeyPress && watched == window() && !m_parts->input)
        keepTyped(static_cast<QKeyEvent&>(*event));
    return QObject::eventFilter(watched, event);
}

void ViewEngine::updateSeen()
{
    ViewSettings* const settings = viewSettings(m_parts->types->engine());
    const QQuickWindow* const board = window();
    if (settings == nullptr || board == nullptr)
        return;
    const bool isSeen = board->isExposed() && !m_parts->isOccluded;
    settings->setSeen(isSeen);
    Q_EMIT seenReported(isSeen);
}

QQuickWindow* ViewEngine::window() const
{
    return qobject_cast<QQuickWindow*>(m_parts->root.get());
}

} // namespace kelpa
