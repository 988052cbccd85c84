#include "platform/freedesktop/accessibility/DocumentMatching.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

using namespace kelpa;

namespace {

const Rect left{0, 0, 800, 600};
const Rect right{800, 0, 800, 600};
const Rect leftPage{10, 90, 780, 500};
const Rect rightPage{810, 90, 780, 500};

DocumentQuery window(const Rect& frame, const char* title)
{
    return {4711, frame, QString::fromUtf8(title)};
}

ShownDocument shown(const char* document, const char* name, std::optional<Rect> extents)
{
    return {QString::fromUtf8(document), QString::fromUtf8(name), extents};
}

std::vector<QString> matched(const std::vector<DocumentQuery>& windows,
                             const std::vector<ShownDocument>& documents,
                             const std::vector<WindowDocument>& previous = {})
{
    std::vector<QString> texts;
    for (const WindowDocument& entry : matchDocuments(windows, documents, previous)) {
        texts.push_back(entry.document.value_or(QStringLiteral("-")));
    }
    return texts;
}

using Texts = std::vector<QString>;

} // namespace

TEST(DocumentMatching, A_document_belongs_to_the_window_around_it)
{
    EXPECT_EQ(matched({window(left, "One"), window(right, "Two")},
                      {shown("b", "", rightPage), shown("a", "", leftPage)}),
              (Texts{QStringLiteral("a"), QStringLiteral("b")}));
}

TEST(DocumentMatching, A_document_may_stick_out_by_eight_points_and_not_by_nine)
{
    EXPECT_EQ(matched({window(left, "One"), window(right, "Two")},
                      {shown("a", "", Rect{-8, -8, 816, 616})}),
              (Texts{QStringLiteral("a"), QStringLiteral("-")}));
    EXPECT_EQ(matched({window(left, "One"), window(right, "Two")},
                      {shown("a", "", Rect{-9, 0, 800, 600})}),
              (Texts{QStringLiteral("-"), QStringLiteral("-")}));
}

TEST(DocumentMatching, Of_two_maximised_windows_the_title_decides_whose_document_it_is)
{
    EXPECT_EQ(matched({window(left, "News - Browser"), window(left, "Mail - Browser")},
                      {shown("mail", "Mail", leftPage), shown("news", "News", leftPage)}),
              (Texts{QStringLiteral("news"), QStringLiteral("mail")}));
}

TEST(DocumentMatching, Of_two_alike_windows_neither_gets_a_document)
{
    EXPECT_EQ(matched({window(left, "News"), window(left, "News")},
                      {shown("a", "News", leftPage), shown("b", "News", leftPage)}),
              (Texts{QStringLiteral("-"), QStringLiteral("-")}));
}

TEST(DocumentMatching, Without_extents_the_name_in_the_title_decides)
{
    EXPECT_EQ(matched({window(left, "News - Browser"), window(right, "Mail - Browser")},
                      {shown("mail", "Mail", std::nullopt), shown("lost", "", std::nullopt)}),
              (Texts{QStringLiteral("-"), QStringLiteral("mail")}));
}

TEST(DocumentMatching, Without_extents_the_only_window_has_the_document)
{
    EXPECT_EQ(matched({window(left, "Renamed")}, {shown("a", "Name", std::nullopt)}),
              (Texts{QStringLiteral("a")}));
}

TEST(DocumentMatching, A_frame_within_a_page_does_not_replace_the_page)
{
    EXPECT_EQ(matched({window(left, "Page")}, {shown("page", "Page", leftPage),
                                               shown("frame", "Page", Rect{20, 100, 300, 200})}),
              (Texts{QStringLiteral("page")}));
    EXPECT_EQ(matched({window(left, "Page")}, {shown("frame", "Page", Rect{20, 100, 300, 200}),
                                               shown("page", "Page", leftPage)}),
              (Texts{QStringLiteral("page")}));
}

TEST(DocumentMatching, A_minimised_window_keeps_its_document_while_its_title_stays)
{
    const std::vector<WindowDocument> before{{window(left, "News"), QStringLiteral("news")}};
    EXPECT_EQ(matched({window(left, "News")}, {}, before), (Texts{QStringLiteral("news")}));
    EXPECT_EQ(matched({window(left, "Mail")}, {}, before), (Texts{QStringLiteral("-")}));
}

TEST(DocumentMatching, A_known_window_is_recognised_by_title_and_frame_then_by_either)
{
    const std::vector<WindowDocument> known{{window(left, "One"), QStringLiteral("a")},
                                            {window(right, "Two"), QStringLiteral("b")},
                                            {window(right, "Three"), std::nullopt}};
    EXPECT_EQ(documentOf(window(left, "One"), known), QStringLiteral("a"));
    EXPECT_EQ(documentOf(window(Rect{50, 50, 700, 500}, "Two"), known), QStringLiteral("b"));
    EXPECT_EQ(documentOf(window(Rect{0, 0, 808, 600}, "New title"), known), QStringLiteral("a"));
    EXPECT_EQ(documentOf(window(Rect{0, 0, 809, 600}, "New title"), known), std::nullopt);
    EXPECT_EQ(documentOf(window(right, "New title"), known), std::nullopt);
    EXPECT_EQ(documentOf(window(right, "Three"), known), std::nullopt);
    EXPECT_EQ(documentOf(window(left, "One"), {}), std::nullopt);
}

TEST(DocumentMatching, Alike_windows_with_different_documents_are_not_distinguished)
{
    const std::vector<WindowDocument> known{{window(left, "One"), QStringLiteral("a")},
                                            {window(left, "One"), QStringLiteral("b")}};
    EXPECT_EQ(documentOf(window(left, "One"), known), std::nullopt);
}
