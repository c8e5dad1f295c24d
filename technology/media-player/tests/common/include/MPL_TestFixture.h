/// @file
/// The base of every test of the stack. It kills the display processes before a test case, and gives each
/// test a thread of its own with a blocking wait, so that a test can start a client object there and block
/// until the client reports that it is done:
///
///     TEST_F(MyFixture, Follows)            // class MyFixture : public MPL::TestFixture
///     {
///         auto* client = new MyClient(MPL_TestEnvironment::CreateMediaManagerProxy(), this);
///         client->moveToThread(&m_Thread);
///         m_Thread.start();                 // MyClient::RunTest() runs there and ends with QuitTest()
///         ASSERT_TRUE(Wait(10000));         // until the end of the thread has woken it
///     }
///
/// Wait() without a limit is for what can't be missed: a client that is done before the test has come there
/// wakes nobody, and the test blocks for ever.
///
/// A test may end at any line, by an early ASSERT too: the fixture ends its thread then. What lives on the
/// thread must not refer to the test's own variables unless the test waits for the thread's end.
///
/// Everything but WakeUp() and QuitTest() is called on the thread that runs the suite.
#pragma once

#include <Gaugely/Std/PerfTestBase.h>

#include <QMutex>
#include <QThread>
#include <QWaitCondition>

namespace MPL
{

/// Base of the tests that wait for what happens on another thread.
class TestFixture : public Gaugely::Std::PerfTestBase
{
public:
    TestFixture();
    /// Logs at critical level a test that was set up and not torn down. Asks `m_Thread` to quit if it still
    /// runs, and blocks until it has ended, at most 30 seconds; a thread that does not end is logged at
    /// critical level, and Qt then ends the program.
    ~TestFixture() override;

    /// Kills the display processes. If one of them stays, the test case gets a fatal failure. Blocks for the
    /// kills, about 15 seconds for each process that resists.
    static void SetUpTestCase();
    /// Ends the bookkeeping that SetUpTestCase() began.
    static void TearDownTestCase();

    /// Blocks the calling thread until WakeUp(), without a time-out and without an event loop.
    void Wait();

    /// The same for at most so many milliseconds (a negative number: without end). The end of `m_Thread`
    /// counts as well, also when it came before, so it can't be missed. Returns false when neither came in
    /// time, and logs at critical level what it waited for.
    bool Wait(int aLimitMs);

    /// Releases a thread blocked in Wait(); call it from another thread. It is not remembered: with nobody
    /// waiting it does nothing, and one that comes before the first Wait() is lost.
    void WakeUp();

    /// Asks the event loop of `m_Thread` to end. Returns at once; may be called from any thread.
    void QuitTest();

    /// The test's own thread. The test starts it; clients move their proxies to it.
    QThread m_Thread;

    /// True between SetUpTestCase() and TearDownTestCase().
    static bool s_GaugelySetUpCase;

protected:
    /// Notes that the test began; an override calls it.
    void SetUp() override;
    /// Notes that it ended; an override calls it.
    void TearDown() override;

    /// Set by the first Wait(), never cleared; guarded by `m_Mutex`. Whoever reads it true under the lock
    /// knows that the waiting thread can be woken.
    bool m_Waiting = false;
    /// Held by Wait() and WakeUp() while they use `m_Waiting` and `m_Condition`.
    QMutex m_Mutex;
    /// What Wait() waits for.
    QWaitCondition m_Condition;
    /// True between SetUp() and TearDown().
    bool m_GaugelySetUp = false;
};

} // namespace MPL
