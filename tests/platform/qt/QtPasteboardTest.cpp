#include "platform/qt/QtPasteboard.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>

namespace kelpa {

namespace {

TEST(QtPasteboard, The_clipboard_holds_the_text_that_was_set_last)
{
    QtPasteboard pasteboard;
    pasteboard.setText(QStringLiteral("first"));
    pasteboard.setText(QStringLiteral("Größe 目标 \U0001f600\nline two"));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Größe 目标 \U0001f600\nline two");
}

} // namespace

} // namespace kelpa
