#include "platform/freedesktop/applications/DesktopWorkspace.h"

#include "platform/freedesktop/applications/DetachedProcess.h"
#include "platform/freedesktop/applications/UrlHandlers.h"

#include <QProcessEnvironment>
#include <QStandardPaths>

namespace kelpa {

namespace {

void open(const QUrl& url)
{
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!opener.isEmpty() && hasHandler(url.scheme()))
        startDetached({opener, url.toString(QUrl::FullyEncoded)},
                      QProcessEnvironment::systemEnvironment());
}

} // namespace

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
