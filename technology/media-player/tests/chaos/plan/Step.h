/// One step of a chaos run: something that goes wrong, or a call of the library. Plain data.
#pragma once

#include <QString>

namespace chaos
{

enum class Action {
    // What a program does from its next start on.
    StartsLate,
    NeverOwnsItsName,
    ExportsTwoObjects,
    IgnoresSigterm,
    Crashes,
    Hangs,
    AnswersWithAnError,
    AnswersNever,
    AnswersWrongly,
    SignalsFirst,
    DiesAnswering,
    FaultsEnd,
    // What happens a moment after the next call has begun.
    IsKilled,
    IsStopped,
    IsStartedAnew,
    ProgramIsKilled,
    BusDies,
    BusStops,
    BusIsSlow,
    DatabaseIsLocked,
    // What is so from here on.
    NameIsTaken,
    LifecycleManagerRefuses,
    LifecycleManagerIsMute,
    DatabaseIsDamaged,
    ConfigurationIsDamaged,
    ConfigurationIsWhole,
    DiskIsFull,
    DiskHasRoom,
    // Calls of the library.
    LaunchBus,
    ProbeBus,
    SetUpFixture,
    TearDownFixture,
    SetEnvironment,
    CleanEnvironment,
    UseFile,
    Sterilize,
    SetCredentials,
    AddPandoraLogin,
    ClearState,
    LaunchManager,
    LaunchSource,
    LaunchRemoteSource,
    LaunchAllSources,
    LaunchTestSource,
    LaunchRecognition,
    StopRecognition,
    KillManager,
    KillSources,
    KillTestSource,
    KillHmi,
    WaitForService,
    WaitForObjects,
    AllSourcesAlive,
    AllSourcesTerminated,
    CreateManagerProxy,
    CreateSimulatorProxy,
    GetIndexStatus,
    GetIndexProgress,
    WaitForIndex,
    GetCapability,
    GetCapabilities,
    GetActiveStatus,
    SetActiveSource,
    SlmLaunch,
    SlmStop,
    SlmLaunchTuners,
    SlmStopTuners
};

/// How a step takes part in a run.
enum class Kind {
    Fault,        ///< written for the programs that start from now on
    Event,        ///< happens `at` milliseconds after the next call has begun
    Surroundings, ///< is done at once, and stays
    Call          ///< is what the run is about
};

struct Step {
    Action action;
    QString object;       ///< a program, a service, or a program and a method of it; empty for none
    int milliseconds = 0; ///< how late, how long, or how soon
    int at = 0;           ///< of an event
    int number = 0;       ///< place in the seed's whole schedule, from 1 on
};

Kind KindOf(Action aAction);

/// The action alone, as a summary names it: "is killed".
QString WordOf(Action aAction);

/// The whole step as a sentence: "1000 ms after the next call has begun media_manager is killed".
QString InWords(const Step& aStep);

} // namespace chaos
