// A test program as users write them, on the ready main. READY_MAIN_BUS names the bus that stands in for the
// private one.
#include "PrivateBus.h"
#include <MPL_TestEnvironment.h>

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <cstdio>

namespace
{

const bool kRedirected = [] {
    MPL::Doubles::PrivateBus::Redirect("unix:path=/var/talvex/media-player/testDbus",
                                       QString::fromLocal8Bit(qgetenv("READY_MAIN_BUS")));
    return true;
}();

TEST(Subject, Passes)
{
    EXPECT_TRUE(kRedirected);
    EXPECT_NE(QThread::currentThread(), QCoreApplication::instance()->thread());
    EXPECT_GT(QMetaType::type("QList<ServiceObject>"), 0);
    std::printf("arguments: %s\n", qPrintable(QCoreApplication::arguments().mid(1).join(' ')));
    std::printf("bus: %s\n", qPrintable(MPL_TestEnvironment::GetDbusConnection().name()));
}

TEST(Subject, FailsOnPurpose)
{
    FAIL() << "on purpose";
}

} // namespace
