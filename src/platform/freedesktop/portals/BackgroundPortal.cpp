#include "platform/freedesktop/portals/BackgroundPortal.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/PortalRequest.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <algorithm>
#include <optional>

namespace kelpa {

namespace {

using Clock = std::chrono::steady_clock;

/// How soon a lost connection and the end of the person's time are noticed.
constexpr std::chrono::milliseconds longestCheck{1'000};

gboolean goOn(gpointer /*data*/)
{
    return G_SOURCE_CONTINUE;
}

/// The thread's own context, which wakes up regularly and when the work is to stop.
class WaitingContext
{
public:
    WaitingContext(const std::stop_token& stop, std::chrono::milliseconds check)
        : m_context(g_main_context_new()),
          m_check(g_timeout_source_new(static_cast<guint>(check.count()))),
          m_wake(stop, Wake{m_context.get()})
    {
        g_main_context_push_thread_default(m_context.get());
        g_source_set_callback(m_check, goOn, nullptr, nullptr);
        g_source_attach(m_check, m_context.get());
    }
    WaitingContext(const WaitingContext&) = delete;
    WaitingContext& operator=(const WaitingContext&) = delete;
    ~WaitingContext()
    {
        g_source_destroy(m_check);
        g_source_unref(m_check);
        g_main_context_pop_thread_default(m_context.get());
    }

    void wait() const { g_main_context_iteration(m_context.get(), TRUE); }

private:
    struct Wake
    {
        GMainContext* context;
        void operator()() const { g_main_context_wakeup(context); }
    };

    const GlibPointer<GMainContext> m_context;
    GSource* const m_check;
    const std::stop_callback<Wake> m_wake;
};

GVariant* argumentsOf(const BackgroundQuestion& question, const std::string& token)
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    const auto add = [&options](const char* name, GVariant* value) {
        g_variant_builder_add(&options, "{sv}", name, value);
    };
    GVariantBuilder words;
    g_variant_builder_init(&words, G_VARIANT_TYPE_STRING_ARRAY);
    for (const QString& word : question.command)
        g_variant_builder_add(&words, "s", word.toUtf8().constData());
    add("handle_token", g_variant_new_string(token.c_str()));
    add("autostart", g_variant_new_boolean(question.isOn ? TRUE : FALSE));
    add("commandline", g_variant_builder_end(&words));
    add("dbus-activatable", g_variant_new_boolean(FALSE));
    // No window to show a question for.
    return g_variant_new("(sa{sv})", "", &options);
}

AutostartOutcome outcomeOf(GVariant* response, bool isWanted)
{
    if (response == nullptr)
        return AutostartOutcome::failed;
    guint32 code = 0;
    g_variant_get_child(response, 0, "u", &code);
    if (code != responseGiven && code != responseCancelled)
        return AutostartOutcome::failed;
    const GlibPointer<GVariant> results(g_variant_get_child_value(response, 1));
    gboolean isOn = FALSE;
    const bool isTold = g_variant_lookup(results.get(), "autostart", "b", &isOn) != FALSE;
    // Whoever answers that it is not allowed has not switched it off.
    if (!isWanted)
        return code == responseGiven && isOn == FALSE ? AutostartOutcome::done
                                                      : AutostartOutcome::failed;
    if (code == responseCancelled)
        return AutostartOutcome::refused;
    if (!isTold)
        return AutostartOutcome::failed;
    return isOn != FALSE ? AutostartOutcome::done : AutostartOutcome::refused;
}

} // namespace

AutostartOutcome askBackgroundPortal(const BackgroundQuestion& question,
                                     const std::stop_token& stop, const BackgroundLimits& limits)
{
    const QByteArray address = sessionBusAddress();
    if (address.isEmpty())
        return AutostartOutcome::failed;
    const WaitingContext context(stop, std::min(limits.person, longestCheck));
    std::optional<AutostartOutcome> outcome;
    AsyncBus bus;
    PortalRequest request(bus, limits.step);
    const auto send = [&] {
        request.send("org.freedesktop.portal.Background", "RequestBackground",
                     argumentsOf(question, request.token()),
                     [&](GVariant* response) { outcome = outcomeOf(response, question.isOn); });
    };
    bool isOpen = false;
    bus.open(address.toStdString(), limits.step, [&](bool opened) {
        isOpen = opened;
        if (!opened)
            outcome = AutostartOutcome::failed;
        else
            send();
    });
    const Clock::time_point end = Clock::now() + limits.person;
    while (!outcome && !stop.stop_requested() && Clock::now() < end && (!isOpen || bus.isOpen()))
        context.wait();
    request.close();
    qCDebug(logBus, "the background portal: %s",
            !outcome                                ? "no answer"
            : *outcome == AutostartOutcome::done    ? "done"
            : *outcome == AutostartOutcome::refused ? "refused"
                                                    : "failed");
    return outcome.value_or(AutostartOutcome::failed);
}

} // namespace kelpa
