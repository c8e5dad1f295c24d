// Runs in the sandbox: plays the schedule of a seed, or some of its steps, and writes what it sees in lines
// on standard output. Usage: mpl_chaos_subject SEED STEP,STEP…
#include "Log.h"
#include "Player.h"
#include <MPL_Types.h>

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    if (argc != 3 || qEnvironmentVariableIsEmpty("MPL_SANDBOX")) {
        std::fputs("usage: mpl-sandbox -- mpl_chaos_subject SEED STEP,STEP...\n", stderr);
        return 2;
    }
    const chaos::Schedule schedule = chaos::FromText(QLatin1String(argv[1]), QLatin1String(argv[2]));
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    chaos::KeepLog();
    MPL::RegisterAllMetaTypes();
    chaos::Disturbances disturbances;
    const std::unique_ptr<QThread> suite(QThread::create([&] {
        chaos::Player(disturbances).Play(schedule);
        QMetaObject::invokeMethod(
            &application, [] { QCoreApplication::quit(); }, Qt::QueuedConnection);
    }));
    QTimer::singleShot(0, &application, [&suite] { suite->start(); });
    const int status = QCoreApplication::exec();
    suite->wait();
    return status;
}
