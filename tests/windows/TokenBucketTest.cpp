#include "windows/TokenBucket.h"

#include <gtest/gtest.h>

namespace kelpa {
namespace {

using namespace std::chrono_literals;

class TokenBucketTest : public testing::Test
{
protected:
    int takeAll()
    {
        int count = 0;
        while (bucket.take(now))
            ++count;
        return count;
    }

    TokenBucket bucket{3, 100ms};
    TokenBucket::Time now{7h};
};

TEST_F(TokenBucketTest, Is_full_at_first)
{
    EXPECT_EQ(bucket.available(now), 3);
    EXPECT_EQ(takeAll(), 3);
    EXPECT_EQ(bucket.available(now), 0);
}

TEST_F(TokenBucketTest, Gets_a_token_back_in_each_interval)
{
    takeAll();
    now += 99ms;
    EXPECT_EQ(takeAll(), 0);
    now += 1ms;
    EXPECT_EQ(takeAll(), 1);
    now += 150ms;
    EXPECT_EQ(takeAll(), 1);
    now += 50ms;
    EXPECT_EQ(takeAll(), 1) << "what is left of an interval counts";
}

TEST_F(TokenBucketTest, Holds_no_more_than_its_capacity)
{
    takeAll();
    now += 24h;
    EXPECT_EQ(bucket.available(now), 3);
    EXPECT_EQ(takeAll(), 3);
    now += 99ms;
    EXPECT_EQ(takeAll(), 0);
}

} // namespace
} // namespace kelpa
