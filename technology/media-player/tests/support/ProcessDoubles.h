/// Stands in for QProcess::startDetached(): no program is started. A start is noted as "start <program>
/// <arguments…>", whether it is asked for in one text or in several. QProcess objects work as ever.
///
///     Starts().failing << "/opt/talvex/bin/media_manager";
///     EXPECT_FALSE(MPL_TestEnvironment::LaunchMediaManagerProcess(false));
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace MPL::Doubles
{

struct Starting {
    /// Programs that can't be started.
    QStringList failing;
    /// Called at each start that succeeds, to let the world change.
    std::function<void(const QString& aProgram, const QStringList& aArguments)> onStart;
};

/// What happens at the next start; reset by assigning a fresh value.
Starting& Starts();

} // namespace MPL::Doubles
