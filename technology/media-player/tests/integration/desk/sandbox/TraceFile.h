/// The trace that a run has left, for tests to look into.
#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

#include <string>
#include <vector>

namespace sandbox
{

class TraceFile
{
public:
    /// Fails the test when it is no trace.
    explicit TraceFile(const QString& aFile);

    /// What there is to say of the run as a whole.
    QString About(const char* aName) const { return m_About.value(QLatin1String(aName)).toString(); }

    /// The events of a category, such as "process", in order.
    QList<QJsonObject> Events(const char* aCategory) const;

    /// Those of that name.
    QList<QJsonObject> Events(const char* aCategory, const QString& aName) const;

    /// The first of that name; an empty one, and a failure, when there is none.
    QJsonObject Event(const char* aCategory, const QString& aName) const;

    static QString Argument(const QJsonObject& aEvent, const char* aName);
    static double Begin(const QJsonObject& aEvent) { return aEvent.value("ts").toDouble(); }
    static double End(const QJsonObject& aEvent);

    /// "name state" of each case, and of set-ups and tear-downs that did not go well.
    std::vector<std::string> CaseStates() const;

private:
    QJsonArray m_Events;
    QJsonObject m_About;
};

} // namespace sandbox
