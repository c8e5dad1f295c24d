#include "Lines.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace chaos
{
namespace
{

const QString kBegin = QStringLiteral("begin");
const QString kEnded = QStringLiteral("ended");
const QString kComplete = QStringLiteral("complete");

QByteArray Line(const QString& aKind, const QJsonValue& aContent)
{
    return QJsonDocument(QJsonObject{{aKind, aContent}}).toJson(QJsonDocument::Compact) + '\n';
}

QStringList ToTexts(const QJsonValue& aValue)
{
    return aValue.toVariant().toStringList();
}

QJsonArray ToJson(const QVector<SeenProcess>& aProcesses)
{
    QJsonArray array;
    for (const SeenProcess& process : aProcesses) {
        array << QJsonArray{process.name, process.pid, process.byLifecycleManager};
    }
    return array;
}

QJsonObject ToJson(const Moment& aMoment)
{
    return {{"processes", ToJson(aMoment.processes)},
            {"testBusAnswers", aMoment.testBusAnswers},
            {"names", QJsonArray::fromStringList(aMoment.names)},
            {"database", aMoment.database},
            {"storedSource", aMoment.storedSource},
            {"configuration", aMoment.configuration},
            {"files", aMoment.files}};
}

Moment ToMoment(const QJsonObject& aObject)
{
    Moment moment;
    const QJsonArray processes = aObject["processes"].toArray();
    for (const QJsonValue& process : processes) {
        moment.processes.append({process[0].toString(), process[1].toInt(), process[2].toBool()});
    }
    moment.testBusAnswers = aObject["testBusAnswers"].toBool();
    moment.names = ToTexts(aObject["names"]);
    moment.database = aObject["database"].toString();
    moment.storedSource = aObject["storedSource"].toString();
    moment.configuration = aObject["configuration"].toString();
    moment.files = aObject["files"].toInt();
    return moment;
}

CallSeen ToCall(const QJsonObject& aObject)
{
    CallSeen call;
    call.number = aObject["number"].toInt();
    call.wasTrue = aObject["wasTrue"].toBool();
    call.evidence = aObject["evidence"].toString();
    call.changed = ToTexts(aObject["changed"]);
    call.tookMs = static_cast<qint64>(aObject["tookMs"].toDouble());
    const QJsonArray log = aObject["log"].toArray();
    for (const QJsonValue& line : log) {
        call.log.append({line[0].toString(), line[1].toString()});
    }
    call.failures = ToTexts(aObject["failures"]);
    call.disturbed = ToTexts(aObject["disturbed"]);
    call.before = ToMoment(aObject["before"].toObject());
    call.after = ToMoment(aObject["after"].toObject());
    return call;
}

} // namespace

QByteArray BeginLine(int aNumber)
{
    return Line(kBegin, aNumber);
}

QByteArray EndedLine(const CallSeen& aCall)
{
    QJsonArray log;
    for (const LogLine& line : aCall.log) {
        log << QJsonArray{line.level, line.text};
    }
    return Line(kEnded, QJsonObject{{"number", aCall.number},
                                    {"wasTrue", aCall.wasTrue},
                                    {"evidence", aCall.evidence},
                                    {"changed", QJsonArray::fromStringList(aCall.changed)},
                                    {"tookMs", static_cast<double>(aCall.tookMs)},
                                    {"log", log},
                                    {"failures", QJsonArray::fromStringList(aCall.failures)},
                                    {"disturbed", QJsonArray::fromStringList(aCall.disturbed)},
                                    {"before", ToJson(aCall.before)},
                                    {"after", ToJson(aCall.after)}});
}

QByteArray CompleteLine()
{
    return Line(kComplete, true);
}

void Take(const QByteArray& aLine, Observations& aObservations)
{
    const QJsonObject line = QJsonDocument::fromJson(aLine).object();
    if (line.contains(kBegin)) {
        aObservations.begun = line[kBegin].toInt();
    } else if (line.contains(kEnded)) {
        aObservations.calls.append(ToCall(line[kEnded].toObject()));
    } else if (line.contains(kComplete)) {
        aObservations.isComplete = true;
    }
}

} // namespace chaos
