// A program that does nothing but start: with the library and the platform in it, or with what these are made
// of.
#ifdef WITH_LIBRARY
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>
#endif

#include <QCoreApplication>
#include <QDBusConnection>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
#ifdef WITH_LIBRARY
    return MPL_TestEnvironment::GetDbusConnection().name().isEmpty() ? 1 : 0;
#else
    return QDBusConnection::systemBus().name().isEmpty() ? 1 : 0;
#endif
}
