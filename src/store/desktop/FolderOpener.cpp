#include "store/desktop/FolderOpener.h"

#include "platform/Workspace.h"

#include <QFileInfo>

#include <utility>

namespace kelpa {

namespace {

QUrl folderOf(const QString& file)
{
    return QUrl::fromLocalFile(QFileInfo(file).absolutePath());
}

} // namespace

FolderOpener::FolderOpener(Workspace& workspace, std::function<void()> found)
    : m_workspace(workspace), m_found(std::move(found))
{}

void FolderOpener::search(const QString& file)
{
    m_search = m_workspace.findOpener(folderOf(file), [this](bool isThere) {
        if (std::exchange(m_canOpen, isThere) != isThere)
            m_found();
    });
}

void FolderOpener::open(const QString& file)
{
    m_workspace.requestOpen(folderOf(file));
}

} // namespace kelpa
