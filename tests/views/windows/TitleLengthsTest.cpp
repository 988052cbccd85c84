// Which shorter forms the title of a window has.
#include "views/windows/TitleLengths.h"

#include <gtest/gtest.h>

#include <QStringList>

#include <initializer_list>

namespace kelpa {
namespace {

QStringList lengths(const char16_t* title)
{
    return titleLengths(QString::fromUtf16(title)).split(u'\u009c');
}

QStringList list(std::initializer_list<const char16_t*> texts)
{
    QStringList found;
    for (const char16_t* const text : texts)
        found.append(QString::fromUtf16(text));
    return found;
}

TEST(TitleLengths, A_title_that_begins_with_a_path_loses_its_first_folders)
{
    EXPECT_EQ(lengths(u"/home/anna/Documents/2026/Taxes/letter.txt - Mousepad"),
              list({u"/home/anna/Documents/2026/Taxes/letter.txt - Mousepad",
                    u"…/2026/Taxes/letter.txt - Mousepad", u"…/Taxes/letter.txt - Mousepad",
                    u"…/letter.txt - Mousepad"}));
    EXPECT_EQ(lengths(u"~/taxes/letter to the bank.txt"),
              list({u"~/taxes/letter to the bank.txt", u"…/letter to the bank.txt"}));
    EXPECT_EQ(lengths(u"~anna/taxes/"), list({u"~anna/taxes/", u"…/taxes/"}));
}

TEST(TitleLengths, What_is_before_the_path_stays)
{
    EXPECT_EQ(lengths(u"*~/taxes/a.txt - Mousepad"),
              list({u"*~/taxes/a.txt - Mousepad", u"*…/a.txt - Mousepad"}));
    EXPECT_EQ(lengths(u"anna@host: /usr/share/doc"),
              list({u"anna@host: /usr/share/doc", u"anna@host: …/share/doc", u"anna@host: …/doc",
                    u"…/doc"}));
    EXPECT_EQ(lengths(u"anna@host:~/code/kelpa"),
              list({u"anna@host:~/code/kelpa", u"anna@host:…/kelpa", u"…/kelpa"}));
    EXPECT_EQ(lengths(u"anna@host: ~/taxes"), list({u"anna@host: ~/taxes", u"…/taxes"}));
    EXPECT_EQ(lengths(u"anna@host: /etc"), list({u"anna@host: /etc"}));
}

TEST(TitleLengths, A_slash_after_the_path_is_none_of_its_own)
{
    EXPECT_EQ(lengths(u"/srv/a.txt – Read/Write"),
              list({u"/srv/a.txt – Read/Write", u"…/a.txt – Read/Write"}));
    EXPECT_EQ(lengths(u"/srv/a.txt (/mnt/b)"), list({u"/srv/a.txt (/mnt/b)", u"…/a.txt (/mnt/b)"}));
}

TEST(TitleLengths, What_a_shell_runs_is_behind_the_path)
{
    EXPECT_EQ(
        lengths(u"anna@host:/home/anna/code: vim a/b.txt"),
        list({u"anna@host:/home/anna/code: vim a/b.txt", u"anna@host:…/anna/code: vim a/b.txt",
              u"anna@host:…/code: vim a/b.txt", u"…/code: vim a/b.txt"}));
    EXPECT_EQ(lengths(u"~/taxes/2026: less b/c/d.txt"),
              list({u"~/taxes/2026: less b/c/d.txt", u"…/2026: less b/c/d.txt"}));
}

TEST(TitleLengths, A_folder_may_look_like_the_end_of_the_path)
{
    EXPECT_EQ(lengths(u"/srv/Taxes (2026)/letter.txt - Mousepad"),
              list({u"/srv/Taxes (2026)/letter.txt - Mousepad",
                    u"…/Taxes (2026)/letter.txt - Mousepad", u"…/letter.txt - Mousepad"}));
    EXPECT_EQ(lengths(u"/srv/Taxes [old]/letter.txt"),
              list({u"/srv/Taxes [old]/letter.txt", u"…/Taxes [old]/letter.txt", u"…/letter.txt"}));
    EXPECT_EQ(lengths(u"/srv/Taxes - 2026/letter.txt - Mousepad"),
              list({u"/srv/Taxes - 2026/letter.txt - Mousepad",
                    u"…/Taxes - 2026/letter.txt - Mousepad", u"…/letter.txt - Mousepad"}));
    EXPECT_EQ(lengths(u"/srv/a.txt (~/mnt/b) - Editor"),
              list({u"/srv/a.txt (~/mnt/b) - Editor", u"…/a.txt (~/mnt/b) - Editor"}));
    EXPECT_EQ(lengths(u"/srv/a.txt (changed) - Read/Write"),
              list({u"/srv/a.txt (changed) - Read/Write", u"…/a.txt (changed) - Read/Write"}));
}

TEST(TitleLengths, Any_other_title_has_one_length)
{
    for (const char16_t* const title :
         {u"", u"/", u"/etc", u"~/a", u"Letter to the bank – Writer", u"Yes/No/Perhaps",
          u"a.txt (~/taxes/2026) - Editor", u"https://example.org/a/b", u"mail@example.org: a/b/c",
          u"–– 1/2/3", u"[anna@host:~/code/kelpa]$ ls"})
        EXPECT_EQ(lengths(title), list({title}));
}

} // namespace
} // namespace kelpa
