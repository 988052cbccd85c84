#include "platform/freedesktop/accessibility/AtspiBus.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace kelpa {

namespace {

using Clock = std::chrono::steady_clock;

const std::string rootPath = "/org/a11y/atspi/accessible/root";
const std::string accessible = "org.a11y.atspi.Accessible";
const BusAddressee registry{"org.a11y.atspi.Registry", rootPath, accessible};
const BusAddressee launcher{"org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus"};

/// More than any desktop has; bounds an application that reports without end.
constexpr std::size_t maximalApplications = 512;
constexpr std::size_t maximalDocuments = 64;
constexpr qsizetype maximalText = 8192;

/// The match rule of Collection.GetMatches: document frames (role 82) and documents of
/// spreadsheets, presentations, text, web and mail (92 to 96) that are showing (state 25), in tree
/// order. States and roles are bit fields of 32 bits a word.
GVariant* documentRule()
{
    return g_variant_new_parsed("(([%i, 0], 1, @a{ss} {}, 1, [0, 0, %i, %i], 2, @as [], 1, false), "
                                "uint32 1, %i, true)",
                                gint32{1} << 25, static_cast<gint32>(0xf0000000U | (1U << 18)),
                                gint32{1}, static_cast<gint32>(maximalDocuments));
}

/// The objects of a reply of type "(a(so))" as pairs of bus name and path.
std::vector<std::pair<std::string, std::string>> objects(GVariant* answer, std::size_t maximum)
{
    std::vector<std::pair<std::string, std::string>> found;
    GVariantIter* list = nullptr;
    g_variant_get(answer, "(a(so))", &list);
    const char* name = nullptr;
    const char* path = nullptr;
    while (found.size() < maximum && g_variant_iter_next(list, "(&s&o)", &name, &path) != FALSE)
        found.emplace_back(name, path);
    g_variant_iter_free(list);
    return found;
}

QString bounded(const char* text)
{
    const QString value = QString::fromUtf8(text).trimmed();
    return value.size() <= maximalText ? value : QString();
}

/// Path or URL of a document by its attributes; toolkits differ in the key.
QString location(GVariant* answer)
{
    static constexpr std::array keys{"DocURL", "URI"};
    std::array<QString, keys.size()> found;
    GVariantIter* list = nullptr;
    g_variant_get(answer, "(a{ss})", &list);
    const char* key = nullptr;
    const char* value = nullptr;
    while (g_variant_iter_next(list, "{&s&s}", &key, &value) != FALSE) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            if (std::string_view(key) == keys.at(i))
                found.at(i) = bounded(value);
        }
    }
    g_variant_iter_free(list);
    return found[0].isEmpty() ? found[1] : found[0];
}

std::optional<Rect> extents(GVariant* answer)
{
    gint32 x = 0;
    gint32 y = 0;
    gint32 width = 0;
    gint32 height = 0;
    g_variant_get(answer, "((iiii))", &x, &y, &width, &height);
    if (width <= 0 || height <= 0)
        return std::nullopt;
    return Rect{double(x), double(y), double(width), double(height)};
}

QString name(GVariant* answer)
{
    GVariant* value = nullptr;
    g_variant_get(answer, "(v)", &value);
    QString text = g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) != FALSE
                       ? bounded(g_variant_get_string(value, nullptr))
                       : QString();
    g_variant_unref(value);
    return text;
}

} // namespace

/// The calls to one application for its documents.
struct AtspiBus::DocumentsRequest
{
    std::string name;
    Clock::time_point deadline;
    Documents done;
    std::vector<ShownDocument> documents;
    std::size_t pending = 0;
    bool isSilent = false;

    Milliseconds left() const { return std::chrono::ceil<Milliseconds>(deadline - Clock::now()); }

    void finish(DocumentAnswer answer)
    {
        std::erase_if(documents,
                      [](const ShownDocument& document) { return document.document.isEmpty(); });
        if (answer == DocumentAnswer::none && !documents.empty())
            answer = DocumentAnswer::documents;
        done(answer, std::move(documents));
    }
};

AtspiBus::~AtspiBus()
{
    // Both before either is destroyed: a reply on one may cause a call on the other.
    m_session.abandon();
    m_bus.abandon();
}

void AtspiBus::connect(Milliseconds limit, std::function<void(bool)> done)
{
    m_processes.clear();
    if (m_address.address) {
        m_bus.open(*m_address.address, limit, std::move(done));
        return;
    }
    const auto otherwise = [this, limit, done = std::move(done)](bool isConnected) {
        m_session.close();
        if (isConnected || m_address.fallbackAddress.empty())
            done(isConnected);
        else
            m_bus.open(m_address.fallbackAddress, limit, done);
    };
    if (m_address.sessionAddress.empty()) {
        otherwise(false);
        return;
    }
    m_session.open(m_address.sessionAddress, limit, [this, limit, otherwise](bool isConnected) {
        if (isConnected)
            requestAddress(limit, otherwise);
        else
            otherwise(false);
    });
}

void AtspiBus::requestAddress(Milliseconds limit, std::function<void(bool)> done)
{
    m_session.call(launcher, "GetAddress", nullptr, "(s)", limit,
                   [this, limit, done = std::move(done)](BusOutcome outcome, GVariant* value) {
                       if (outcome != BusOutcome::answered) {
                           done(false);
                           return;
                       }
                       const char* address = nullptr;
                       g_variant_get(value, "(&s)", &address);
                       m_bus.open(address, limit, done);
                   });
}

void AtspiBus::applications(Milliseconds limit, std::function<void(std::optional<Names>)> done)
{
    const auto children = [this, limit, done = std::move(done)](BusOutcome outcome,
                                                                GVariant* value) {
        if (outcome != BusOutcome::answered) {
            done(std::nullopt);
            return;
        }
        std::set<std::string> names;
        for (auto& [name, path] : objects(value, maximalApplications))
            names.insert(std::move(name));
        std::erase_if(m_processes, [&](const auto& known) { return !names.contains(known.first); });
        requestProcesses({names.begin(), names.end()}, limit, done);
    };
    m_bus.call(registry, "GetChildren", nullptr, "(a(so))", limit, children);
}

void AtspiBus::requestProcesses(std::vector<std::string> names, Milliseconds limit,
                                std::function<void(std::optional<Names>)> done)
{
    const auto finish = [this, done = std::move(done)] {
        Names known;
        for (const auto& [name, process] : m_processes)
            known.emplace(process, name);
        done(std::move(known));
    };
    std::erase_if(names, [this](const std::string& name) { return m_processes.contains(name); });
    if (names.empty()) {
        finish();
        return;
    }
    const auto pending = std::make_shared<std::size_t>(names.size());
    for (const std::string& name : names) {
        m_bus.call(busItself, "GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()),
                   "(u)", limit,
                   [this, name, pending, finish](BusOutcome outcome, GVariant* value) {
                       if (outcome == BusOutcome::answered) {
                           guint32 process = 0;
                           g_variant_get(value, "(u)", &process);
                           m_processes[name] = static_cast<ProcessID>(process);
                       }
                       if (--*pending == 0)
                           finish();
                   });
    }
}

void AtspiBus::documents(const std::string& name, Milliseconds limit, Documents done)
{
    const auto request = std::make_shared<DocumentsRequest>();
    request->name = name;
    request->deadline = Clock::now() + limit;
    request->done = std::move(done);
    const auto matches = [this, request](BusOutcome outcome, GVariant* value) {
        if (outcome != BusOutcome::answered) {
            request->finish(outcome == BusOutcome::silent ? DocumentAnswer::silent
                                                          : DocumentAnswer::unable);
            return;
        }
        auto found = objects(value, maximalDocuments);
        // An application reports only its own objects.
        std::erase_if(found, [&](const auto& object) { return object.first != request->name; });
        if (found.empty()) {
            request->finish(DocumentAnswer::none);
            return;
        }
        request->documents.resize(found.size());
        request->pending = 3 * found.size();
        for (std::size_t i = 0; i < found.size(); ++i)
            requestDocument(request, i, found[i].second);
    };
    m_bus.call({name, rootPath, "org.a11y.atspi.Collection"}, "GetMatches", documentRule(),
               "(a(so))", limit, matches);
}

void AtspiBus::requestDocument(const std::shared_ptr<DocumentsRequest>& request, std::size_t index,
                               const std::string& path)
{
    const auto into = [request, index](void (*take)(ShownDocument&, GVariant*)) {
        return [request, index, take](BusOutcome outcome, GVariant* value) {
            if (outcome == BusOutcome::answered)
                take(request->documents[index], value);
            request->isSilent = request->isSilent || outcome == BusOutcome::silent;
            if (--request->pending == 0)
                request->finish(request->isSilent ? DocumentAnswer::silent : DocumentAnswer::none);
        };
    };
    m_bus.call({request->name, path, "org.a11y.atspi.Document"}, "GetAttributes", nullptr,
               "(a{ss})", request->left(), into([](ShownDocument& document, GVariant* value) {
                   document.document = location(value);
               }));
    // Relative to the screen (0), not to the window.
    m_bus.call(
        {request->name, path, "org.a11y.atspi.Component"}, "GetExtents",
        g_variant_new("(u)", guint32{0}), "((iiii))", request->left(),
        into([](ShownDocument& document, GVariant* value) { document.extents = extents(value); }));
    m_bus.call({request->name, path, "org.freedesktop.DBus.Properties"}, "Get",
               g_variant_new("(ss)", accessible.c_str(), "Name"), "(v)", request->left(),
               into([](ShownDocument& document, GVariant* value) { document.name = name(value); }));
}

} // namespace kelpa
