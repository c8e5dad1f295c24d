#include <MPL_TestEnvironment.h>
#include <MPL_TestFixture.h>

#include <QDebug>
#include <QMutexLocker>

namespace MPL
{

bool TestFixture::s_GaugelySetUpCase = false;

TestFixture::TestFixture() = default;

TestFixture::~TestFixture()
{
    if (m_GaugelySetUp) {
        qCritical() << "Gaugely::Std::PerfTestBase::TearDown has not been called";
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
