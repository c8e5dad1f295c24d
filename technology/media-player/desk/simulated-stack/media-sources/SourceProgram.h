/// What sets the media source programs apart. They share one main function; each finds its own row by the
/// name of its executable.
#pragma once

#include <QString>

namespace sim
{

struct SourceProgram {
    QString processName;
    QString serviceName;
    /// What GetSourceName answers.
    QString sourceName;
    /// May be told to use devices of a remote computer.
    bool remote;
    /// Needs an account of a streaming service.
    bool login;
    /// Has media that can be indexed.
    bool index;
};

/// The row of the running program, or null when its executable has been renamed.
const SourceProgram* FindSourceProgram();

/// The last word of the service's name, which is the source's type.
QString SourceType(const SourceProgram& aProgram);

/// Looks for the streaming account in a media-player configuration. Returns the error type of a source that
/// can't log in, with one log line that says why, or an empty text.
QString LoginError(const QString& aConfigurationFile);

} // namespace sim
