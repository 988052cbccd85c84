#include "model/WindowMemoryJson.h"

#include <gtest/gtest.h>

namespace kelpa {

namespace {

const RememberedWindow report{4127,
                              {QStringLiteral("org.example.Writer"), QStringLiteral("Writer"),
                               QStringLiteral("main"), QStringLiteral("10a1b2"),
                               QStringLiteral("/home/ada/\"report\".odt"),
                               QStringLiteral("Bericht 報告"), QStringLiteral("writer")},
                              {true, false, true},
                              Date{785'000'000.5}};

QByteArray document(const QByteArray& windows, const QByteArray& begin = R"({"version":1)")
{
    return begin + R"(,"newestWindow":5000,"windows":[)" + windows + "]}";
}

std::optional<RememberedWindow> decodedWindow(const QByteArray& members)
{
    const auto windows = decodeRememberedWindows(document("{" + members + "}"));
    return windows && windows->windows.size() == 1 ? std::optional(windows->windows.first())
                                                   : std::nullopt;
}

TEST(WindowMemoryJson, What_is_written_is_read_back)
{
    RememberedWindow bare;
    bare.windowID = 7;
    const RememberedWindows windows{5000, {bare, report}};
    EXPECT_EQ(decodeRememberedWindows(encodeRememberedWindows(windows)), windows);
    EXPECT_EQ(decodeRememberedWindows(encodeRememberedWindows({})), RememberedWindows());
}

TEST(WindowMemoryJson, Has_one_form)
{
    EXPECT_EQ(
        encodeRememberedWindows({5000, {report}}),
        QByteArray(
            R"({"version":1,"newestWindow":5000,"windows":[{"window":4127,)"
            R"("seenAt":785000000.5,"application":"org.example.Writer",)"
            R"("applicationName":"Writer","role":"main","instance":"writer","sessionID":"10a1b2",)"
            R"("document":"/home/ada/\"report\".odt","title":"Bericht 報告",)"
            R"("isSessionShared":true,"isTitleShared":true)") +
            QByteArray(209, ' ') + "}]}");
}

TEST(WindowMemoryJson, A_window_that_changes_leaves_the_others_where_they_are)
{
    RememberedWindow other = report;
    other.windowID = 4128;
    RememberedWindow changed = report;
    changed.traits.title = QStringLiteral("The third chapter of the annual report");
    const QByteArray before = encodeRememberedWindows({999, {report, other, other}});
    const QByteArray after = encodeRememberedWindows({1000, {changed, other, other}});
    ASSERT_EQ(before.size(), after.size());
    const qsizetype second = before.indexOf("{\"window\":4128");
    EXPECT_EQ(before.mid(second), after.mid(second));
    EXPECT_NE(before, after);
}

TEST(WindowMemoryJson, Unknown_members_are_ignored_and_null_counts_as_absent)
{
    RememberedWindow expected;
    expected.windowID = 7;
    expected.seenAt = {12};
    EXPECT_EQ(decodedWindow(R"("seenAt":12,"colour":[1],"window":7.0,"title":null,"role":null)"),
              expected);
}

TEST(WindowMemoryJson, Two_entries_for_one_window_are_read)
{
    const auto windows =
        decodeRememberedWindows(document(R"({"window":7,"seenAt":1},{"window":7,"seenAt":2})"));
    ASSERT_TRUE(windows);
    EXPECT_EQ(windows->windows.size(), 2);
}

TEST(WindowMemoryJson, One_invalid_record_fails_the_whole_document)
{
    for (const char* record :
         {"7", "[]", "{}", R"({"window":7})", R"({"seenAt":1})", R"({"window":-1,"seenAt":1})",
          R"({"window":1.5,"seenAt":1})", R"({"window":4294967295,"seenAt":1})",
          R"({"window":"7","seenAt":1})", R"({"window":7,"seenAt":"now"})",
          R"({"window":7,"seenAt":1,"title":8})", R"({"window":7,"seenAt":1,"title":"\ud800"})",
          R"({"window":7,"seenAt":1,"isTitleShared":1})"}) {
        EXPECT_EQ(
            decodeRememberedWindows(document(QByteArray(R"({"window":1,"seenAt":1},)") + record)),
            std::nullopt)
            << record;
    }
}

TEST(WindowMemoryJson, Another_version_and_another_shape_are_refused)
{
    const QByteArray window = R"({"window":1,"seenAt":1})";
    EXPECT_TRUE(decodeRememberedWindows(document(window)));
    EXPECT_FALSE(decodeRememberedWindows(document(window, R"({"version":2)")));
    EXPECT_FALSE(decodeRememberedWindows(document(window, R"({"colour":2)")));
    for (const char* json : {"", "null", "[]", "{}", R"({"version":1})",
                             R"({"version":1,"newestWindow":4294967295,"windows":[]})",
                             R"({"version":1,"newestWindow":1,"windows":{}})",
                             R"({"version":1,"newestWindow":1,"windows":[]}x)"})
        EXPECT_FALSE(decodeRememberedWindows(json)) << json;
}

TEST(WindowMemoryJson, A_document_of_ten_megabytes_is_refused_and_a_full_memory_is_not)
{
    const QByteArray window = R"({"window":1,"seenAt":1},)";
    QByteArray many = window.repeated(static_cast<qsizetype>((10 << 20) / window.size()));
    many.chop(1);
    EXPECT_FALSE(decodeRememberedWindows(document(many)));

    const QString name(200, u'語');
    RememberedWindows full;
    for (WindowID id = 0; id < 1000; ++id) {
        full.windows.append(
            {id,
             {name, name, name, name, QString(1000, u'語'), QString(300, u'語'), name},
             {true, true, true},
             Date{0.1}});
    }
    EXPECT_EQ(decodeRememberedWindows(encodeRememberedWindows(full)), full);
}

} // namespace
} // namespace kelpa
