/// Many runs side by side, each with a seed of its own, and what came of them.
#pragma once

#include "Promise.h"
#include "Summary.h"

#include <QElapsedTimer>
#include <QObject>

#include <functional>

namespace chaos
{

struct CampaignOptions {
    quint64 firstSeed = 1;
    int runs = 1;
    int jobs = 1;
    double speed = 20;
};

class Campaign : public QObject
{
public:
    explicit Campaign(const CampaignOptions& aOptions) : m_Options(aOptions) {}

    /// Runs them all, prints progress, each broken promise with its smallest schedule, and the table. Returns
    /// the number of runs that broke a promise.
    int Run();

private:
    struct Suspect {
        Schedule schedule;
        Observations seen;
    };

    void StartNext();
    void Take(const Schedule& aSchedule, const Observations& aSeen);
    void TellProgress() const;
    bool Confirm(const Suspect& aSuspect);

    CampaignOptions m_Options;
    Summary m_Summary;
    QVector<Suspect> m_Suspects;
    QElapsedTimer m_Timer;
    int m_Reported = 0;
    int m_Started = 0;
    int m_Ended = 0;
    std::function<void()> m_WhenAllEnded;
};

} // namespace chaos
