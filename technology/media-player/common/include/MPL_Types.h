/// @file
/// The composite values that the stack exchanges over D-Bus, and their one-time registration.
///
///     MPL::RegisterAllMetaTypes();   // once per process, before the first proxy call
#pragma once

#include <CinemoUtils/DeviceInfo.h>
#include <MPL_BrowserHierarchy.h>
#include <MPL_BufferedMedia.h>
#include <MPL_ServiceObject.h>
#include <MPL_TransactionId.h>

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

namespace MPL
{

/// One browse result, track record or play-queue entry: `a{sv}`.
using ResultDictionary = QVariantMap;

/// Makes every value type of the stack known to Qt and Qt D-Bus: for QVariant, queued connections, pending
/// replies and the proxies. Process-wide and permanent; calling it again changes nothing. Call it before the
/// first proxy call, before a pending reply of these types is read and before a queued connection carries
/// one. Does not block.
void RegisterAllMetaTypes();

} // namespace MPL

/// Preset data of a media source: `a{ss}`.
using PresetDictionary = QMap<QString, QString>;
/// Information about a media source: `a{ss}`.
using SourceInfo = QMap<QString, QString>;
/// State of a media source: `a{ss}`.
using MediaSourceState = QMap<QString, QString>;
/// List of unsigned numbers: `au`.
using intList = QList<uint>;
/// @{
/// A mode's text: `s`.
using SeekMode = QString;
using RepeatMode = QString;
using ShuffleMode = QString;
/// @}

Q_DECLARE_METATYPE(CinemoUtils::DeviceInfo)
