/// Stands in for the platform: every function of the platform headers, with settable behaviour.
///
/// What the library does is noted: "kill media_mme TERM" (or KILL), "slm start media-mme", "slm stop …",
/// "DataManager::StartUp", "DataManager::ShutDown", "save active source \"\"", "save playback state \"\"",
/// "read <path>", "write <path>". What it only asks goes into Platform::questions: "pid media_mme", "owned
/// <service> on <connection name>", "objects <service> <interface> on <connection name>".
///
///     World().processes["media_mme"] = 7;
///     World().ignoreTerm << "media_mme";
///     EXPECT_TRUE(MPL_TestEnvironment::KillMediaProcess("media_mme")); // by SIGKILL
#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

namespace MPL::Doubles
{

struct Platform {
    /// Running processes and their ids.
    QMap<QString, int> processes;
    /// Processes that SIGTERM, or SIGKILL, does not end.
    QStringList ignoreTerm;
    QStringList ignoreKill;
    /// Called after a signal has had its effect.
    std::function<void(const QString& aName, bool aKill)> onKill;

    /// Services that the lifecycle manager neither starts nor stops.
    QStringList slmRefuses;

    /// Names owned on the bus, and object paths under "<service> <interface>". A service without any entry
    /// can't be introspected.
    QStringList owned;
    QMap<QString, QStringList> objects;

    int startUpResult = 0;
    bool saveSource = true;
    bool savePlaybackState = true;

    /// Content of the files; a write to one of `unwritable` fails.
    QMap<QString, QString> files;
    QStringList unwritable;

    QStringList questions;
};

/// The platform as the library meets it; reset by assigning a fresh value.
Platform& World();

/// Starts a process that no signal ends.
void MakeImmortal(const QString& aProcess);

} // namespace MPL::Doubles
