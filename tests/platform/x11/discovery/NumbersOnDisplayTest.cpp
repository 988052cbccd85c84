#include "support/desktop/X11Desktop.h"

#include <gtest/gtest.h>

#include <set>

using namespace kelpa;
using namespace kelpa::test;

namespace {

constexpr const char* tag = "_KELPA_WINDOW_NUMBER";

class NumbersOnDisplay : public ::testing::Test
{
protected:
    xcb_window_t openListed(TestClient& of, const char* title)
    {
        const xcb_window_t id = of.open({100, 100, 300, 200, title, {}});
        EXPECT_TRUE(waitUntil([&] { return client.isListed(id); }));
        return id;
    }

    std::optional<WindowID> number(const char* title)
    {
        const auto entry = entryNamed(runDiscoveryPass(*server), QString::fromUtf8(title));
        return entry ? entry->number : std::nullopt;
    }

    /// Hands the owners that one server records to the next one.
    class Owners : public OwnerStorage
    {
    public:
        explicit Owners(X11Surroundings& surroundings) : m_surroundings(surroundings) {}
        void save(const RecordedOwners& owners) override { m_surroundings.recordedOwners = owners; }

    private:
        X11Surroundings& m_surroundings;
    };

    XServer xServer;
    WindowManager manager{xServer.display()};
    X11Surroundings surroundings;
    std::unique_ptr<x11::X11WindowServer> server = surroundings.makeServer(xServer.display());
    TestClient client{xServer.display()};
};

} // namespace

TEST_F(NumbersOnDisplay, The_number_is_kept_with_the_window_and_covered_by_the_counter)
{
    const xcb_window_t window = openListed(client, "a");
    EXPECT_EQ(number("a"), 1U);
    ASSERT_TRUE(waitUntil([&] { return client.word(window, tag) == 1U; }));
    EXPECT_EQ(client.word(client.root(), "_KELPA_NUMBER_COUNTER"), 1U);
    EXPECT_EQ(server->clientWindow(1), window);
    EXPECT_EQ(server->clientWindow(2), std::nullopt);
    EXPECT_EQ(surroundings.reservation.mark, 256U);
}

TEST_F(NumbersOnDisplay, Numbers_survive_a_restart_and_new_ones_start_above_the_high_water_mark)
{
    openListed(client, "a");
    openListed(client, "b");
    const auto a = number("a");
    const auto b = number("b");
    server.reset();
    server = surroundings.makeServer(xServer.display());
    openListed(client, "c");
    EXPECT_EQ(number("a"), a);
    EXPECT_EQ(number("b"), b);
    EXPECT_EQ(number("c"), 257U);
}

TEST_F(NumbersOnDisplay, Numbers_survive_a_connection_that_was_cut)
{
    openListed(client, "a");
    const auto a = number("a");
    const auto owner = xcb_get_selection_owner(client.connection(), client.atom("_KELPA_NUMBERS"));
    const std::unique_ptr<xcb_get_selection_owner_reply_t, x11::XcbFree> reply(
        xcb_get_selection_owner_reply(client.connection(), owner, nullptr));
    ASSERT_TRUE(reply);
    xcb_kill_client(client.connection(), reply->owner);
    client.sync();
    // The first pass may run while the connection is being cut.
    ASSERT_TRUE(waitUntil([&] { return number("a").has_value(); }));
    EXPECT_EQ(number("a"), a);
}

TEST_F(NumbersOnDisplay, Numbers_survive_minimizing_and_a_new_window_manager)
{
    const xcb_window_t window = openListed(client, "a");
    const auto a = number("a");
    client.minimize(window);
    ASSERT_TRUE(
        waitUntil([&] { return runDiscoveryPass(*server, WindowListScope::onScreen).empty(); }));
    EXPECT_EQ(number("a"), a);
    manager.kill();
    const WindowManager second(xServer.display());
    ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
    EXPECT_EQ(number("a"), a);
}

TEST_F(NumbersOnDisplay, A_window_under_a_reused_id_gets_a_new_number)
{
    std::optional<TestClient> terminal(xServer.display());
    const xcb_window_t first = openListed(*terminal, "first");
    const auto firstNumber = number("first");
    ASSERT_TRUE(firstNumber.has_value());

    // The server gives the slot of a client that left to one that comes.
    terminal.reset();
    ASSERT_TRUE(waitUntil([&] { return !client.isListed(first); }));
    std::vector<TestClient> tries;
    xcb_window_t second = XCB_WINDOW_NONE;
    for (int count = 0; count < 300 && second != first; ++count) {
        tries.emplace_back(xServer.display());
        second = tries.back().create({100, 100, 300, 200, "second", {}});
        if (second != first) {
            tries.back().destroy(second);
        }
    }
    ASSERT_EQ(second, first);
    // Even with the tag of the dead one, which a client that restores properties may set.
    tries.back().setCardinals(second, tag, {*firstNumber});
    tries.back().map(second);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(second); }));
    const auto secondNumber = number("second");
    ASSERT_TRUE(secondNumber.has_value());
    EXPECT_NE(secondNumber, firstNumber);
}

TEST_F(NumbersOnDisplay, Twelve_terminals_in_a_row_get_twelve_numbers)
{
    std::set<WindowID> numbers;
    for (int count = 0; count < 12; ++count) {
        TestClient terminal(xServer.display());
        const xcb_window_t window = openListed(terminal, "terminal");
        numbers.insert(number("terminal").value_or(0));
        terminal.destroy(window);
        ASSERT_TRUE(waitUntil([&] { return !client.isListed(window); }));
    }
    EXPECT_EQ(numbers.size(), 12U);
    EXPECT_FALSE(numbers.contains(0));
}

TEST_F(NumbersOnDisplay, A_forged_tag_is_noticed_and_corrected)
{
    const xcb_window_t a = openListed(client, "a");
    const xcb_window_t b = openListed(client, "b");
    const auto numberOfA = number("a");
    const auto numberOfB = number("b");
    for (const std::uint32_t forged : {*numberOfA, 0U, 77U, 4294967295U}) {
        client.setCardinals(b, tag, {forged});
        EXPECT_EQ(number("a"), numberOfA);
        EXPECT_EQ(number("b"), numberOfB);
        EXPECT_TRUE(waitUntil([&] { return client.word(b, tag) == numberOfB; }));
    }
    EXPECT_EQ(client.word(a, tag), numberOfA);
}

TEST_F(NumbersOnDisplay, A_new_window_that_comes_with_a_forged_tag_is_renumbered)
{
    openListed(client, "a");
    const auto numberOfA = number("a");
    for (const std::uint32_t forged : {*numberOfA, 0U, 200U, 4294967295U}) {
        const xcb_window_t window = client.create({100, 100, 300, 200, "forger", {}});
        client.setCardinals(window, tag, {forged});
        client.map(window);
        ASSERT_TRUE(waitUntil([&] { return client.isListed(window); }));
        const auto renumbered = number("forger");
        ASSERT_TRUE(renumbered.has_value());
        EXPECT_NE(renumbered, forged);
        EXPECT_EQ(number("a"), numberOfA);
        client.destroy(window);
        ASSERT_TRUE(waitUntil([&] { return !client.isListed(window); }));
    }
}

TEST_F(NumbersOnDisplay, The_number_of_a_window_whose_owner_has_gone_meanwhile_is_not_believed)
{
    Owners owners(surroundings);
    surroundings.owners = &owners;
    server.reset();
    server = surroundings.makeServer(xServer.display());
    std::optional<TestClient> owner(xServer.display());
    const xcb_window_t window = openListed(*owner, "owned");
    openListed(client, "other");
    const auto ofOwner = number("owned");
    const auto ofOther = number("other");
    ASSERT_TRUE(ofOwner && ofOther);

    server.reset();
    owner.reset();
    ASSERT_TRUE(waitUntil([&] { return !client.isListed(window); }));
    const xcb_window_t forger = client.create({100, 100, 300, 200, "forger", {}});
    client.setCardinals(forger, tag, {*ofOwner});
    client.map(forger);
    ASSERT_TRUE(waitUntil([&] { return client.isListed(forger); }));

    surroundings.taken = {*ofOwner, *ofOther};
    server = surroundings.makeServer(xServer.display());
    EXPECT_EQ(number("other"), ofOther);
    const auto renumbered = number("forger");
    ASSERT_TRUE(renumbered);
    EXPECT_NE(renumbered, ofOwner);
    EXPECT_EQ(client.word(forger, tag), renumbered);
}

TEST_F(NumbersOnDisplay, A_forged_counter_does_not_use_up_the_numbers)
{
    client.setCardinals(client.root(), "_KELPA_NUMBER_COUNTER", {4294967295U});
    openListed(client, "a");
    EXPECT_EQ(number("a"), 1U);
    EXPECT_TRUE(
        waitUntil([&] { return client.word(client.root(), "_KELPA_NUMBER_COUNTER") == 1U; }));
}

TEST_F(NumbersOnDisplay, A_second_program_reads_the_numbers_and_takes_over_when_the_first_ends)
{
    openListed(client, "a");
    const auto numberOfA = number("a");
    X11Surroundings others;
    const auto second = others.makeServer(xServer.display());
    const xcb_window_t b = openListed(client, "b");
    std::vector<WindowListEntry> list = runDiscoveryPass(*second);
    EXPECT_EQ(entryNamed(list, QStringLiteral("a"))->number, numberOfA);
    EXPECT_EQ(entryNamed(list, QStringLiteral("b"))->number, std::nullopt);
    EXPECT_EQ(client.word(b, tag), std::nullopt);
    EXPECT_GE(others.reservation.mark, *numberOfA);

    server.reset();
    ASSERT_TRUE(waitUntil([&] {
        list = runDiscoveryPass(*second);
        return entryNamed(list, QStringLiteral("b"))->number.has_value();
    }));
    EXPECT_EQ(entryNamed(list, QStringLiteral("a"))->number, numberOfA);
    EXPECT_NE(entryNamed(list, QStringLiteral("b"))->number, numberOfA);
}
