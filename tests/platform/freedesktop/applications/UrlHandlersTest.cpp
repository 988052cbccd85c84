// A program of its own: which applications there are is read from the environment once.

#include "platform/freedesktop/applications/UrlHandlers.h"

#include "platform/freedesktop/applications/TemporaryDataDirectory.h"

#include <gtest/gtest.h>

#include <QFile>

using namespace kelpa;

TEST(UrlHandlers, An_editor_of_web_pages_is_no_browser)
{
    const TemporaryDataDirectory data;
    data.writeEntry(QStringLiteral("editor"), "Editor", "MimeType=text/html;text/plain;");
    data.write(QStringLiteral("applications/mimeinfo.cache"),
               "[MIME Cache]\ntext/html=editor.desktop;\ntext/plain=editor.desktop;\n");
    data.write(QStringLiteral("mimeapps.list"),
               "[Default Applications]\ntext/html=editor.desktop\n");
    for (const char* name :
         {"XDG_DATA_HOME", "XDG_DATA_DIRS", "XDG_CONFIG_HOME", "XDG_CONFIG_DIRS"}) {
        qputenv(name, QFile::encodeName(data.path()));
    }
    EXPECT_EQ(defaultBrowser(), std::nullopt);
}
