#include "platform/freedesktop/applications/DesktopWorkspace.h"

#include "platform/freedesktop/applications/DetachedProcess.h"
#include "platform/freedesktop/applications/UrlHandlers.h"

#include <QProcessEnvironment>
#include <QStandardPaths>

#include <utility>

namespace kelpa {

namespace {

/// The program that opens the URL; empty when there is none.
QString openerOf(const QUrl& url)
{
    return hasHandler(url.scheme()) ? QStandardPaths::findExecutable(QStringLiteral("xdg-open"))
                                    : QString();
}

void open(const QUrl& url)
{
    const QString opener = openerOf(url);
    if (!opener.isEmpty())
        startDetached({opener, url.toString(QUrl::FullyEncoded)},
                      QProcessEnvironment::systemEnvironment());
}

} // namespace

TaskHandle DesktopWorkspace::findOpener(const QUrl& url, std::function<void(bool isThere)> found)
{
    return m_scheduler.inBackground(
        [url](const std::stop_token&) { return !openerOf(url).isEmpty(); }, std::move(found));
}

void DesktopWorkspace::requestOpen(const QUrl& url)
{
    m_tasks.inBackground(
        [url](const std::stop_token&) {
            open(url);
            return Done{};
        },
        [](Done) {});
}

} // namespace kelpa
