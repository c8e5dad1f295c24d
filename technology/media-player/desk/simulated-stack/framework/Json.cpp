#include "Json.h"

#include <QFile>
#include <QJsonDocument>

namespace sim
{

bool ReadJsonFile(const QString& aPath, QJsonObject& aObject, QString& aError)
{
    QFile file(aPath);
    if (!file.open(QIODevice::ReadOnly)) {
        aError = file.errorString();
        return false;
    }
    QJsonParseError parsing{};
    aObject = QJsonDocument::fromJson(file.readAll(), &parsing).object();
    if (parsing.error != QJsonParseError::NoError) {
        aError = QStringLiteral("byte %1: %2").arg(parsing.offset).arg(parsing.errorString());
        return false;
    }
    return true;
}

QString ToText(const QJsonObject& aObject)
{
    return QString::fromUtf8(QJsonDocument(aObject).toJson(QJsonDocument::Compact));
}

} // namespace sim
