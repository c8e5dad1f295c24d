#include "StackFaults.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

const QString FAULTS_FILE = QStringLiteral("/opt/talvex/etc/simulated-stack.json");

} // namespace

StackFaults::StackFaults(const QString& program, const QByteArray& faults)
{
    const QJsonObject object = QJsonDocument::fromJson(faults).object();
    EXPECT_FALSE(object.isEmpty()) << "no JSON object: " << faults.constData();
    QFile file(FAULTS_FILE);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(file.errorString());
    const QJsonObject programs{{program, object}};
    file.write(QJsonDocument(QJsonObject{{QStringLiteral("programs"), programs}}).toJson());
}

StackFaults::~StackFaults()
{
    QFile::remove(FAULTS_FILE);
}
