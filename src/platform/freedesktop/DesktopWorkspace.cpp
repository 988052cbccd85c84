#include "platform/freedesktop/DesktopWorkspace.h"

#include "platform/freedesktop/DetachedProcess.h"
#include "platform/freedesktop/UrlHandlers.h"

#include <QProcessEnvironment>
#include <QStandardPaths>

namespace kelpa {

namespace {

void open(const QUrl& url)
{
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!opener.isEmpty() && hasHandler(url.scheme())) {
        startDetached({opener, url.toString(QUrl::FullyEncoded)},
                      QProcessEnvironment::systemEnvironment());
    }
}

/// For background work of which only the effect matters.
struct Done
{};

} // namespace

void DesktopWorkspace::requestOpen(const QUrl& url)
{
    const std::uint64_t task = m_next++;
    m_tasks[task] = m_scheduler.inBackground(
        [url](const std::stop_token&) {
            open(url);
            return Done{};
        },
        [this, task](Done) { m_tasks.erase(task); });
}

} // namespace kelpa
