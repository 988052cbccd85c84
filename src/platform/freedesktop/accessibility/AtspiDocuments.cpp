#include "platform/freedesktop/accessibility/AtspiDocuments.h"

#include "platform/LoggingCategories.h"
#include "platform/freedesktop/accessibility/AtspiBus.h"
#include "platform/freedesktop/accessibility/DocumentMatching.h"
#include "platform/freedesktop/bus/GlibPointers.h"
#include "platform/freedesktop/bus/SessionBus.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QMetaObject>
#include <QObject>

#include <gio/gio.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <map>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>

namespace kelpa {

namespace {

using Clock = std::chrono::steady_clock;

AtspiBusAddress busAddress(const AtspiDocumentsOptions& options)
{
    AtspiBusAddress result;
    if (options.busAddress) {
        result.address = options.busAddress->toStdString();
    } else if (options.sessionAddress) {
        result.sessionAddress = options.sessionAddress->toStdString();
    } else if (const QByteArray known = qgetenv("AT_SPI_BUS_ADDRESS"); !known.isEmpty()) {
        result.address = known.toStdString();
    } else {
        result.sessionAddress = sessionBusAddress().toStdString();
    }
    result.fallbackAddress = options.fallbackAddress.toStdString();
    return result;
}

using Documents = std::map<ProcessID, std::vector<WindowDocument>>;

/// The bus gives places on the screen in pixels.
std::vector<ShownDocument> documentsInPoints(std::vector<ShownDocument> documents,
                                             double pixelsPerPoint)
{
    for (ShownDocument& document : documents) {
        if (document.extents)
            document.extents = inPoints(*document.extents, pixelsPerPoint);
    }
    return documents;
}

} // namespace

class AtspiDocuments::Worker
{
public:
    Worker(std::function<void()> changed, AtspiDocumentsOptions options)
        : m_changed(std::move(changed)), m_options(std::move(options)),
          m_address(busAddress(m_options)), m_context(g_main_context_new()),
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

    std::optional<QString> document(const DocumentQuery& window)
    {
        const std::lock_guard lock(m_mutex);
        const auto known = m_documents.find(window.process);
        return known != m_documents.end() ? documentOf(window, known->second) : std::nullopt;
    }

    void setWindows(std::vector<DocumentQuery> windows)
    {
        const auto own = static_cast<ProcessID>(QCoreApplication::applicationPid());
        std::erase_if(windows, [own](const DocumentQuery& window) {
            return window.process == own || window.process <= 0;
        });
        {
            const std::lock_guard lock(m_mutex);
            m_newWindows = std::move(windows);
        }
        g_main_context_wakeup(m_context.get());
    }

private:
    void run(const std::stop_token& stop);
    void askWhenDue(AtspiBus& bus);
    void takeNewWindows();
    void requestApplications(AtspiBus& bus, const std::vector<ProcessID>& processes);
    void requestDocuments(AtspiBus& bus, const std::vector<ProcessID>& processes,
                          const AtspiBus::Names& names);
    void answered(ProcessID process, DocumentAnswer answer,
                  const std::vector<ShownDocument>& documents);

    const std::function<void()> m_changed;
    const AtspiDocumentsOptions m_options;
    const AtspiBusAddress m_address;
    /// Lives on the constructing thread and receives the change notifications; those that are still
    /// queued end with it.
    QObject m_receiver;

    std::mutex m_mutex;
    /// Absent once the worker thread has taken the list.
    std::optional<std::vector<DocumentQuery>> m_newWindows;
    Documents m_documents;

    // Used on the worker thread only.
    std::map<ProcessID, std::vector<DocumentQuery>> m_windows;
    DocumentSchedule m_schedule{m_options.intervals};
    std::size_t m_pendingRequests = 0;
    std::optional<Clock::time_point> m_connectNotBefore;

    const GlibPointer<GMainContext> m_context;
    std::jthread m_thread;
};

void AtspiDocuments::Worker::run(const std::stop_token& stop)
{
    g_main_context_push_thread_default(m_context.get());
    {
        AtspiBus bus(m_address);
        while (!stop.stop_requested()) {
            askWhenDue(bus);
            g_main_context_iteration(m_context.get(), TRUE);
        }
    }
    g_main_context_pop_thread_default(m_context.get());
}

void AtspiDocuments::Worker::takeNewWindows()
{
    std::vector<DocumentQuery> windows;
    const std::lock_guard lock(m_mutex);
    windows = std::move(*m_newWindows);
    m_newWindows.reset();
    m_schedule.note(windows);
    m_windows.clear();
    for (DocumentQuery& window : windows)
        m_windows[window.process].push_back(std::move(window));
    std::erase_if(m_documents,
                  [this](const auto& known) { return !m_windows.contains(known.first); });
}

/// Called between any two events; starts the next calls when there is a new list of windows and no
/// call is pending.
void AtspiDocuments::Worker::askWhenDue(AtspiBus& bus)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_pendingRequests > 0 || !m_newWindows)
            return;
    }
    takeNewWindows();
    const auto now = Clock::now();
    const std::vector<ProcessID> due = m_schedule.due(now);
    if (due.empty() || (m_connectNotBefore && now < *m_connectNotBefore))
        return;
    m_pendingRequests = 1;
    for (const ProcessID process : due)
        m_schedule.asked(process);
    if (bus.isConnected()) {
        requestApplications(bus, due);
        return;
    }
    bus.connect(m_options.connectLimit, [this, &bus, due](bool isConnected) {
        qCDebug(logAccessibility, "connection to the accessibility bus: %s",
                isConnected ? "open" : "failed");
        if (isConnected) {
            m_connectNotBefore.reset();
            requestApplications(bus, due);
            return;
        }
        m_connectNotBefore = Clock::now() + m_options.reconnectDelay;
        m_pendingRequests = 0;
    });
}

void AtspiDocuments::Worker::requestApplications(AtspiBus& bus,
                                                 const std::vector<ProcessID>& processes)
{
    bus.applications(m_options.applicationLimit,
                     [this, &bus, processes](const std::optional<AtspiBus::Names>& names) {
                         requestDocuments(bus, processes, names.value_or(AtspiBus::Names()));
                         --m_pendingRequests;
                     });
}

void AtspiDocuments::Worker::requestDocuments(AtspiBus& bus,
                                              const std::vector<ProcessID>& processes,
                                              const AtspiBus::Names& names)
{
    for (const ProcessID process : processes) {
        const auto [first, last] = names.equal_range(process);
        if (first == last) {
            m_schedule.answered(process, DocumentAnswer::absent, Clock::now());
            continue;
        }
        // A process with several connections is called on each; its replies are combined.
        struct Answers
        {
            std::size_t pending = 0;
            DocumentAnswer best = DocumentAnswer::silent;
            bool isSilent = false;
            std::vector<ShownDocument> documents;
        };
        const auto answers = std::make_shared<Answers>();
        answers->pending = static_cast<std::size_t>(std::distance(first, last));
        ++m_pendingRequests;
        for (auto name = first; name != last; ++name) {
            bus.documents(name->second, m_options.applicationLimit,
                          [this, process, answers](DocumentAnswer answer,
                                                   const std::vector<ShownDocument>& documents) {
                              answers->best = std::min(answers->best, answer);
                              answers->isSilent |= answer == DocumentAnswer::silent;
                              answers->documents.insert(answers->documents.end(), documents.begin(),
                                                        documents.end());
                              if (--answers->pending == 0) {
                                  --m_pendingRequests;
                                  answered(process,
                                           answers->isSilent ? DocumentAnswer::silent
                                                             : answers->best,
                                           answers->documents);
                              }
                          });
        }
    }
}

void AtspiDocuments::Worker::answered(ProcessID process, DocumentAnswer answer,
                                      const std::vector<ShownDocument>& documents)
{
    qCDebug(logAccessibility, "process %d %s, %zu documents", process,
            answer == DocumentAnswer::silent ? "is silent" : "answered", documents.size());
    m_schedule.answered(process, answer, Clock::now());
    const auto windows = m_windows.find(process);
    if (windows == m_windows.end())
        return;
    const auto documentsOf = [](const std::vector<WindowDocument>& known) {
        std::vector<std::optional<QString>> list;
        list.reserve(known.size());
        for (const WindowDocument& entry : known)
            list.push_back(entry.document);
        return list;
    };
    {
        const std::lock_guard lock(m_mutex);
        std::vector<WindowDocument>& known = m_documents[process];
        std::vector<WindowDocument> before;
        before.reserve(windows->second.size());
        for (const DocumentQuery& window : windows->second)
            before.push_back({window, documentOf(window, known)});
        known =
            matchDocuments(windows->second,
                           documentsInPoints(documents, m_options.scale->pixelsPerPoint()), known);
        if (documentsOf(known) == documentsOf(before))
            return;
    }
    if (m_changed)
        QMetaObject::invokeMethod(&m_receiver, m_changed, Qt::QueuedConnection);
}

AtspiDocuments::AtspiDocuments(std::function<void()> changed, AtspiDocumentsOptions options)
    : m_worker(std::make_unique<Worker>(std::move(changed), std::move(options)))
{}

AtspiDocuments::~AtspiDocuments() = default;

std::optional<QString> AtspiDocuments::document(const DocumentQuery& window)
{
    return m_worker->document(window);
}

void AtspiDocuments::noteWindows(std::vector<DocumentQuery> windows)
{
    m_worker->setWindows(std::move(windows));
}

} // namespace kelpa
