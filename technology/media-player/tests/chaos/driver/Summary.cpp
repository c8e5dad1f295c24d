#include "Summary.h"

#include <QSet>

#include <algorithm>

namespace chaos
{

Ending EndingOf(const Observations& aSeen, const Breaches& aBreaches)
{
    if (!aBreaches.isEmpty()) {
        return Ending::Broken;
    }
    const bool allTrue = std::all_of(aSeen.calls.begin(), aSeen.calls.end(),
                                     [](const CallSeen& aCall) { return aCall.wasTrue; });
    return allTrue ? Ending::AllTrue : Ending::SomeFalse;
}

void Summary::Add(const Schedule& aSchedule, Ending aEnding)
{
    ++m_Runs;
    m_Broken += aEnding == Ending::Broken ? 1 : 0;
    QSet<QString> faults;
    for (const Step& step : aSchedule.steps) {
        if (KindOf(step.action) != Kind::Call) {
            faults.insert(WordOf(step.action));
        }
    }
    for (const QString& fault : faults) {
        ++m_Faults[fault][static_cast<size_t>(aEnding)];
    }
}

QString Summary::Table() const
{
    const QString line = QStringLiteral("%1 %2 %3 %4 %5\n");
    QString table = line.arg(QStringLiteral("fault"), -28)
                        .arg(QStringLiteral("runs"), 7)
                        .arg(QStringLiteral("all true"), 9)
                        .arg(QStringLiteral("some false"), 11)
                        .arg(QStringLiteral("broken"), 7);
    for (auto fault = m_Faults.begin(); fault != m_Faults.end(); ++fault) {
        const auto& [allTrue, someFalse, broken] = fault.value();
        table += line.arg(fault.key(), -28)
                     .arg(allTrue + someFalse + broken, 7)
                     .arg(allTrue, 9)
                     .arg(someFalse, 11)
                     .arg(broken, 7);
    }
    return table;
}

} // namespace chaos
