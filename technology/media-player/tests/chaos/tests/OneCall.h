/// A run of one call as the tests of the promises make it: the call went well and nothing was wrong, until a
/// test says otherwise.
#pragma once

#include "Promise.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

namespace chaos
{

struct OneCall {
    explicit OneCall(Action aAction, const QString& aObject = {})
    {
        schedule.steps = {{aAction, aObject, 0, 0, 1}};
        seen.isComplete = true;
        seen.speed = 20;
        seen.calls.resize(1);
        TheCall().number = 1;
        TheCall().wasTrue = true;
        TheCall().before = Quiet();
        TheCall().after = Quiet();
    }

    CallSeen& TheCall() { return seen.calls.first(); }

    /// Something that goes wrong besides, with a number no call has.
    void Plan(Action aAction, const QString& aObject = {}, int aMilliseconds = 0)
    {
        schedule.steps.append({aAction, aObject, aMilliseconds, 0, 2});
    }

    void Log(const char* aLevel, const QString& aText)
    {
        TheCall().log.append({QLatin1String(aLevel), aText});
    }

    /// Whether it breaks the promise, and which it breaks at all.
    bool Breaks(const char* aPromise) const
    {
        for (const Breach& breach : Judge(schedule, seen)) {
            if (breach.promise == QLatin1String(aPromise)) {
                return true;
            }
        }
        return false;
    }
    QStringList Broken() const
    {
        QStringList broken;
        for (const Breach& breach : Judge(schedule, seen)) {
            broken << breach.promise;
        }
        return broken;
    }

    /// Nothing runs, and the files are as after a good start.
    static Moment Quiet()
    {
        Moment moment;
        moment.testBusAnswers = true;
        moment.database = QStringLiteral("whole");
        moment.configuration = QStringLiteral("absent");
        moment.files = 0;
        return moment;
    }

    Schedule schedule;
    Observations seen;
};

} // namespace chaos
