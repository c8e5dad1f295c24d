#include "StackFaults.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace
{

const QString kFaultsFile = QStringLiteral("/opt/talvex/etc/simulated-stack.json");

} // namespace

StackFaults::StackFaults(const QString& aProgram, const QByteArray& aFaults)
{
    const QJsonObject object = QJsonDocument::fromJson(aFaults).object();
    EXPECT_FALSE(object.isEmpty()) << "no JSON object: " << aFaults.constData();
    const QJsonObject programs{{aProgram, object}};
    WriteFile(QJsonDocument(QJsonObject{{QStringLiteral("programs"), programs}}).toJson());
}

StackFaults::~StackFaults()
{
    RemoveFile();
}

void StackFaults::WriteFile(const QByteArray& aContent)
{
    QFile file(kFaultsFile);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
    EXPECT_EQ(file.write(aContent), aContent.size());
}

void StackFaults::RemoveFile()
{
    QFile::remove(kFaultsFile);
}
