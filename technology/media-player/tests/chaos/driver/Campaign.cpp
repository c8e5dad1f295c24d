#include "Campaign.h"

#include "Report.h"
#include "Trial.h"

#include <QEventLoop>

#include <cstdio>

namespace chaos
{
namespace
{

// Many that break are broken by the same: the first of them tell enough.
constexpr int kShrunk = 5;

} // namespace

int Campaign::Run()
{
    m_Timer.start();
    QEventLoop loop;
    m_WhenAllEnded = [&loop] { loop.quit(); };
    for (int job = 0; job < m_Options.jobs; ++job) {
        StartNext();
    }
    if (m_Ended < m_Options.runs) {
        loop.exec();
    }
    for (const Suspect& suspect : m_Suspects) {
        m_Summary.Add(suspect.schedule, Confirm(suspect) ? Ending::Broken : Ending::SomeFalse);
    }
    std::printf("\n%s\n%d runs in %lld s, %d broke a promise\n", qPrintable(m_Summary.Table()),
                m_Summary.Runs(), m_Timer.elapsed() / 1000, m_Summary.Broken());
    return m_Summary.Broken();
}

void Campaign::StartNext()
{
    if (m_Started == m_Options.runs) {
        return;
    }
    const Schedule schedule = DrawSchedule(m_Options.firstSeed + static_cast<quint64>(m_Started++));
    Trial::Start(schedule, m_Options.speed,
                 [this, schedule](const Observations& aSeen) { Take(schedule, aSeen); });
}

void Campaign::Take(const Schedule& aSchedule, const Observations& aSeen)
{
    const Breaches breaches = Judge(aSchedule, aSeen);
    if (breaches.isEmpty()) {
        m_Summary.Add(aSchedule, EndingOf(aSeen, breaches));
    } else {
        m_Suspects.append({aSchedule, aSeen});
        std::printf("seed %llu is to be looked at again: %s at step %d\n", aSchedule.seed,
                    qPrintable(breaches.first().promise), breaches.first().number);
    }
    ++m_Ended;
    TellProgress();
    StartNext();
    if (m_Ended == m_Options.runs) {
        m_WhenAllEnded();
    }
}

void Campaign::TellProgress() const
{
    constexpr int kEvery = 50;
    if (m_Ended % kEvery == 0 || m_Ended == m_Options.runs) {
        std::printf("%d of %d runs after %lld s, %d to look at again\n", m_Ended, m_Options.runs,
                    m_Timer.elapsed() / 1000, static_cast<int>(m_Suspects.size()));
        std::fflush(stdout);
    }
}

// A run that was only late may have been so because of the machine: what counts is how it is when nothing
// else runs and time passes more slowly.
bool Campaign::Confirm(const Suspect& aSuspect)
{
    Breaches breaches = Judge(aSuspect.schedule, aSuspect.seen);
    double speed = m_Options.speed;
    if (AreOnlyLate(breaches)) {
        speed = kCarefulSpeed;
        breaches = Judge(aSuspect.schedule, Try(aSuspect.schedule, speed));
    }
    if (breaches.isEmpty()) {
        return false;
    }
    Report(aSuspect.schedule, breaches, speed, ++m_Reported <= kShrunk);
    return true;
}

} // namespace chaos
