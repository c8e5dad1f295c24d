#include "FaultWords.h"
#include <MPL_SimulatedFaults.h>

#include <QFile>
#include <QJsonDocument>
#include <QMetaMethod>
#include <QSaveFile>

#include <algorithm>

namespace MPL
{
namespace
{

QString Quoted(const QString& aText)
{
    return QLatin1Char('"') + aText + QLatin1Char('"');
}

testing::AssertionResult Refused(const QString& aReason)
{
    return testing::AssertionFailure() << aReason.toStdString();
}

QStringList Programs()
{
    QStringList programs;
    for (const char* program : sim::kPrograms) {
        programs << QLatin1String(program);
    }
    return programs;
}

QStringList MethodsOf(const QMetaObject& aProxy)
{
    QStringList methods;
    for (int i = aProxy.methodOffset(); i < aProxy.methodCount(); ++i) {
        if (aProxy.method(i).methodType() == QMetaMethod::Slot) {
            methods << QString::fromLatin1(aProxy.method(i).name());
        }
    }
    return methods;
}

QString Word(ReplyFault aFault)
{
    switch (aFault) {
    case ReplyFault::Error:
        return QLatin1String(sim::kErrorReply);
    case ReplyFault::Never:
        return QLatin1String(sim::kNoReply);
    case ReplyFault::WrongSignature:
        return QLatin1String(sim::kWrongSignatureReply);
    case ReplyFault::SignalFirst:
        return QLatin1String(sim::kSignalFirstReply);
    case ReplyFault::Die:
        return QLatin1String(sim::kDyingReply);
    }
    return {};
}

testing::AssertionResult Write(const QJsonObject& aPrograms)
{
    // Outside, the file would be the machine's own.
    if (qEnvironmentVariableIsEmpty("MPL_SANDBOX")) {
        return Refused(
            QStringLiteral("faults can be set only in the sandbox: run the test through mpl-sandbox"));
    }
    QSaveFile file{QLatin1String(sim::kFaultsFile)};
    file.open(QIODevice::WriteOnly);
    file.write(QJsonDocument(QJsonObject{{QLatin1String(sim::kProgramsKey), aPrograms}}).toJson());
    if (!file.commit()) {
        return Refused(
            QStringLiteral("the faults can't be written to %1: %2").arg(file.fileName(), file.errorString()));
    }
    return testing::AssertionSuccess();
}

} // namespace

SimulatedFaults::~SimulatedFaults()
{
    if (!m_Programs.isEmpty()) {
        QFile::remove(QLatin1String(sim::kFaultsFile));
    }
}

testing::AssertionResult SimulatedFaults::StartDelay(const QString& aProgram, int aMilliseconds)
{
    return AddNumber(aProgram, QLatin1String(sim::kStartDelayKey), aMilliseconds);
}

testing::AssertionResult SimulatedFaults::NeverOwnName(const QString& aProgram)
{
    return Add(aProgram, QLatin1String(sim::kNeverOwnNameKey), true);
}

testing::AssertionResult SimulatedFaults::ManagerObjects(int aCount)
{
    return AddNumber(QStringLiteral("media_manager"), QLatin1String(sim::kManagerObjectsKey), aCount);
}

testing::AssertionResult SimulatedFaults::IgnoreSigterm(const QString& aProgram)
{
    return Add(aProgram, QLatin1String(sim::kIgnoreSigtermKey), true);
}

testing::AssertionResult SimulatedFaults::CrashAfter(const QString& aProgram, int aMilliseconds)
{
    return AddNumber(aProgram, QLatin1String(sim::kCrashAfterKey), aMilliseconds);
}

testing::AssertionResult SimulatedFaults::HangAfter(const QString& aProgram, int aMilliseconds)
{
    return AddNumber(aProgram, QLatin1String(sim::kHangAfterKey), aMilliseconds);
}

testing::AssertionResult SimulatedFaults::Reply(const QString& aProgram, const QString& aInterface,
                                                const QMetaObject& aProxy, const QString& aMethod,
                                                ReplyFault aFault)
{
    const QStringList methods = MethodsOf(aProxy);
    if (!methods.contains(aMethod)) {
        return Refused(QStringLiteral("%1 has no method %2; it has %3")
                           .arg(aInterface, Quoted(aMethod), methods.join(QStringLiteral(", "))));
    }
    const QString replies = QLatin1String(sim::kRepliesKey);
    QJsonObject changed = m_Programs.value(aProgram).toObject().value(replies).toObject();
    changed.insert(aInterface + QLatin1Char('.') + aMethod, Word(aFault));
    return Add(aProgram, replies, changed);
}

testing::AssertionResult SimulatedFaults::AddNumber(const QString& aProgram, const QString& aFault,
                                                    int aNumber)
{
    return aNumber >= 0 ? Add(aProgram, aFault, aNumber)
                        : Refused(QStringLiteral("%1 can't be negative: %2").arg(aFault).arg(aNumber));
}

testing::AssertionResult SimulatedFaults::Add(const QString& aProgram, const QString& aFault,
                                              const QJsonValue& aValue)
{
    const QStringList programs = Programs();
    if (!programs.contains(aProgram)) {
        return Refused(QStringLiteral("%1 is no program of the simulated stack; there are %2")
                           .arg(Quoted(aProgram), programs.join(QStringLiteral(", "))));
    }
    QJsonObject faults = m_Programs.value(aProgram).toObject();
    faults.insert(aFault, aValue);
    QJsonObject all = m_Programs;
    all.insert(aProgram, faults);
    testing::AssertionResult written = Write(all);
    if (written) {
        m_Programs = all;
    }
    return written;
}

} // namespace MPL
