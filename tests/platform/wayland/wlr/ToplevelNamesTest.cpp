#include "platform/wayland/wlr/ToplevelNames.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using wayland::Toplevel;
using wayland::ToplevelNames;

using NameList = std::vector<QByteArray>;

Toplevel toplevel(wayland::ToplevelID id, const QByteArray& identifier = {})
{
    Toplevel window;
    window.id = id;
    window.identifier = identifier;
    return window;
}

TEST(ToplevelNames, Are_the_compositors_where_it_has_any)
{
    ToplevelNames names("kelpa ");
    EXPECT_EQ(names.of({toplevel(1, "abc"), toplevel(2)}), (NameList{"id abc", "kelpa 2"}));
}

TEST(ToplevelNames, A_window_has_its_identifier_once_that_was_certain)
{
    ToplevelNames names("kelpa ");
    EXPECT_EQ(names.of({toplevel(1)}), NameList{"kelpa 1"});
    EXPECT_TRUE(names.replaced().empty());
    EXPECT_EQ(names.of({toplevel(1, "abc"), toplevel(2, "def")}), (NameList{"id abc", "id def"}));
    EXPECT_EQ(names.replaced(), (std::map<QByteArray, QByteArray>{{"kelpa 1", "id abc"}}));
    EXPECT_EQ(names.of({toplevel(1)}), NameList{"id abc"});
    EXPECT_TRUE(names.replaced().empty());
}

TEST(ToplevelNames, A_made_up_name_is_never_the_compositors)
{
    ToplevelNames names("kelpa ");
    EXPECT_EQ(names.of({toplevel(1), toplevel(2, "kelpa 1")}), (NameList{"kelpa 1", "id kelpa 1"}));
}

} // namespace
} // namespace kelpa::test
