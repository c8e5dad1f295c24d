/// The faults that a test asks of a simulated program, read once at the program's start from
/// /opt/talvex/etc/simulated-stack.json:
///
///     {"programs": {"media_manager": {"start_delay_ms": 3000, "ignore_sigterm": true,
///         "replies": {"com.talvex.DBus.MediaPlayer.MediaManager.GetActiveMediaSource": "never"}}}}
#pragma once

#include <QHash>
#include <QString>

#include <optional>

namespace sim
{

/// What becomes of the reply of one method.
enum class ReplyFault {
    None,
    Error,          ///< "error": the call is refused with a D-Bus error, nothing is done
    Never,          ///< "never": no answer, nothing is done
    WrongSignature, ///< "wrong_signature": answered with a floating-point number, which no method returns
    SignalFirst,    ///< "signal_first": what the call signals goes out before its reply, not after it
    Die             ///< "die": the process is killed when the call arrives
};

struct FaultPlan {
    /// Reads the faults of `aProgram`. A missing file, or one that does not name the program, means none.
    /// Returns false, with `aError` saying where the file is wrong, when it can't be read or understood.
    static bool Load(const QString& aPath, const QString& aProgram, FaultPlan& aPlan, QString& aError);

    ReplyFault OfMethod(const QString& aInterfaceName, const QString& aMethod) const;

    /// Time between the program's start and its first word on the bus.
    int startDelayMs = 0;
    /// The objects are exported, the bus name is never asked for.
    bool neverOwnName = false;
    /// How many media manager objects are exported.
    int managerObjects = 1;
    bool ignoreSigterm = false;
    /// The process kills itself that long after its start.
    std::optional<int> crashAfterMs;
    /// The process stops answering, and minding SIGTERM, that long after its start.
    std::optional<int> hangAfterMs;
    /// By interface name, a dot and the method.
    QHash<QString, ReplyFault> replies;
};

} // namespace sim
