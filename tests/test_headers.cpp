// This file stands for all test programs when their headers are compiled beforehand, once for each configuration.
#include <gtest/gtest.h>

TEST(Headers, AreThere)
{
    EXPECT_TRUE(testing::UnitTest::GetInstance()->current_test_info());
}
