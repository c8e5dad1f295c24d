#include "Trial.h"

#include "Lines.h"

#include <QEventLoop>

#include <cstdio>
#include <cstdlib>

namespace chaos
{
namespace
{

// More than any one call may take by the sandbox's clock, and what the machine needs.
int LongestMs(const Schedule& aSchedule, double aSpeed)
{
    constexpr double kCallMs = 400e3;
    constexpr double kIndexMs = 700e3;
    constexpr double kMachineMs = 10e3;
    return static_cast<int>((Has(aSchedule, Action::WaitForIndex) ? kIndexMs : kCallMs) / aSpeed +
                            kMachineMs);
}

constexpr int kNoSandbox = 125;

QStringList Arguments(const Schedule& aSchedule, double aSpeed)
{
    QStringList arguments;
    if (!aSchedule.hasLifecycleManager) {
        arguments << QStringLiteral("--no-lifecycle-manager");
    }
    arguments << QStringLiteral("--speed") << QString::number(aSpeed) << QStringLiteral("--")
              << QStringLiteral(MPL_CHAOS_KEEPER) << QString::number(aSchedule.seed) << NumberText(aSchedule);
    return arguments;
}

QString LastLines(const QByteArray& aText)
{
    constexpr int kLines = 15;
    const QStringList lines = QString::fromUtf8(aText).trimmed().split(QLatin1Char('\n'));
    return lines.mid(qMax(0, lines.size() - kLines)).join(QLatin1Char('\n'));
}

// Without a sandbox no run can tell anything.
void LeaveIfThereWasNoRun(const Observations& aSeen)
{
    if (aSeen.WasNoRun()) {
        std::fprintf(stderr, "There was no run, as there was no sandbox:\n%s\n", qPrintable(aSeen.errors));
        std::exit(kNoSandbox);
    }
}

} // namespace

void Trial::Start(const Schedule& aSchedule, double aSpeed, const Done& aDone)
{
    new Trial(aSchedule, aSpeed, aDone); // deletes itself
}

Trial::Trial(const Schedule& aSchedule, double aSpeed, const Done& aDone) : m_Speed(aSpeed), m_Done(aDone)
{
    connect(&m_Process, QOverload<int, QProcess::ExitStatus>::of(&QProcess::finished), this, &Trial::Finish);
    connect(&m_Process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError aError) {
        if (aError == QProcess::FailedToStart) {
            Finish();
        }
    });
    connect(&m_Limit, &QTimer::timeout, this, [this] {
        m_WasHung = true;
        m_Process.kill(); // takes the whole sandbox with it
    });
    // It says when a call begins and when it has ended.
    connect(&m_Process, &QProcess::readyReadStandardOutput, &m_Limit, QOverload<>::of(&QTimer::start));
    m_Limit.setSingleShot(true);
    m_Limit.start(LongestMs(aSchedule, aSpeed));
    m_Process.start(QStringLiteral(MPL_SANDBOX_PROGRAM), Arguments(aSchedule, aSpeed));
}

void Trial::Finish()
{
    m_Limit.stop();
    Observations seen;
    seen.speed = m_Speed;
    seen.wasHung = m_WasHung;
    const bool hasRun = m_Process.error() != QProcess::FailedToStart;
    seen.exitStatus = hasRun ? m_Process.exitCode() : kNoSandbox;
    seen.errors =
        LastLines(hasRun ? m_Process.readAllStandardError()
                         : (m_Process.program() + QStringLiteral(": ") + m_Process.errorString()).toUtf8());
    const QList<QByteArray> lines = m_Process.readAllStandardOutput().split('\n');
    for (const QByteArray& line : lines) {
        Take(line, seen);
    }
    LeaveIfThereWasNoRun(seen);
    m_Done(seen);
    deleteLater();
}

Observations Try(const Schedule& aSchedule, double aSpeed)
{
    QEventLoop loop;
    Observations result;
    Trial::Start(aSchedule, aSpeed, [&](const Observations& aSeen) {
        result = aSeen;
        loop.quit();
    });
    loop.exec();
    return result;
}

QString CommandFor(const Schedule& aSchedule)
{
    return QStringLiteral("scripts/run-chaos --seed %1 --keep %2")
        .arg(aSchedule.seed)
        .arg(NumberText(aSchedule));
}

} // namespace chaos
