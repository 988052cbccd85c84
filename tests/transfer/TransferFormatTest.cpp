// The names of the formats, and telling them apart.
#include "transfer/TransferFormat.h"

#include <gtest/gtest.h>

namespace kelpa::test {
namespace {

using enum TransferFormat;

TEST(TransferFormat, Has_a_name_that_reads_back)
{
    for (const TransferFormat format : allTransferFormats) {
        EXPECT_EQ(transferFormatFromRawValue(rawValue(format)), format);
        EXPECT_EQ(transferFormatFromRawValue(rawValue(format).toUpper()), format);
        EXPECT_EQ(formatOfFileName(suggestedFileName(format)), format);
    }
    EXPECT_EQ(transferFormatFromRawValue(u"word"), std::nullopt);
    EXPECT_EQ(transferFormatFromRawValue(u""), std::nullopt);
}

TEST(TransferFormat, Suggests_names_that_every_disk_takes)
{
    EXPECT_EQ(suggestedFileName(markdown), u"Kelpa.md");
    EXPECT_EQ(suggestedFileName(todoTxt, QStringLiteral("Taxes 2026")), u"Taxes 2026.txt");
    EXPECT_EQ(suggestedFileName(json, QStringLiteral("../a/b: \"c\"?\n")), u"a b c.json");
    EXPECT_EQ(suggestedFileName(json, QStringLiteral("...")), u"Kelpa.json");
    EXPECT_EQ(suggestedFileName(iCalendar, QString(500, u'a')),
              QString(60, u'a') + QStringLiteral(".ics"));
}

struct Row
{
    const char* name;
    const char* bytes;
    std::optional<TransferFormat> format;
};

class FormatRecognition : public testing::TestWithParam<Row>
{};

TEST_P(FormatRecognition, Knows)
{
    EXPECT_EQ(recognizedFormat(QString::fromUtf8(GetParam().name), GetParam().bytes),
              GetParam().format);
}

INSTANTIATE_TEST_SUITE_P(
    Files, FormatRecognition,
    testing::Values(Row{"a.ics", "", iCalendar}, Row{"a.txt", "begin:vcalendar\n", iCalendar},
                    Row{"A.MD", "", markdown}, Row{"a.markdown", "x", markdown},
                    Row{"a.json", "", json}, Row{"a", "{\"format\":\"kelpa-board\"}", json},
                    Row{"a", "{\"format\":\"other\"}", std::nullopt},
                    Row{"a.txt", "Buy milk\n", todoTxt},
                    Row{"notes.txt", "# Home\n\n- a\n", markdown},
                    Row{"notes.txt", "words\n* a\n", markdown}, Row{"todo.txt", "- a\n", todoTxt},
                    Row{"/home/me/done.txt", "x a\n- b\n", todoTxt},
                    Row{"a.png", "\x89PNG", std::nullopt}, Row{"a", "\n\n- [ ] a\n", markdown}));

} // namespace
} // namespace kelpa::test
