#include "platform/freedesktop/applications/UrlHandlers.h"

#include "platform/freedesktop/applications/DesktopEntryFile.h"
#include "platform/freedesktop/bus/GlibPointers.h"

namespace kelpa {

namespace {

using Application = GObjectPointer<GAppInfo>;

} // namespace

bool hasHandler(const QString& scheme)
{
    return !scheme.isEmpty() &&
           Application(g_app_info_get_default_for_uri_scheme(scheme.toUtf8().constData())) !=
               nullptr;
}

bool hasFileManager()
{
    return Application(g_app_info_get_default_for_type("inode/directory", FALSE)) != nullptr;
}

std::optional<QString> defaultBrowser()
{
    // By URL scheme, not by file type: the default application for HTML files may be an editor.
    Application browser(g_app_info_get_default_for_uri_scheme("https"));
    if (!browser)
        browser.reset(g_app_info_get_default_for_uri_scheme("http"));
    const char* id = browser ? g_app_info_get_id(browser.get()) : nullptr;
    if (id == nullptr)
        return std::nullopt;
    const QString name = QString::fromUtf8(id);
    return entryIDOfFile(name).value_or(name);
}

} // namespace kelpa
