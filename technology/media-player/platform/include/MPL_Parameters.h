/// The parameter text in which the stack packs small records (events, source status) into one string.
/// Declared here, implemented by the platform.
#pragma once

#include <QMap>
#include <QString>

namespace MPL
{

/// Splits a parameter text into its pairs and adds them to `parameters`, a later value replacing an earlier
/// one of the same key. Returns false, with `parameters` unchanged, when the text holds no pair.
bool GetParameters(const QString& text, QMap<QString, QString>& parameters);

} // namespace MPL
