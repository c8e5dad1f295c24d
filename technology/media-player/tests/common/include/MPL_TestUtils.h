/// @file
/// Blocking waits for Qt signals and D-Bus replies, and the reader of the functionalities text in which a
/// service object lists what it can do now:
///
///     QSignalSpy spy(proxy, &Proxy::SignalPlayStateChanged);
///     MPL::TestUtils::WaitForSignal(spy, 1, 5000);
///     ASSERT_EQ(spy.count(), 1);
///
/// The functionalities text is JSON:
///
///     {"available_functionalities": {"PLAYBACK-REPEAT":
///         {"functionality_state": "ENABLED", "options": ["REPEAT_MODE_OFF", "REPEAT_MODE_ONE"]}}}
///
/// Other members at any level are ignored, and member names are compared without regard to case. A state that
/// is no text counts as absent; an element of "options" that is no text counts as empty.
#pragma once

#include <QDBusPendingReply>
#include <QMap>
#include <QString>
#include <QStringList>

class QSignalSpy;

namespace MPL
{

/// One functionality of a functionalities text.
struct Functionality {
    /// As the text names it.
    QString name;
    /// "ENABLED" or "DISABLED", or whatever else the text says; empty when it says nothing.
    QString state;
    /// Its options, in the order of the text.
    QStringList options;
};

namespace TestUtils
{

/// Waits until the spy has recorded at least `aCount` emissions, looking every 100 milliseconds. Returns the
/// milliseconds waited: a multiple of 100, and at least `aTimeoutMs` when the wait failed or succeeded only
/// with its last pause; the spy's count tells. With a time-out of 0 the spy is not looked at. Blocks the
/// calling thread without an event loop, so the signals must come from another thread.
unsigned WaitForSignal(const QSignalSpy& aSpy, unsigned aCount, unsigned aTimeoutMs);

/// Blocks the calling thread until the reply is there or the D-Bus time-out has passed. Returns true when the
/// call succeeded. Logs nothing.
bool WaitForDBusReply(QDBusPendingReply<> aReply);

/// The same for a call that answers with a boolean, which is stored in `aValue`. On failure `aValue` stays as
/// it was and the error is logged at debug level.
bool WaitForDBusReply(QDBusPendingReply<bool> aReply, bool& aValue);

/// Adds the functionalities of the text to `aMap` by name; one already there under the same name is replaced,
/// others stay. A text that is not JSON or has no "available_functionalities" leaves the map as it was.
void GetAvailableFunctionMap(const QString& aText, QMap<QString, MPL::Functionality>& aMap);

} // namespace TestUtils
} // namespace MPL
