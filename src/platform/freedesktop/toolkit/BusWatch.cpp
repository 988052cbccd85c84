#include "platform/freedesktop/toolkit/BusWatch.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/SessionBus.h"
#include "platform/freedesktop/toolkit/IbusAddress.h"
#include "platform/freedesktop/toolkit/SessionBusStandIn.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QEvent>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

using Clock = std::chrono::steady_clock;

/// Longer than any session; waiting for a silent bus costs nothing.
constexpr std::chrono::hours noLimit{24 * 24};

const BusAddressee addressService{"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus"};
const BusAddressee settingService{addressService.name, addressService.path,
                                  "org.freedesktop.DBus.Properties"};
const BusAddressee registryService{"org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root",
                                   "org.freedesktop.DBus.Properties"};

enum EventType { sessionAnsweredEvent = QEvent::User, accessibilityAnsweredEvent };

/// Whether `properties` of "org.a11y.Status", some or all, say that programs are to be accessible.
bool isSwitchedOn(GVariant* properties)
{
    for (const char* const name : {"IsEnabled", "ScreenReaderEnabled"}) {
        gboolean value = FALSE;
        if (g_variant_lookup(properties, name, "b", &value) != FALSE && value != FALSE)
            return true;
    }
    return false;
}

using Child = GlibPointer<GVariant>;

Child childOf(GVariant* tuple, gsize index)
{
    return Child(g_variant_get_child_value(tuple, index));
}

gboolean expire(gpointer /*data*/)
{
    return G_SOURCE_REMOVE;
}

const char* describe(BusState state)
{
    return state == BusState::answers  ? "answering"
           : state == BusState::absent ? "absent"
                                       : "silent";
}

} // namespace

BusWatchOptions BusWatchOptions::ofSession()
{
    BusWatchOptions options;
    options.sessionAddress = sessionBusAddress().toStdString();
    options.accessibilityAddress = qgetenv("AT_SPI_BUS_ADDRESS").toStdString();
    options.inputMethodAddress = ibusAddress().toStdString();
    options.isAccessibilityWanted = !options.accessibilityAddress.empty() ||
                                    qEnvironmentVariableIsSet("QT_LINUX_ACCESSIBILITY_ALWAYS_ON");
    return options;
}

/// The thread that asks. Nothing on it waits for a reply, so that it ends when it is to.
class BusWatch::Worker
{
public:
    Worker(QObject& receiver, BusWatchOptions options)
        : m_receiver(receiver), m_options(std::move(options)),
          m_isSwitchedOn(m_options.isAccessibilityWanted), m_context(g_main_context_new()),
          m_thread([this](const std::stop_token& stop) { run(stop); })
    {}
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker()
    {
        m_thread.request_stop();
        g_main_context_wakeup(m_context.get());
        m_thread.join();
    }

    BusStates await()
    {
        std::unique_lock lock(m_mutex);
        m_isDecided.wait(lock, [this] { return m_decision.has_value(); });
        return *m_decision;
    }

    /// After the decision, which it belongs to.
    SessionBusStandIn* standIn() const { return m_standIn.get(); }

    std::string accessibilityAddress()
    {
        const std::lock_guard lock(m_mutex);
        return m_accessibilityAddress;
    }

private:
    void run(const std::stop_token& stop);
    void askSession(AsyncBus& session, AsyncBus& accessibility);
    void askService(AsyncBus& session, AsyncBus& accessibility);
    void followService(AsyncBus& session, AsyncBus& accessibility);
    void askAccessibility(AsyncBus& accessibility, const std::string& address);
    void askInputMethod(AsyncBus& inputMethod);
    void decide();
    void report();

    QObject& m_receiver;
    const BusWatchOptions m_options;

    std::mutex m_mutex;
    std::condition_variable m_isDecided;
    std::optional<BusStates> m_decision;
    std::string m_accessibilityAddress;
    /// Made on the worker's thread before the decision.
    std::unique_ptr<SessionBusStandIn> m_standIn;

    // Used on the worker's thread only. Absent while there is no answer.
    std::optional<BusState> m_session;
    std::optional<BusState> m_accessibility;
    std::optional<BusState> m_inputMethod;
    bool m_isSwitchedOn;
    BusStates m_reported;
    /// It answers at last, and nobody has been told, since it is switched off.
    bool m_isAccessibilityDue = false;

    const GlibPointer<GMainContext> m_context;
    std::jthread m_thread;
};

void BusWatch::Worker::run(const std::stop_token& stop)
{
    g_main_context_push_thread_default(m_context.get());
    const auto deadline = Clock::now() + m_options.limit;
    GSource* const alarm = g_timeout_source_new(static_cast<guint>(m_options.limit.count()));
    g_source_set_callback(alarm, expire, nullptr, nullptr);
    g_source_attach(alarm, m_context.get());
    {
        AsyncBus session;
        AsyncBus accessibility;
        AsyncBus inputMethod;
        askSession(session, accessibility);
        if (!m_options.accessibilityAddress.empty())
            askAccessibility(accessibility, m_options.accessibilityAddress);
        askInputMethod(inputMethod);
        bool isDecided = false;
        while (!stop.stop_requested()) {
            if (isDecided) {
                report();
            } else if ((m_session && m_accessibility && m_inputMethod) ||
                       Clock::now() >= deadline) {
                decide();
                isDecided = true;
            }
            // The stand-in needs this thread as long as it lives.
            if (isDecided && !m_standIn)
                break;
            g_main_context_iteration(m_context.get(), TRUE);
        }
        m_standIn.reset();
    }
    g_source_destroy(alarm);
    g_source_unref(alarm);
    g_main_context_pop_thread_default(m_context.get());
}

void BusWatch::Worker::askSession(AsyncBus& session, AsyncBus& accessibility)
{
    const bool asksForAddress = m_options.accessibilityAddress.empty();
    if (m_options.sessionAddress.empty()) {
        m_session = BusState::absent;
        if (asksForAddress)
            m_accessibility = BusState::absent;
        return;
    }
    session.open(m_options.sessionAddress, noLimit,
                 [this, &session, &accessibility, asksForAddress](bool isOpen) {
                     m_session = isOpen ? BusState::answers : BusState::absent;
                     if (!asksForAddress)
                         return;
                     if (!isOpen) {
                         m_accessibility = BusState::absent;
                         return;
                     }
                     followService(session, accessibility);
                     askService(session, accessibility);
                 });
}

void BusWatch::Worker::askService(AsyncBus& session, AsyncBus& accessibility)
{
    // Before the address, so that the answer is here when all others are.
    session.call(settingService, "GetAll", g_variant_new("(s)", "org.a11y.Status"), "(a{sv})",
                 noLimit, [this](BusOutcome outcome, GVariant* answer) {
                     if (outcome == BusOutcome::answered)
                         m_isSwitchedOn = m_isSwitchedOn || isSwitchedOn(childOf(answer, 0).get());
                 });
    session.call(addressService, "GetAddress", nullptr, "(s)", noLimit,
                 [this, &accessibility](BusOutcome outcome, GVariant* answer) {
                     if (outcome != BusOutcome::answered) {
                         m_accessibility = BusState::absent;
                         return;
                     }
                     const char* address = nullptr;
                     g_variant_get(answer, "(&s)", &address);
                     askAccessibility(accessibility, address);
                 });
}

/// The service may come, or accessibility be switched on, long after a silent start.
void BusWatch::Worker::followService(AsyncBus& session, AsyncBus& accessibility)
{
    session.subscribe(
        settingService, "PropertiesChanged", "org.a11y.Status", [this](GVariant* arguments) {
            if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sa{sv}as)")) != FALSE)
                m_isSwitchedOn = m_isSwitchedOn || isSwitchedOn(childOf(arguments, 1).get());
        });
    session.subscribe(busItself, "NameOwnerChanged", addressService.name,
                      [this, &session, &accessibility](GVariant* arguments) {
                          const char* owner = "";
                          if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)")) != FALSE)
                              g_variant_get_child(arguments, 2, "&s", &owner);
                          if (*owner != '\0' && m_accessibility != BusState::answers)
                              askService(session, accessibility);
                      });
}

void BusWatch::Worker::askAccessibility(AsyncBus& accessibility, const std::string& address)
{
    accessibility.open(address, noLimit, [this, &accessibility, address](bool isOpen) {
        if (!isOpen) {
            m_accessibility = BusState::absent;
            return;
        }
        // Where no registry runs yet, the refusal comes from the bus.
        accessibility.call(registryService, "Get",
                           g_variant_new("(ss)", "org.a11y.atspi.Accessible", "ChildCount"), "(v)",
                           noLimit, [this, address](BusOutcome outcome, GVariant*) {
                               m_accessibility = outcome == BusOutcome::silent ? BusState::absent
                                                                               : BusState::answers;
                               const std::lock_guard lock(m_mutex);
                               m_accessibilityAddress = address;
                           });
    });
}

void BusWatch::Worker::askInputMethod(AsyncBus& inputMethod)
{
    if (m_options.inputMethodAddress.empty()) {
        m_inputMethod = BusState::absent;
        return;
    }
    inputMethod.open(m_options.inputMethodAddress, noLimit, [this](bool isOpen) {
        m_inputMethod = isOpen ? BusState::answers : BusState::absent;
    });
}

void BusWatch::Worker::decide()
{
    const BusStates states{.session = m_session.value_or(BusState::silent),
                           .accessibility = m_accessibility.value_or(BusState::silent),
                           .inputMethod = m_inputMethod.value_or(BusState::silent)};
    qCDebug(logBus, "session bus %s, accessibility bus %s, input method %s",
            describe(states.session), describe(states.accessibility), describe(states.inputMethod));
    m_reported = states;
    if (states.session == BusState::silent || states.accessibility == BusState::silent)
        m_standIn = std::make_unique<SessionBusStandIn>();
    const std::lock_guard lock(m_mutex);
    m_decision = states;
    m_isDecided.notify_all();
}

void BusWatch::Worker::report()
{
    const auto becomes = [](BusState& reported, const std::optional<BusState>& now) {
        if (reported != BusState::silent || now != BusState::answers)
            return false;
        reported = BusState::answers;
        return true;
    };
    const auto post = [this](int type) {
        QCoreApplication::postEvent(&m_receiver, new QEvent(static_cast<QEvent::Type>(type)));
    };
    if (becomes(m_reported.session, m_session)) {
        qCDebug(logBus, "the session bus answers at last");
        post(sessionAnsweredEvent);
    }
    if (becomes(m_reported.accessibility, m_accessibility)) {
        qCDebug(logBus, "the accessibility bus answers at last, accessibility is %s",
                m_isSwitchedOn ? "on" : "off");
        m_isAccessibilityDue = true;
    }
    if (m_isAccessibilityDue && m_isSwitchedOn) {
        m_isAccessibilityDue = false;
        post(accessibilityAnsweredEvent);
    }
}

BusWatch::BusWatch(BusWatchOptions options)
    : m_worker(std::make_unique<Worker>(*this, std::move(options)))
{}

BusWatch::~BusWatch() = default;

BusStates BusWatch::await()
{
    const auto begin = Clock::now();
    m_states = m_worker->await();
    qCDebug(logBus, "waited %.1f ms for the buses",
            std::chrono::duration<double, std::milli>(Clock::now() - begin).count());
    return m_states;
}

QString BusWatch::standInAddress() const
{
    const SessionBusStandIn* const standIn = m_worker->standIn();
    return standIn != nullptr ? QString::fromStdString(standIn->address()) : QString();
}

void BusWatch::whenSessionAnswers(std::function<void()> answered)
{
    if (m_states.session == BusState::silent)
        m_sessionAnswered.push_back(std::move(answered));
    else
        answered();
}

void BusWatch::whenAccessibilityAnswers(std::function<void()> answered)
{
    m_accessibilityAnswered.push_back(std::move(answered));
}

void BusWatch::announceAccessibility()
{
    m_worker->standIn()->announceAccessibility(m_worker->accessibilityAddress());
}

bool BusWatch::event(QEvent* event)
{
    const auto call = [](std::vector<std::function<void()>>& functions) {
        for (const std::function<void()>& function : std::exchange(functions, {}))
            function();
    };
    switch (static_cast<int>(event->type())) {
    case sessionAnsweredEvent:
        m_states.session = BusState::answers;
        call(m_sessionAnswered);
        return true;
    case accessibilityAnsweredEvent:
        m_states.accessibility = BusState::answers;
        call(m_accessibilityAnswered);
        return true;
    default:
        return QObject::event(event);
    }
}

} // namespace kelpa
