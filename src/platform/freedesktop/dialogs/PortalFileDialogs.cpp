#include "platform/freedesktop/dialogs/PortalFileDialogs.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QObject>
#include <QUrl>
#include <QUuid>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

const BusAddressee portal{"org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                          "org.freedesktop.portal.FileChooser"};
constexpr const char* requestInterface = "org.freedesktop.portal.Request";
/// How soon a lost connection is noticed.
constexpr guint connectionCheck = 1'000;

/// The responses of a request.
constexpr guint32 responseChosen = 0;
constexpr guint32 responseCancelled = 1;

class AnswerEvent final : public QEvent
{
public:
    explicit AnswerEvent(FileAnswer answer) : QEvent(eventType()), m_answer(std::move(answer)) {}
    static Type eventType() { return User; }
    const FileAnswer& answer() const { return m_answer; }

private:
    const FileAnswer m_answer;
};

/// Names the window to the portal. Toolkits for Wayland have no public name for theirs.
std::string parentWindow()
{
    const QWindow* const window = QGuiApplication::focusWindow();
    if (window == nullptr || QGuiApplication::platformName() != QStringLiteral("xcb"))
        return {};
    return "x11:" + QString::number(window->winId(), 16).toStdString();
}

/// Where the portal tells the result of a call with that token. Known beforehand, so that none is
/// missed.
std::string requestPath(const std::string& uniqueName, const std::string& token)
{
    std::string sender = uniqueName.substr(std::min<std::size_t>(1, uniqueName.size()));
    std::replace(sender.begin(), sender.end(), '.', '_');
    return portal.path + "/request/" + sender + "/" + token;
}

FileAnswer answerFromResponse(GVariant* arguments)
{
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ua{sv})")) == FALSE)
        return {};
    guint32 response = 0;
    g_variant_get_child(arguments, 0, "u", &response);
    if (response == responseCancelled)
        return {.outcome = FileAnswer::Outcome::cancelled, .path = {}};
    if (response != responseChosen)
        return {};
    const GlibPointer<GVariant> results(g_variant_get_child_value(arguments, 1));
    const GlibPointer<GVariant> uris(
        g_variant_lookup_value(results.get(), "uris", G_VARIANT_TYPE_STRING_ARRAY));
    if (!uris || g_variant_n_children(uris.get()) == 0)
        return {};
    const char* uri = nullptr;
    g_variant_get_child(uris.get(), 0, "&s", &uri);
    return fileAnswerFromUri(QString::fromUtf8(uri));
}

/// Of the portal's type (sa(us)), in which 0 stands for a pattern.
GVariant* filterVariant(const FileQuestion::Filter& filter)
{
    constexpr guint32 isPattern = 0;
    GVariantBuilder patterns;
    g_variant_builder_init(&patterns, G_VARIANT_TYPE("a(us)"));
    for (const QString& pattern : filter.patterns) {
        // Dialogs compare letters as they are.
        g_variant_builder_add(&patterns, "(us)", isPattern, pattern.toUtf8().constData());
        if (const QString upper = pattern.toUpper(); upper != pattern)
            g_variant_builder_add(&patterns, "(us)", isPattern, upper.toUtf8().constData());
    }
    return g_variant_new("(sa(us))", filter.name.toUtf8().constData(), &patterns);
}

gboolean goOn(gpointer /*data*/)
{
    return G_SOURCE_CONTINUE;
}

/// One dialog, with the thread that serves it.
class Dialog final : public QObject, public Subscription
{
public:
    Dialog(const FileQuestion& question, std::chrono::milliseconds limit,
           std::function<void(const FileAnswer&)> answered)
        : m_question(question), m_limit(limit), m_answered(std::move(answered)),
          m_parentWindow(parentWindow()), m_address(sessionBusAddress().toStdString()),
          m_token("kelpa" + QUuid::createUuid().toString(QUuid::Id128).toStdString()),
          m_context(g_main_context_new()),
          m_thread([this](const std::stop_token& stop) { run(stop); })
    {}
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;
    ~Dialog() override
    {
        m_thread.request_stop();
        g_main_context_wakeup(m_context.get());
        m_thread.join();
    }

protected:
    bool event(QEvent* event) override;

private:
    // On the dialog's own thread.
    void run(const std::stop_token& stop);
    void start(AsyncBus& bus);
    void show(AsyncBus& bus);
    void follow(AsyncBus& bus, const std::string& path);
    GVariant* arguments() const;
    void end(FileAnswer answer);

    const FileQuestion m_question;
    const std::chrono::milliseconds m_limit;
    const std::function<void(const FileAnswer&)> m_answered;
    const std::string m_parentWindow;
    const std::string m_address;
    const std::string m_token;

    // Used on the dialog's thread only.
    bool m_isEnded = false;
    /// Empty until the portal is called.
    std::string m_requestPath;

    const GlibPointer<GMainContext> m_context;
    std::jthread m_thread;
};

bool Dialog::event(QEvent* event)
{
    if (event->type() != AnswerEvent::eventType())
        return QObject::event(event);
    // The function may destroy this object.
    const FileAnswer answer = static_cast<const AnswerEvent&>(*event).answer();
    const auto answered = m_answered;
    answered(answer);
    return true;
}

void Dialog::run(const std::stop_token& stop)
{
    g_main_context_push_thread_default(m_context.get());
    GSource* const check = g_timeout_source_new(connectionCheck);
    g_source_set_callback(check, goOn, nullptr, nullptr);
    g_source_attach(check, m_context.get());
    {
        AsyncBus bus;
        bool isOpen = false;
        if (m_address.empty())
            end({});
        else
            bus.open(m_address, m_limit, [this, &bus, &isOpen](bool opened) {
                isOpen = opened;
                if (opened)
                    start(bus);
                else
                    end({});
            });
        while (!stop.stop_requested() && !m_isEnded) {
            g_main_context_iteration(m_context.get(), TRUE);
            if (isOpen && !bus.isOpen())
                end({});
        }
        // The portal closes the dialogs of a program whose connection ends; this is for those that
        // do not.
        if (!m_isEnded && !m_requestPath.empty() && bus.isOpen())
            bus.call({portal.name, m_requestPath, requestInterface}, "Close", nullptr, "()",
                     m_limit, [](BusOutcome, GVariant*) {});
    }
    g_source_destroy(check);
    g_source_unref(check);
    g_main_context_pop_thread_default(m_context.get());
}

/// A portal that does not run is started. The bus refuses for one that runs without being known to
/// it as a service.
void Dialog::start(AsyncBus& bus)
{
    bus.subscribe(busItself, "NameOwnerChanged", portal.name, [this](GVariant* arguments) {
        const char* owner = "";
        if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(sss)")) != FALSE)
            g_variant_get_child(arguments, 2, "&s", &owner);
        if (*owner == '\0')
            end({});
    });
    bus.call(busItself, "StartServiceByName", g_variant_new("(su)", portal.name.c_str(), 0U), "(u)",
             m_limit, [this, &bus](BusOutcome outcome, GVariant*) {
                 if (outcome == BusOutcome::silent)
                     end({});
                 else
                     show(bus);
             });
}

void Dialog::show(AsyncBus& bus)
{
    m_requestPath = requestPath(bus.uniqueName(), m_token);
    follow(bus, m_requestPath);
    const bool isOpening = m_question.purpose == FileQuestion::Purpose::open;
    bus.call(portal, isOpening ? "OpenFile" : "SaveFile", arguments(), "(o)", m_limit,
             [this, &bus](BusOutcome outcome, GVariant* value) {
                 if (outcome != BusOutcome::answered) {
                     end({});
                     return;
                 }
                 const char* path = nullptr;
                 g_variant_get(value, "(&o)", &path);
                 // Portals before version 0.9 choose the path by themselves.
                 if (m_requestPath != path) {
                     m_requestPath = path;
                     follow(bus, m_requestPath);
                 }
             });
}

void Dialog::follow(AsyncBus& bus, const std::string& path)
{
    bus.subscribe({portal.name, path, requestInterface}, "Response", {},
                  [this](GVariant* arguments) { end(answerFromResponse(arguments)); });
}

GVariant* Dialog::arguments() const
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    const auto add = [&options](const char* name, const std::string& text) {
        if (!text.empty())
            g_variant_builder_add(&options, "{sv}", name, g_variant_new_string(text.c_str()));
    };
    add("handle_token", m_token);
    add("accept_label", m_question.confirmation.toStdString());
    if (m_question.purpose == FileQuestion::Purpose::save)
        add("current_name", m_question.suggestedName.toStdString());
    if (!m_question.filters.isEmpty()) {
        GVariantBuilder filters;
        g_variant_builder_init(&filters, G_VARIANT_TYPE("a(sa(us))"));
        for (const FileQuestion::Filter& filter : m_question.filters)
            g_variant_builder_add_value(&filters, filterVariant(filter));
        g_variant_builder_add(&options, "{sv}", "filters", g_variant_builder_end(&filters));
        g_variant_builder_add(&options, "{sv}", "current_filter",
                              filterVariant(m_question.filters.constFirst()));
    }
    g_variant_builder_add(&options, "{sv}", "modal", g_variant_new_boolean(TRUE));
    return g_variant_new("(ssa{sv})", m_parentWindow.c_str(),
                         m_question.title.toStdString().c_str(), &options);
}

void Dialog::end(FileAnswer answer)
{
    if (std::exchange(m_isEnded, true))
        return;
    qCDebug(logBus, "the file dialog ended: %d", static_cast<int>(answer.outcome));
    QCoreApplication::postEvent(this, new AnswerEvent(std::move(answer)));
}

} // namespace

std::unique_ptr<Subscription>
PortalFileDialogs::ask(const FileQuestion& question,
                       std::function<void(const FileAnswer&)> answered)
{
    return std::make_unique<Dialog>(question, m_limit, std::move(answered));
}

FileAnswer fileAnswerFromUri(const QString& uri)
{
    const QUrl url = QUrl::fromEncoded(uri.toUtf8(), QUrl::StrictMode);
    if (!url.isValid() || url.scheme().isEmpty())
        return {};
    const QString host = url.host();
    if (!url.isLocalFile() || (!host.isEmpty() && host != QStringLiteral("localhost")))
        return {.outcome = FileAnswer::Outcome::elsewhere, .path = {}};
    const QString path = url.path(QUrl::FullyDecoded);
    // No file has a NUL in its path, and a folder is no file.
    if (!path.startsWith(u'/') || path.endsWith(u'/') || path.contains(QChar::Null))
        return {};
    return {.outcome = FileAnswer::Outcome::chosen, .path = path};
}

} // namespace kelpa
