#include "platform/wayland/toplevels/ToplevelMatching.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using wayland::Toplevel;
using wayland::ToplevelID;
using Matches = std::map<ToplevelID, ToplevelID>;

Toplevel window(ToplevelID id, const char* title, const char* appID)
{
    Toplevel toplevel;
    toplevel.id = id;
    toplevel.title = QString::fromUtf8(title);
    toplevel.appID = QString::fromUtf8(appID);
    return toplevel;
}

TEST(ToplevelMatching, Concludes_only_what_is_certain)
{
    struct Row
    {
        const char* name;
        std::vector<Toplevel> acting;
        std::vector<Toplevel> identified;
        Matches known;
        Matches expected;
    };
    const std::vector<Row> rows{
        {"nothing", {}, {}, {}, {}},
        {"by title and application, in any order",
         {window(1, "a", "x"), window(2, "b", "x"), window(3, "a", "y")},
         {window(11, "a", "y"), window(12, "b", "x"), window(13, "a", "x")},
         {},
         {{1, 13}, {2, 12}, {3, 11}}},
        {"two alike here",
         {window(1, "a", "x"), window(2, "a", "x")},
         {window(11, "a", "x")},
         {},
         {}},
        {"two alike there",
         {window(1, "a", "x")},
         {window(11, "a", "x"), window(12, "a", "x")},
         {},
         {}},
        {"another application", {window(1, "a", "x")}, {window(11, "a", "y")}, {}, {}},
        {"an application that is left out",
         {window(1, "a", "x")},
         {window(11, "a", "")},
         {},
         {{1, 11}}},
        {"an application that is left out, and a title that another window has",
         {window(1, "a", "x"), window(2, "a", "y")},
         {window(11, "a", ""), window(12, "a", "y")},
         {},
         {}},
        {"an application that only the other list has",
         {window(1, "a", "")},
         {window(11, "a", "x")},
         {},
         {}},
        {"a known match whose titles have changed apart",
         {window(1, "new", "x")},
         {window(11, "old", "x")},
         {{1, 11}},
         {{1, 11}}},
        {"a known match leaves one of two alike",
         {window(1, "a", "x"), window(2, "a", "x")},
         {window(11, "a", "x"), window(12, "a", "x")},
         {{1, 12}},
         {{1, 12}, {2, 11}}},
        {"a known match whose window is gone",
         {window(1, "a", "x")},
         {window(12, "b", "x")},
         {{1, 11}, {2, 12}},
         {}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(matchedToplevels(row.acting, row.identified, row.known), row.expected)
            << row.name;
}

} // namespace
} // namespace kelpa::test
