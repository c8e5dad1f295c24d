/// JSON as the simulated programs read it from files and send it over the bus.
#pragma once

#include <QJsonObject>
#include <QString>

namespace sim
{

/// Reads the object that a file holds; an empty one when it holds anything else. Returns false, with
/// `aError` saying why, when the file can't be read or is no JSON.
bool ReadJsonFile(const QString& aPath, QJsonObject& aObject, QString& aError);

/// In one line.
QString ToText(const QJsonObject& aObject);

} // namespace sim
