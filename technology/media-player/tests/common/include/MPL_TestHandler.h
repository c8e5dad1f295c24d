/// @file
/// Runs the googletest suite of a test program on a worker thread, while the main thread runs the Qt event
/// loop. Mpl::TestMain has a ready `main`; a program that wants its own writes:
///
///     QCoreApplication application(argc, argv);
///     QThread thread;
///     auto* handler = new MPL::TestHandler(&application, argc, argv, &thread);   // deletes itself
///     handler->Initialize();
///     handler->moveToThread(&thread);
///     QTimer::singleShot(0, &thread, [&thread] { thread.start(); });   // once the event loop runs
///     QCoreApplication::exec();
///     thread.wait();
///     return testing::UnitTest::GetInstance()->Passed() ? 0 : 1;
///
/// The handler must be on the heap: the end of the thread schedules its deletion. It sets no exit code.
#pragma once

#include <QObject>

class QCoreApplication;
class QThread;

namespace MPL
{

/// Runs the tests beside the event loop.
class TestHandler : public QObject
{
    Q_OBJECT

public:
    /// Takes no ownership and checks nothing. `argv` must stay valid until the suite has ended; googletest
    /// removes its own options from it.
    TestHandler(QCoreApplication* aApp, int argc, char** argv, QThread* aThread);

    /// Wires the handler to its thread: the suite runs when the thread starts; when the thread has finished,
    /// the handler is deleted and the application quits. Without a thread or an application it wires nothing
    /// and logs one critical line. Does not move the handler: without moveToThread() the suite would run on
    /// the thread that made the handler.
    void Initialize();

public Q_SLOTS:
    /// Runs all tests, blocking the calling thread until the last has ended, and quits the thread. A suite
    /// that fails gets one further non-fatal failure. Does nothing without a thread.
    void UnitTestStarted();

    /// Makes the application's event loop return. Does nothing without an application.
    void UnitTestFinished();

private:
    QCoreApplication* m_Application;
    QThread* m_Thread;
    int m_Argc;
    char** m_Argv;
};

} // namespace MPL
