#include "StackFaults.h"

#include <QFile>
#include <QJsonDocument>

#include <gtest/gtest.h>

namespace
{

constexpr const char* kFaultsFile = "/opt/talvex/etc/simulated-stack.json";

} // namespace

StackFaults::StackFaults(const QByteArray& aPrograms)
{
    EXPECT_TRUE(QJsonDocument::fromJson(aPrograms).isObject()) << "no JSON object: " << aPrograms.constData();
    WriteFile("{\"programs\": " + aPrograms + "}");
}

StackFaults::~StackFaults()
{
    QFile::remove(kFaultsFile);
}

void StackFaults::WriteFile(const QByteArray& aContent)
{
    QFile file(kFaultsFile);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
    EXPECT_EQ(file.write(aContent), aContent.size());
}
