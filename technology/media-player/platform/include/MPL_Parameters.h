/// @file
/// The parameter text in which the stack packs small records (events, source status) into one string.
/// Declared here, implemented by the platform.
#pragma once

#include <QMap>
#include <QString>

namespace MPL
{

/// Splits a parameter text into its pairs and adds them to `aParameters`, a later value replacing an earlier
/// one of the same key. Returns false, with `aParameters` unchanged, when the text holds no pair.
bool GetParameters(const QString& aText, QMap<QString, QString>& aParameters);

} // namespace MPL
