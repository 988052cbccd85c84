#include "store/StoreChanges.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace kelpa::test {
namespace {

using Update = StoreChanges::Update;

/// The fields that changed in one operation, in the order of their notification.
using Notified = std::vector<StoreField>;

class StoreChangesTest : public testing::Test
{
protected:
    std::vector<Notified> notified;
    /// Called the next time.
    std::function<void()> whenTold = [] {};
    StoreChanges changes{[this](const StoreChanges::Fields& fields) {
        Notified each;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (fields.test(i))
                each.push_back(static_cast<StoreField>(i));
        }
        notified.push_back(each);
        std::exchange(whenTold, [] {})();
    }};
};

TEST_F(StoreChangesTest, Notify_at_the_end_of_the_operation_once_each_in_the_order_of_the_fields)
{
    {
        const Update update(changes);
        changes.mark(StoreField::searchText);
        changes.mark(StoreField::windows);
        changes.mark(StoreField::searchText);
        EXPECT_TRUE(notified.empty());
    }
    EXPECT_EQ(notified, (std::vector<Notified>{{StoreField::windows, StoreField::searchText}}));
}

TEST_F(StoreChangesTest, Of_a_nested_operation_notify_at_the_end_of_the_outer_one)
{
    {
        const Update outer(changes);
        {
            const Update inner(changes);
            changes.mark(StoreField::goals);
        }
        EXPECT_TRUE(notified.empty());
        changes.mark(StoreField::language);
    }
    EXPECT_EQ(notified, (std::vector<Notified>{{StoreField::goals, StoreField::language}}));
}

TEST_F(StoreChangesTest, Notify_only_once)
{
    {
        const Update update(changes);
        changes.mark(StoreField::goals);
    }
    {
        const Update update(changes);
        changes.mark(StoreField::canUndo);
    }
    EXPECT_EQ(notified, (std::vector<Notified>{{StoreField::goals}, {StoreField::canUndo}}));
}

TEST_F(StoreChangesTest, Of_an_operation_begun_by_the_handler_notify_by_themselves)
{
    whenTold = [this] {
        const Update update(changes);
        changes.mark(StoreField::goals);
    };
    {
        const Update update(changes);
        changes.mark(StoreField::isHidingGoalsWithoutOpenTodos);
    }
    EXPECT_EQ(notified, (std::vector<Notified>{{StoreField::isHidingGoalsWithoutOpenTodos},
                                               {StoreField::goals}}));
}

} // namespace
} // namespace kelpa::test
