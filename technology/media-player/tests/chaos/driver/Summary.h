/// How runs ended, by what went wrong in them.
#pragma once

#include "Promise.h"

#include <QMap>
#include <QString>

#include <array>

namespace chaos
{

enum class Ending { AllTrue, SomeFalse, Broken };

Ending EndingOf(const Observations& aSeen, const Breaches& aBreaches);

class Summary
{
public:
    void Add(const Schedule& aSchedule, Ending aEnding);

    int Runs() const { return m_Runs; }
    int Broken() const { return m_Broken; }

    /// A line for each kind of fault: runs that had it, and how they ended.
    QString Table() const;

private:
    using Counts = std::array<int, 3>; ///< by Ending

    QMap<QString, Counts> m_Faults;
    int m_Runs = 0;
    int m_Broken = 0;
};

} // namespace chaos
