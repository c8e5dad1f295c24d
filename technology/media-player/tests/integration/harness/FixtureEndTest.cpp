// The end of a fixture whose thread does not end. By a faster clock, as the fixture gives the thread half a
// minute.
#include <MPL_TestFixture.h>

#include <gtest/gtest.h>

namespace
{

class OneTest : public MPL::TestFixture
{
    void TestBody() override {}
};

TEST(FixtureEnd, SaysThatTheThreadDoesNotEndBeforeTheProgramDoes)
{
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(
        {
            OneTest test;
            QObject::connect(&test.m_Thread, &QThread::started, [] { QThread::sleep(10000); });
            test.m_Thread.start();
        },
        "m_Thread was asked to quit and still runs after 30 seconds");
}

} // namespace
