// A suite as users have them, in as many equal cases as there may be shards: the whole stack is brought up,
// the test sources are launched and found, and all is handed back.
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>

namespace
{

class FixtureShards : public MPL::MediaSourceTestFixture, public testing::WithParamInterface<int>
{
};

TEST_P(FixtureShards, FindTheirSources)
{
    EXPECT_TRUE(MPL_TestEnvironment::LaunchTestMediaSourceProcess(true, 0, true, false));
}

INSTANTIATE_TEST_SUITE_P(Each, FixtureShards, testing::Range(0, 64));

} // namespace
