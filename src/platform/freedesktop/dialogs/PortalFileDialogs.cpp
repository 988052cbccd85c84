#include "platform/freedesktop/dialogs/PortalFileDialogs.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/bus/AsyncBus.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/PortalRequest.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QObject>
#include <QUrl>
#include <QWindow>

#include <stop_token>
#include <string>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

constexpr const char* portalInterface = "org.freedesktop.portal.FileChooser";
/// How soon a lost connection is noticed.
constexpr guint connectionCheck = 1'000;

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

FileAnswer answerFromResponse(GVariant* response)
{
    if (response == nullptr)
        return {};
    guint32 code = 0;
    g_variant_get_child(response, 0, "u", &code);
    if (code == responseCancelled)
        return {.outcome = FileAnswer::Outcome::cancelled, .path = {}};
    if (code != responseGiven)
        return {};
    const GlibPointer<GVariant> results(g_variant_get_child_value(response, 1));
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
    void show(PortalRequest& request);
    GVariant* arguments(const std::string& token) const;
    void end(FileAnswer answer);

    const FileQuestion m_question;
    const std::chrono::milliseconds m_limit;
    const std::function<void(const FileAnswer&)> m_answered;
    const std::string m_parentWindow;
    const std::string m_address;

    // Used on the dialog's thread only.
    bool m_isEnded = false;

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
        PortalRequest request(bus, m_limit);
        bool isOpen = false;
        if (m_address.empty())
            end({});
        else
            bus.open(m_address, m_limit, [this, &request, &isOpen](bool opened) {
                isOpen = opened;
                if (opened)
                    show(request);
                else
                    end({});
            });
        while (!stop.stop_requested() && !m_isEnded) {
            g_main_context_iteration(m_context.get(), TRUE);
            if (isOpen && !bus.isOpen())
                end({});
        }
        request.close();
    }
    g_source_destroy(check);
    g_source_unref(check);
    g_main_context_pop_thread_default(m_context.get());
}

void Dialog::show(PortalRequest& request)
{
    const bool isOpening = m_question.purpose == FileQuestion::Purpose::open;
    request.send(portalInterface, isOpening ? "OpenFile" : "SaveFile", arguments(request.token()),
                 [this](GVariant* response) { end(answerFromResponse(response)); });
}

GVariant* Dialog::arguments(const std::string& token) const
{
    GVariantBuilder options;
    g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
    const auto add = [&options](const char* name, const std::string& text) {
        if (!text.empty())
            g_variant_builder_add(&options, "{sv}", name, g_variant_new_string(text.c_str()));
    };
    add("handle_token", token);
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
