#include <MPL_TestEnvironment.h>
#include <MPL_TestFixture.h>

#include <QDeadlineTimer>
#include <QDebug>
#include <QMutexLocker>

#include <algorithm>

namespace MPL
{

namespace
{

// Longer than a D-Bus call waits for an answer, which is what a client's thread is most likely blocked in.
constexpr unsigned long kThreadEndMs = 30000;
// How often a wait looks whether the thread that should end it has ended.
constexpr qint64 kLookMs = 100;

} // namespace

bool TestFixture::s_GaugelySetUpCase = false;

TestFixture::TestFixture() = default;

TestFixture::~TestFixture()
{
    if (m_GaugelySetUp) {
        qCritical() << "Gaugely::Std::PerfTestBase::TearDown has not been called";
    }
    // A test that ends early leaves it running, and Qt ends a program that destroys a running thread.
    m_Thread.quit();
    if (!m_Thread.wait(kThreadEndMs)) {
        qCritical() << "TestFixture::~TestFixture -- m_Thread was asked to quit and still runs after"
                    << kThreadEndMs / 1000 << "seconds. The program can't go on without it and ends here.";
    }
}

void TestFixture::SetUpTestCase()
{
    qDebug() << "TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase";
    if (s_GaugelySetUpCase) {
        qCritical() << "Previous test case not torn down correctly";
    }
    s_GaugelySetUpCase = true;
    ASSERT_TRUE(MPL_TestEnvironment::KillHmiProcesses());
}

void TestFixture::TearDownTestCase()
{
    qDebug() << "TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase";
    s_GaugelySetUpCase = false;
}

void TestFixture::SetUp()
{
    qDebug() << "TestFixture::SetUp -- Do Gaugely SetUp";
    if (!s_GaugelySetUpCase) {
        qCritical() << "Gaugely::Std::PerfTestBase::SetUpTestCase has not been called";
        return;
    }
    m_GaugelySetUp = true;
}

void TestFixture::TearDown()
{
    qDebug() << "TestFixture::TearDown -- Do Gaugely Teardown";
    // A test that outlives its test case stays set up, and the destructor reports it.
    if (s_GaugelySetUpCase && m_GaugelySetUp) {
        m_GaugelySetUp = false;
    }
}

void TestFixture::Wait()
{
    const QMutexLocker locker(&m_Mutex);
    m_Waiting = true;
    m_Condition.wait(&m_Mutex);
}

bool TestFixture::Wait(int aLimitMs)
{
    const QDeadlineTimer limit(aLimitMs);
    const QMutexLocker locker(&m_Mutex);
    m_Waiting = true;
    // A thread that ended before this one came here woke nobody, so its end is looked for as well.
    while (!m_Thread.isFinished()) {
        if (limit.hasExpired()) {
            qCritical() << "TestFixture::Wait -- waited" << aLimitMs
                        << "ms for WakeUp() or the end of m_Thread, which"
                        << (m_Thread.isRunning() ? "still runs: was QuitTest() reached?"
                                                 : "was never started");
            return false;
        }
        if (m_Condition.wait(&m_Mutex, std::min(limit, QDeadlineTimer(kLookMs)))) {
            return true;
        }
    }
    return true;
}

void TestFixture::WakeUp()
{
    const QMutexLocker locker(&m_Mutex);
    if (m_Waiting) {
        m_Condition.wakeAll();
    }
}

void TestFixture::QuitTest()
{
    m_Thread.quit();
}

} // namespace MPL
