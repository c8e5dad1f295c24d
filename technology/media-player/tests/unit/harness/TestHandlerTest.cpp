// The handler's wiring and its guards. That it runs a suite on the worker thread, the tests of the ready main
// show.
#include "DoublesTest.h"
#include <MPL_TestHandler.h>

#include <QCoreApplication>
#include <QPointer>
#include <QThread>
#include <QTimer>

using namespace MPL::Doubles;

namespace
{

class ATestHandler : public DoublesTest
{
protected:
    QThread m_Thread;
};

TEST_F(ATestHandler, LogsOneLineAndWiresNothingWithoutThreadOrApplication)
{
    MPL::TestHandler neither(nullptr, 0, nullptr, nullptr);
    neither.Initialize();
    EXPECT_EQ(Text(Notes()), "critical: TestHandler::Initialize Invalid thread object");

    ClearNotes();
    QPointer<MPL::TestHandler> noApplication = new MPL::TestHandler(nullptr, 0, nullptr, &m_Thread);
    noApplication->Initialize();
    EXPECT_EQ(Text(Notes()), "critical: TestHandler::Initialize Invalid application");

    // A wired handler would run this program's suite inside this test, and be deleted.
    m_Thread.start();
    m_Thread.quit();
    ASSERT_TRUE(m_Thread.wait(5000));
    QCoreApplication::sendPostedEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_FALSE(noApplication.isNull());
    delete noApplication.data();
}

TEST_F(ATestHandler, DoesNothingInItsSlotsWithoutTheObjectTheyActOn)
{
    MPL::TestHandler handler(nullptr, 0, nullptr, nullptr);
    handler.UnitTestStarted();
    QTimer::singleShot(0, &handler, &MPL::TestHandler::UnitTestFinished);
    QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(7); });
    EXPECT_EQ(QCoreApplication::exec(), 7);
}

TEST_F(ATestHandler, QuitsTheApplicationAndGoesAtTheEndOfTheThread)
{
    QPointer<MPL::TestHandler> handler = new MPL::TestHandler(qApp, 0, nullptr, &m_Thread);
    handler->Initialize();
    QObject::disconnect(&m_Thread, &QThread::started, handler, nullptr); // the suite is running already
    handler->moveToThread(&m_Thread);
    QTimer::singleShot(0, qApp, [this] {
        m_Thread.start();
        m_Thread.quit();
    });
    QTimer::singleShot(5000, qApp, [] { QCoreApplication::exit(1); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    ASSERT_TRUE(m_Thread.wait(5000));
    EXPECT_TRUE(handler.isNull());
}

} // namespace
