#include "TraceFile.h"

#include "SandboxRun.h"

#include <QJsonDocument>

namespace sandbox
{

TraceFile::TraceFile(const QString& aFile)
{
    QJsonParseError error;
    const QJsonDocument trace = QJsonDocument::fromJson(ReadFile(aFile), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << qPrintable(aFile + ": " + error.errorString());
    m_Events = trace.object().value("traceEvents").toArray();
    m_About = trace.object().value("otherData").toObject();
}

QList<QJsonObject> TraceFile::Events(const char* aCategory) const
{
    QList<QJsonObject> events;
    for (const QJsonValue& event : m_Events) {
        if (event.toObject().value("cat") == QLatin1String(aCategory)) {
            events += event.toObject();
        }
    }
    return events;
}

QList<QJsonObject> TraceFile::Events(const char* aCategory, const QString& aName) const
{
    QList<QJsonObject> events;
    for (const QJsonObject& event : Events(aCategory)) {
        if (event.value("name") == aName) {
            events += event;
        }
    }
    return events;
}

QJsonObject TraceFile::Event(const char* aCategory, const QString& aName) const
{
    const QList<QJsonObject> events = Events(aCategory, aName);
    EXPECT_FALSE(events.isEmpty()) << aCategory << ' ' << qPrintable(aName) << " is not in the trace";
    return events.value(0);
}

QString TraceFile::Argument(const QJsonObject& aEvent, const char* aName)
{
    return aEvent.value("args").toObject().value(QLatin1String(aName)).toVariant().toString();
}

double TraceFile::End(const QJsonObject& aEvent)
{
    return Begin(aEvent) + aEvent.value("dur").toDouble();
}

// A set-up and tear-down that went well is told when it takes long enough, which nobody knows before.
std::vector<std::string> TraceFile::CaseStates() const
{
    std::vector<std::string> states;
    for (const QJsonObject& event : Events("case")) {
        const QString state = event.value("name").toString() + " " + Argument(event, "state");
        if (!state.endsWith("-up ok") && !state.endsWith("-down ok")) {
            states.push_back(state.toStdString());
        }
    }
    return states;
}

} // namespace sandbox
