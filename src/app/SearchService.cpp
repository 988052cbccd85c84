#include "app/SearchService.h"

#include "app/SearchInterfaces.h"
#include "automation/Methods.h"
#include "model/Text.h"
#include "platform/freedesktop/bus/RunnerTypes.h"
#include "store/WindowStore.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <variant>

namespace kelpa {

namespace {

using namespace automation;

/// The most results that are described at once: all that a search finds.
constexpr qsizetype mostDescribed = 3 * mostFoundOfAKind;
/// Of Plasma's matches: the best one has this relevance, each further one a little less.
constexpr double bestRelevance = 0.9;
constexpr double relevanceStep = 0.02;

/// When the person acted, as the Shell gives it; 0 is not known.
ActivationContext contextAt(InputTime time)
{
    return {.inputTime = time != 0 ? std::optional(time) : std::nullopt, .startupID = {}};
}

QStringList idTexts(const QList<FoundID>& ids)
{
    QStringList texts;
    for (const FoundID& id : ids)
        texts.append(textOf(id));
    return texts;
}

/// As g_icon_to_string writes a themed icon. Names of icons need no escape.
QString iconText(const FoundDescription& description)
{
    return QStringLiteral(". GThemedIcon %1 %2")
        .arg(description.iconName, description.otherIconName);
}

/// Whether the desktop brings windows forward and lets Kelpa do that.
bool canActivate(const WindowStore& store)
{
    return store.isAccessibilityTrusted() && store.abilities().has(DesktopAbility::actions);
}

QList<QVariantMap> metas(const SearchedBoard& board, const QStringList& ids, AppLanguage language)
{
    QList<QVariantMap> list;
    for (const QString& text : ids.first(std::min(ids.size(), mostDescribed))) {
        const std::optional<FoundID> id = foundIDFrom(text);
        const auto description = id ? described(*id, board, language) : std::nullopt;
        if (!description) {
            // The Shell shows none of the results where one has no description.
            list.append({{QStringLiteral("id"), text},
                         {QStringLiteral("name"), QString(u'…')},
                         {QStringLiteral("gicon"), QStringLiteral("org.kelpa.Kelpa")}});
            continue;
        }
        list.append({{QStringLiteral("id"), text},
                     {QStringLiteral("name"), description->title},
                     {QStringLiteral("description"), description->detail},
                     {QStringLiteral("gicon"), iconText(*description)}});
    }
    return list;
}

QList<RunnerMatch> matches(const SearchedBoard& board, const QString& query, AppLanguage language)
{
    QList<RunnerMatch> list;
    for (const FoundID& id : found(board, {query})) {
        const auto description = described(id, board, language);
        if (!description)
            continue;
        RunnerMatch match;
        match.id = textOf(id);
        match.text = description->title;
        match.iconName = description->iconName;
        match.relevance = bestRelevance - relevanceStep * static_cast<double>(list.size());
        match.properties.insert(QStringLiteral("subtext"), description->detail);
        list.append(match);
    }
    return list;
}

} // namespace

SearchService::SearchService(BusObject& provider, BusObject& runner, WindowStore& store,
                             Scheduler& scheduler, BringForward bringForward)
    : m_provider(provider), m_runner(runner), m_store(store),
      m_bringForward(std::move(bringForward)), m_searches(scheduler)
{
    registerRunnerTypes();
    m_provider.setHandler(
        [this](const QString& method, const QVariantList& arguments,
               const BusObject::Respond& respond) { handleProvider(method, arguments, respond); });
    m_runner.setHandler(
        [this](const QString& method, const QVariantList& arguments,
               const BusObject::Respond& respond) { handleRunner(method, arguments, respond); });
}

SearchService::~SearchService()
{
    m_provider.setHandler({});
    m_runner.setHandler({});
}

void SearchService::handleProvider(const QString& method, const QVariantList& arguments,
                                   const BusObject::Respond& respond)
{
    Q_EMIT called();
    if (const auto error = searchProviderError(method, arguments)) {
        respond(*error);
        return;
    }
    if (method == u"ActivateResult") {
        open(arguments.at(0).toString(), contextAt(arguments.at(2).toUInt()), respond);
        return;
    }
    if (method == u"LaunchSearch") {
        respond(QVariantList());
        m_store.setSearchText(arguments.at(0).toStringList().join(u' ').left(longestSearchedWord));
        m_bringForward(contextAt(arguments.at(1).toUInt()));
        return;
    }
    if (method == u"GetResultMetas") {
        answer(
            [board = board(), ids = arguments.at(0).toStringList(), language = m_store.language()] {
                return QVariantList{QVariant::fromValue(metas(board, ids, language))};
            },
            respond);
        return;
    }
    // The results before are the first ones only, so a longer query may have found others.
    answer(
        [board = board(), terms = arguments.constLast().toStringList()] {
            return QVariantList{idTexts(found(board, terms))};
        },
        respond);
}

void SearchService::handleRunner(const QString& method, const QVariantList& arguments,
                                 const BusObject::Respond& respond)
{
    Q_EMIT called();
    if (const auto error = searchRunnerError(method, arguments)) {
        respond(*error);
    } else if (method == u"Match") {
        answer(
            [board = board(), query = arguments.at(0).toString(), language = m_store.language()] {
                return QVariantList{QVariant::fromValue(matches(board, query, language))};
            },
            respond);
    } else if (method == u"Actions") {
        respond(QVariantList{QVariant::fromValue(QList<RunnerAction>())});
    } else if (method == u"Run") {
        open(arguments.at(0).toString(),
             {.inputTime = std::nullopt, .startupID = std::exchange(m_runnerToken, {})}, respond);
    } else {
        if (method == u"SetActivationToken")
            m_runnerToken = arguments.at(0).toString().toUtf8();
        respond(QVariantList());
    }
}

SearchedBoard SearchService::board() const
{
    return {m_store.goals(), m_store.unassignedTodos(),
            m_store.isObserving() ? m_store.windows() : QList<WindowItem>(), QLocale()};
}

void SearchService::answer(Work work, const BusObject::Respond& respond)
{
    if (m_underWay >= mostUnderWay) {
        respond(BusError{errorName(FailureKind::busy),
                         QStringLiteral("too many searches are under way")});
        return;
    }
    ++m_underWay;
    m_searches.add(
        [work = std::move(work), respond](const std::stop_token&) {
            respond(work());
            return Done{};
        },
        [this](Done) { --m_underWay; });
}

void SearchService::open(const QString& text, const ActivationContext& context,
                         const BusObject::Respond& respond)
{
    const std::optional<FoundID> id = foundIDFrom(text);
    if (!id) {
        respond(BusError{errorName(FailureKind::invalidArguments),
                         QStringLiteral("this is no result of Kelpa")});
        return;
    }
    // Opening the board may take longer than a caller waits.
    respond(QVariantList());
    const auto* const number = std::get_if<WindowID>(&*id);
    const WindowItem* const window = number != nullptr && m_store.isObserving()
                                         ? windowWith(*number, m_store.windows())
                                         : nullptr;
    if (window != nullptr && canActivate(m_store)) {
        m_store.focus(WindowItem(*window));
        return;
    }
    // Where it is gone since it was found, the board is all that is left.
    m_store.reveal(*id);
    m_bringForward(context);
}

} // namespace kelpa
