// A googletest program whose cases end in every way a case can end.
#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

TEST(Subject, Passes) {}

TEST(Subject, Fails)
{
    EXPECT_EQ(1 + 1, 3) << "<&\"\x01\xff>";
}

TEST(Subject, IsSkipped)
{
    GTEST_SKIP() << "no part of the machine";
}

// As a service does that prints what it likes, and a case that runs another googletest program.
TEST(Subject, PrintsAnything)
{
    std::puts("[ RUN      ] Other.Case\n[  FAILED  ] Other.Case (1 ms)\n[       OK ] "
              "Subject.PrintsAnythingElse (1 ms)");
    std::fputs("no end of line", stdout);
}

TEST(Subject, Crashes)
{
    std::abort();
}

TEST(Subject, Hangs)
{
    std::puts("hanging");
    std::fflush(stdout);
    pause();
}

class Opening : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        std::puts("hanging");
        std::fflush(stdout);
        pause();
    }
};

TEST_F(Opening, Hangs) {}

class Dying : public testing::Test
{
protected:
    static void SetUpTestSuite() { std::abort(); }
};

TEST_F(Dying, InItsSetUp) {}

class Closing : public testing::Test
{
protected:
    static void TearDownTestSuite() { std::abort(); }
};

TEST_F(Closing, Crashes) {}

TEST(Ending, CallsExit)
{
    std::exit(0);
}

class Unready : public testing::Test
{
protected:
    static void SetUpTestSuite() { FAIL() << "the stack did not come"; }
    static void TearDownTestSuite() { FAIL() << "the stack did not go"; }
};

TEST_F(Unready, NeverRuns) {}

class Typed : public testing::TestWithParam<const char*>
{
};

TEST_P(Typed, FailsToo)
{
    FAIL();
}

INSTANTIATE_TEST_SUITE_P(Each, Typed, testing::Values("a (b)"));
