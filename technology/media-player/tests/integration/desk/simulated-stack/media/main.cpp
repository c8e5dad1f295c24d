#include <MPL_Types.h>

#include <QCoreApplication>
#include <QDBusMetaType>

#include <gtest/gtest.h>

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    MPL::RegisterAllMetaTypes();
    qDBusRegisterMetaType<QList<qulonglong>>();
    return RUN_ALL_TESTS();
}
