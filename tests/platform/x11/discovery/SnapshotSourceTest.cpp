#include "platform/x11/discovery/SnapshotSource.h"
#include "platform/DocumentSource.h"

#include <gtest/gtest.h>

using namespace kelpa;
using namespace kelpa::x11;

namespace {

class Resolver : public ApplicationResolver
{
public:
    ResolvedApplication resolve(const ApplicationClues& clues) override
    {
        ++calls;
        if (clues.wmClassName == QStringLiteral("Org.editor")) {
            return {QStringLiteral("org.example.Editor"), QStringLiteral("Editor")};
        }
        if (clues.wmClassName == QStringLiteral("Org.slides")) {
            return {QStringLiteral("org.example.Slides"), QStringLiteral("Slides")};
        }
        return {};
    }

    int calls = 0;
};

class Documents : public DocumentSource
{
public:
    std::optional<QString> document(const DocumentQuery& window) override
    {
        asked.push_back(window);
        return window.title == QStringLiteral("Report")
                   ? std::optional(QStringLiteral("file:///tmp/report.txt"))
                   : std::nullopt;
    }
    void noteWindows(std::vector<DocumentQuery> windows) override { noted = std::move(windows); }

    std::vector<DocumentQuery> asked;
    std::vector<DocumentQuery> noted;
};

ClientWindow client(WindowID number, ProcessID process, const QString& windowClass,
                    const QString& title)
{
    ClientWindow window;
    window.number = number;
    window.process = process;
    window.frame = {10, 20, 300, 200};
    window.title = title;
    window.clues.wmClassName = windowClass;
    window.clues.process = process;
    window.isViewable = true;
    return window;
}

} // namespace

TEST(SnapshotSource, Without_a_desktop_the_lists_are_absent)
{
    SnapshotSource source;
    EXPECT_EQ(source.windowList(WindowListScope::all).has_value(), false);
    EXPECT_EQ(source.windowList(WindowListScope::onScreen).has_value(), false);
    EXPECT_FALSE(source.isAccessibilityTrusted());
    EXPECT_FALSE(source.runningApplication(1).has_value());
    EXPECT_FALSE(source.accessibilityWindows(1).has_value());
}

TEST(SnapshotSource, An_application_has_the_name_and_the_id_of_its_desktop_entry)
{
    Resolver resolver;
    SnapshotSource source({client(1, 70, QStringLiteral("Org.editor"), QStringLiteral("Report"))},
                          {}, resolver, nullptr);
    EXPECT_EQ(source.windowList(WindowListScope::all)->front().ownerName, QStringLiteral("Editor"));
    EXPECT_EQ(source.runningApplication(70)->bundleIdentifier,
              QStringLiteral("org.example.Editor"));
}

TEST(SnapshotSource, An_unresolved_application_is_named_by_its_class)
{
    Resolver resolver;
    SnapshotSource source({client(1, 70, QStringLiteral("XTerm"), {})}, {}, resolver, nullptr);
    EXPECT_EQ(source.windowList(WindowListScope::all)->front().ownerName, QStringLiteral("XTerm"));
    EXPECT_EQ(source.runningApplication(70)->bundleIdentifier, std::nullopt);
}

TEST(SnapshotSource, A_window_without_class_is_named_by_its_process)
{
    Resolver resolver;
    SnapshotSource source({client(1, 1, {}, {})}, {}, resolver, nullptr);
    EXPECT_FALSE(source.windowList(WindowListScope::all)->front().ownerName->isEmpty());
    ClientWindow unknown = client(1, 1, {}, {});
    unknown.process.reset();
    SnapshotSource nameless({unknown}, {}, resolver, nullptr);
    EXPECT_EQ(nameless.windowList(WindowListScope::all)->front().ownerName, std::nullopt);
}

TEST(SnapshotSource, A_window_has_the_role_that_its_application_gives_it)
{
    Resolver resolver;
    ClientWindow log = client(1, 70, QStringLiteral("XTerm"), {});
    log.role = QStringLiteral("log");
    log.clues.wmClassInstance = QStringLiteral("log");
    SnapshotSource source({log, client(2, 70, QStringLiteral("XTerm"), {})}, {}, resolver, nullptr);
    EXPECT_EQ(source.windowList(WindowListScope::all)->at(0).role, QStringLiteral("log"));
    EXPECT_EQ(source.windowList(WindowListScope::all)->at(1).role, QString());
    EXPECT_EQ(source.windowList(WindowListScope::all)->at(0).instance, QStringLiteral("log"));
    EXPECT_EQ(source.windowList(WindowListScope::all)->at(0).windowClass, QStringLiteral("XTerm"));
}

TEST(SnapshotSource, Equal_clues_are_resolved_once)
{
    Resolver resolver;
    SnapshotSource source({client(1, 70, QStringLiteral("XTerm"), QStringLiteral("a")),
                           client(2, 70, QStringLiteral("XTerm"), QStringLiteral("b"))},
                          {}, resolver, nullptr);
    EXPECT_EQ(resolver.calls, 1);
    EXPECT_EQ(source.windowList(WindowListScope::all)->size(), 2U);
}

TEST(SnapshotSource, A_process_whose_windows_are_all_off_the_task_list_is_an_accessory)
{
    Resolver resolver;
    ClientWindow applet = client(1, 70, {}, {});
    applet.isOffTaskList = true;
    ClientWindow dock = client(2, 71, {}, {});
    dock.kind = WindowKind::dock;
    ClientWindow dockOfRegular = client(3, 72, {}, {});
    dockOfRegular.kind = WindowKind::dock;
    SnapshotSource source({applet, dock, dockOfRegular, client(4, 72, {}, {})}, {}, resolver,
                          nullptr);
    EXPECT_EQ(source.runningApplication(70)->activationPolicy, ActivationPolicy::accessory);
    EXPECT_EQ(source.runningApplication(71)->activationPolicy, ActivationPolicy::accessory);
    EXPECT_EQ(source.runningApplication(72)->activationPolicy, ActivationPolicy::regular);
    EXPECT_FALSE(source.runningApplication(73).has_value());
}

TEST(SnapshotSource, Every_element_bears_the_number_of_its_window)
{
    Resolver resolver;
    SnapshotSource source(
        {client(8, 70, {}, QStringLiteral("same")), client(9, 70, {}, QStringLiteral("same"))}, {},
        resolver, nullptr);
    const auto windows = source.accessibilityWindows(70);
    ASSERT_EQ(windows->size(), 2U);
    EXPECT_EQ(windows->at(0).windowNumber, 8U);
    EXPECT_EQ(windows->at(1).windowNumber, 9U);
    EXPECT_EQ(windows->at(1).title, QStringLiteral("same"));
    EXPECT_EQ(windows->at(1).position->x, 10);
    EXPECT_EQ(windows->at(1).size->height, 200);
    EXPECT_EQ(windows->at(1).isMinimized, false);
}

TEST(SnapshotSource, Documents_are_looked_up_and_the_windows_are_noted)
{
    Resolver resolver;
    Documents documents;
    ClientWindow dock = client(3, 71, {}, QStringLiteral("panel"));
    dock.kind = WindowKind::dock;
    SnapshotSource source({client(1, 70, {}, QStringLiteral("Report")), dock}, {}, resolver,
                          &documents);
    EXPECT_EQ(source.accessibilityWindows(70)->front().document,
              QStringLiteral("file:///tmp/report.txt"));
    EXPECT_EQ(documents.noted,
              (std::vector<DocumentQuery>{{70, {10, 20, 300, 200}, QStringLiteral("Report")}}));
}

TEST(SnapshotSource, The_on_screen_list_leaves_out_invisible_windows)
{
    Resolver resolver;
    ClientWindow hidden = client(2, 70, {}, {});
    hidden.isHidden = true;
    SnapshotSource source({client(1, 70, {}, {}), hidden}, {}, resolver, nullptr);
    const auto onScreen = source.windowList(WindowListScope::onScreen);
    ASSERT_EQ(onScreen->size(), 1U);
    EXPECT_EQ(onScreen->front().number, 1U);
    EXPECT_EQ(source.windowList(WindowListScope::all)->size(), 2U);
    EXPECT_EQ(source.accessibilityWindows(70)->at(1).isMinimized, true);
}

TEST(SnapshotSource, Everything_is_reported_in_points)
{
    Resolver resolver;
    Documents documents;
    DesktopContext context;
    context.pixelsPerPoint = 2;
    SnapshotSource source({client(1, 70, {}, QStringLiteral("Report"))}, context, resolver,
                          &documents);
    EXPECT_EQ(source.windowList(WindowListScope::all)->front().bounds, (Rect{5, 10, 150, 100}));
    const AccessibilityWindow element = source.accessibilityWindows(70)->front();
    EXPECT_EQ(element.position->x, 5);
    EXPECT_EQ(element.position->y, 10);
    EXPECT_EQ(element.size->width, 150);
    EXPECT_EQ(element.size->height, 100);
    const DocumentQuery query{70, {5, 10, 150, 100}, QStringLiteral("Report")};
    EXPECT_EQ(documents.asked, std::vector{query});
    EXPECT_EQ(documents.noted, std::vector{query});
}

TEST(SnapshotSource, Each_window_of_a_process_names_its_own_application)
{
    Resolver resolver;
    const ClientWindow text = client(1, 70, QStringLiteral("Org.editor"), QStringLiteral("Text"));
    const ClientWindow slides =
        client(2, 70, QStringLiteral("Org.slides"), QStringLiteral("Slides"));
    const ClientWindow options = client(3, 70, QStringLiteral("Org.other"), {});
    // Whichever is in front.
    for (const auto& clients :
         {std::vector{text, slides, options}, std::vector{options, slides, text}}) {
        SnapshotSource source(clients, {}, resolver, nullptr);
        std::map<WindowID, std::optional<QString>> applications;
        const auto list = source.windowList(WindowListScope::all);
        for (const WindowListEntry& entry : *list)
            applications[*entry.number] = entry.bundleIdentifier;
        EXPECT_EQ(applications[1], QStringLiteral("org.example.Editor"));
        EXPECT_EQ(applications[2], QStringLiteral("org.example.Slides"));
        EXPECT_EQ(applications[3], std::nullopt);
        EXPECT_EQ(source.runningApplication(70)->bundleIdentifier, std::nullopt);
    }
    // The icon of the editor would be wrong for a window that is none of its own.
    SnapshotSource source({text, options}, {}, resolver, nullptr);
    EXPECT_EQ(source.runningApplication(70)->bundleIdentifier, std::nullopt);
}
