#include "Faults.h"

#include "FaultWords.h"
#include "Interfaces.h"
#include "Json.h"

#include <QFile>
#include <QMap>

#include <algorithm>

namespace sim
{
namespace
{

bool IsProgram(const QString& aName)
{
    return std::any_of(kPrograms.begin(), kPrograms.end(),
                       [&aName](const char* aProgram) { return aName == QLatin1String(aProgram); });
}

bool ReadNumber(const QJsonValue& aValue, int& aNumber)
{
    aNumber = aValue.toInt(-1);
    return aNumber >= 0;
}

bool ReadFlag(const QJsonValue& aValue, bool& aFlag)
{
    aFlag = aValue.toBool();
    return aValue.isBool();
}

QString Quoted(const QString& aText)
{
    return QLatin1Char('"') + aText + QLatin1Char('"');
}

const QMap<QString, ReplyFault>& ReplyWords()
{
    static const QMap<QString, ReplyFault> kWords{
        {QLatin1String(kErrorReply), ReplyFault::Error},
        {QLatin1String(kNoReply), ReplyFault::Never},
        {QLatin1String(kWrongSignatureReply), ReplyFault::WrongSignature},
        {QLatin1String(kSignalFirstReply), ReplyFault::SignalFirst},
        {QLatin1String(kDyingReply), ReplyFault::Die}};
    return kWords;
}

// Empty when the stack has such a method.
QString ProblemWithMethod(const QString& aFullName)
{
    const QString interface = aFullName.section(QLatin1Char('.'), 0, -2);
    const QString method = aFullName.section(QLatin1Char('.'), -1);
    const QStringList methods = MethodsOf(interface);
    if (methods.isEmpty()) {
        return QStringLiteral("%1 is no interface of the stack").arg(Quoted(interface));
    }
    return methods.contains(method) ? QString()
                                    : QStringLiteral("%1 has no method %2; it has %3")
                                          .arg(interface, Quoted(method), methods.join(QStringLiteral(", ")));
}

bool ReadReplies(const QJsonValue& aValue, QHash<QString, ReplyFault>& aReplies, QString& aError)
{
    if (!aValue.isObject()) {
        return false;
    }
    const QJsonObject object = aValue.toObject();
    for (auto reply = object.begin(); reply != object.end(); ++reply) {
        aError = ProblemWithMethod(reply.key());
        const QString word = reply.value().toVariant().toString();
        if (aError.isEmpty() && !ReplyWords().contains(word)) {
            aError = QStringLiteral("%1 for %2 is no fault of a reply; there are %3")
                         .arg(Quoted(word), reply.key(),
                              QStringList(ReplyWords().keys()).join(QStringLiteral(", ")));
        }
        if (!aError.isEmpty()) {
            return false;
        }
        aReplies.insert(reply.key(), ReplyWords().value(word));
    }
    return true;
}

// False, with or without an error that says more than that.
bool ReadFault(const QString& aName, const QJsonValue& aValue, FaultPlan& aPlan, QString& aError)
{
    if (aName == QLatin1String(kStartDelayKey)) {
        return ReadNumber(aValue, aPlan.startDelayMs);
    }
    if (aName == QLatin1String(kNeverOwnNameKey)) {
        return ReadFlag(aValue, aPlan.neverOwnName);
    }
    if (aName == QLatin1String(kManagerObjectsKey)) {
        return ReadNumber(aValue, aPlan.managerObjects);
    }
    if (aName == QLatin1String(kIgnoreSigtermKey)) {
        return ReadFlag(aValue, aPlan.ignoreSigterm);
    }
    if (aName == QLatin1String(kCrashAfterKey)) {
        return ReadNumber(aValue, aPlan.crashAfterMs.emplace());
    }
    if (aName == QLatin1String(kHangAfterKey)) {
        return ReadNumber(aValue, aPlan.hangAfterMs.emplace());
    }
    return aName == QLatin1String(kRepliesKey) && ReadReplies(aValue, aPlan.replies, aError);
}

bool ReadProgram(const QString& aProgram, const QJsonValue& aValue, FaultPlan& aPlan, QString& aError)
{
    if (!IsProgram(aProgram)) {
        aError = QStringLiteral("\"%1\" is no program of the simulated stack").arg(aProgram);
        return false;
    }
    if (!aValue.isObject()) {
        aError = QStringLiteral("the faults of \"%1\" are no object").arg(aProgram);
        return false;
    }
    const QJsonObject faults = aValue.toObject();
    for (auto fault = faults.begin(); fault != faults.end(); ++fault) {
        if (!ReadFault(fault.key(), fault.value(), aPlan, aError)) {
            aError = aError.isEmpty()
                         ? QStringLiteral("\"%1\" of \"%2\" is no known fault or has a wrong value")
                               .arg(fault.key(), aProgram)
                         : QStringLiteral("\"%1\" of \"%2\": %3").arg(fault.key(), aProgram, aError);
            return false;
        }
    }
    return true;
}

} // namespace

bool FaultPlan::Load(const QString& aPath, const QString& aProgram, FaultPlan& aPlan, QString& aError)
{
    if (!QFile::exists(aPath)) {
        return true;
    }
    QJsonObject root;
    if (!ReadJsonFile(aPath, root, aError)) {
        return false;
    }
    const QJsonValue programs = root.value(QLatin1String(kProgramsKey));
    if (!programs.isObject()) {
        aError = QStringLiteral("there is no object \"programs\"");
        return false;
    }
    const QJsonObject entries = programs.toObject();
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
        FaultPlan ofAnother;
        FaultPlan& target = entry.key() == aProgram ? aPlan : ofAnother;
        if (!ReadProgram(entry.key(), entry.value(), target, aError)) {
            return false;
        }
    }
    return true;
}

ReplyFault FaultPlan::OfMethod(const QString& aInterfaceName, const QString& aMethod) const
{
    return replies.value(aInterfaceName + QLatin1Char('.') + aMethod, ReplyFault::None);
}

} // namespace sim
