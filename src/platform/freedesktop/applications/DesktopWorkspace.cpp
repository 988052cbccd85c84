#include "platform/freedesktop/applications/DesktopWorkspace.h"

#include "platform/freedesktop/applications/DetachedProcess.h"
#include "platform/freedesktop/applications/UrlHandlers.h"

#include <QDir>
#include <QFileInfo>
#include <QProcessEnvironment>
#include <QStandardPaths>

#include <utility>

namespace kelpa {

namespace {

/// The program that opens the URL; empty when there is none.
QString openerOf(const QUrl& url)
{
    const bool isHandled = url.isLocalFile() ? hasFileManager() : hasHandler(url.scheme());
    return isHandled ? QStandardPaths::findExecutable(QStringLiteral("xdg-open")) : QString();
}

/// A folder that is missing, as on a disk that is away, is represented by the nearest one above.
QUrl withExistingFolder(const QUrl& url)
{
    QString folder = url.toLocalFile();
    while (folder != QDir::rootPath() && !QFileInfo(folder).isDir())
        folder = QFileInfo(folder).path();
    return QUrl::fromLocalFile(folder);
}

void open(const QUrl& url)
{
    const QString opener = openerOf(url);
    const QUrl target = url.isLocalFile() ? withExistingFolder(url) : url;
    if (!opener.isEmpty())
        startDetached({opener, target.toString(QUrl::FullyEncoded)},
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
