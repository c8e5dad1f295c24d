#include "Step.h"

#include <algorithm>
#include <iterator>

namespace chaos
{
namespace
{

struct Word {
    Action action;
    Kind kind;
    const char* name;
    const char* sentence; ///< %1 is the object, %2 the milliseconds, %3 the moment
};

constexpr Word kWords[] = {
    {Action::StartsLate, Kind::Fault, "starts late", "%1 starts %2 ms late"},
    {Action::NeverOwnsItsName, Kind::Fault, "is deaf", "%1 never owns its bus name"},
    {Action::ExportsTwoObjects, Kind::Fault, "exports two objects", "%1 exports two objects"},
    {Action::IgnoresSigterm, Kind::Fault, "ignores SIGTERM", "%1 ignores SIGTERM"},
    {Action::Crashes, Kind::Fault, "crashes", "%1 crashes %2 ms after its start"},
    {Action::Hangs, Kind::Fault, "hangs", "%1 hangs %2 ms after its start"},
    {Action::AnswersWithAnError, Kind::Fault, "answers with an error", "%1 answers with an error"},
    {Action::AnswersNever, Kind::Fault, "answers never", "%1 is never answered"},
    {Action::AnswersWrongly, Kind::Fault, "answers wrongly", "%1 answers with a wrong signature"},
    {Action::SignalsFirst, Kind::Fault, "signals first", "%1 signals before it answers"},
    {Action::DiesAnswering, Kind::Fault, "dies answering", "%1 kills its program"},
    {Action::FaultsEnd, Kind::Fault, "faults end", "programs that start from here on have no faults"},
    {Action::IsKilled, Kind::Event, "is killed", "%3 ms after the next call has begun %1 is killed"},
    {Action::IsStopped, Kind::Event, "is stopped", "%3 ms after the next call has begun %1 is stopped"},
    {Action::IsStartedAnew, Kind::Event, "is started anew",
     "%3 ms after the next call has begun %1 is killed and started anew"},
    {Action::ProgramIsKilled, Kind::Event, "program is killed",
     "%3 ms after the next call has begun this program is killed, and another hands the stack back"},
    {Action::BusDies, Kind::Event, "bus dies", "%3 ms after the next call has begun the bus is killed"},
    {Action::BusStops, Kind::Event, "bus stops",
     "%3 ms after the next call has begun the bus stops for %2 ms"},
    {Action::BusIsSlow, Kind::Event, "bus is slow",
     "%3 ms after the next call has begun the bus runs a tenth of the time, for %2 ms"},
    {Action::DatabaseIsLocked, Kind::Event, "database is locked",
     "%3 ms after the next call has begun the database is locked for %2 ms"},
    {Action::NameIsTaken, Kind::Surroundings, "name is taken",
     "another process takes the bus name of %1 and answers nothing"},
    {Action::LifecycleManagerRefuses, Kind::Surroundings, "lifecycle manager refuses",
     "a lifecycle manager comes that refuses everything"},
    {Action::LifecycleManagerIsMute, Kind::Surroundings, "lifecycle manager is mute",
     "a lifecycle manager comes that answers nothing"},
    {Action::DatabaseIsDamaged, Kind::Surroundings, "database is damaged", "the database is damaged"},
    {Action::ConfigurationIsDamaged, Kind::Surroundings, "configuration is damaged",
     "the configuration becomes half of itself"},
    {Action::ConfigurationIsWhole, Kind::Surroundings, "configuration is whole",
     "the configuration is whole again"},
    {Action::DiskIsFull, Kind::Surroundings, "disk is full", "the disk is full but for %2 bytes"},
    {Action::DiskHasRoom, Kind::Surroundings, "disk has room", "the disk has room again"},
    {Action::LaunchBus, Kind::Call, "LaunchMPLTestDbusDaemon", ""},
    {Action::ProbeBus, Kind::Call, "IsMplTestDbusDaemonAlive", ""},
    {Action::SetUpFixture, Kind::Call, "MediaSourceTestFixture::SetUpTestCase", ""},
    {Action::TearDownFixture, Kind::Call, "MediaSourceTestFixture::TearDownTestCase", ""},
    {Action::SetEnvironment, Kind::Call, "SetEnvironment", ""},
    {Action::CleanEnvironment, Kind::Call, "CleanEnvironment", ""},
    {Action::UseFile, Kind::Call, "UseFile", ""},
    {Action::Sterilize, Kind::Call, "SterilizeEnvironment", ""},
    {Action::SetCredentials, Kind::Call, "SetPandoraCredentials", ""},
    {Action::AddPandoraLogin, Kind::Call, "AddPandoraLogin", ""},
    {Action::ClearState, Kind::Call, "ClearMPLState", ""},
    {Action::LaunchManager, Kind::Call, "LaunchMediaManagerProcess", ""},
    {Action::LaunchSource, Kind::Call, "LaunchMediaSourceProcess", ""},
    {Action::LaunchRemoteSource, Kind::Call, "LaunchRemoteMediaSourceProcess", ""},
    {Action::LaunchAllSources, Kind::Call, "LaunchMediaSourceProcesses", ""},
    {Action::LaunchTestSource, Kind::Call, "LaunchTestMediaSourceProcess", ""},
    {Action::LaunchRecognition, Kind::Call, "LaunchRecognitionServer", ""},
    {Action::StopRecognition, Kind::Call, "StopRecognitionServerService", ""},
    {Action::KillManager, Kind::Call, "KillMediaManagerProcess", ""},
    {Action::KillSources, Kind::Call, "KillMediaSourceProcess", ""},
    {Action::KillTestSource, Kind::Call, "KillTestMediaSourceProcess", ""},
    {Action::KillHmi, Kind::Call, "KillHmiProcesses", ""},
    {Action::WaitForService, Kind::Call, "WaitForServiceRunning", ""},
    {Action::WaitForObjects, Kind::Call, "WaitForMediaSourceServiceObjects", ""},
    {Action::AllSourcesAlive, Kind::Call, "AllMediaSourcesAlive", ""},
    {Action::AllSourcesTerminated, Kind::Call, "AllMediaSourcesTerminated", ""},
    {Action::CreateManagerProxy, Kind::Call, "CreateMediaManagerProxy", ""},
    {Action::CreateSimulatorProxy, Kind::Call, "CreateSimulatorProxy", ""},
    {Action::GetIndexStatus, Kind::Call, "GetIndexStatus", ""},
    {Action::GetIndexProgress, Kind::Call, "GetIndexProgress", ""},
    {Action::WaitForIndex, Kind::Call, "WaitForIndexFinished", ""},
    {Action::GetCapability, Kind::Call, "GetMediaCapability", ""},
    {Action::GetCapabilities, Kind::Call, "GetMediaSourceCapabilities", ""},
    {Action::GetActiveStatus, Kind::Call, "GetActiveSourceStatus", ""},
    {Action::SetActiveSource, Kind::Call, "SetActiveMediaSource", ""},
    {Action::SlmLaunch, Kind::Call, "SlmLaunchMediaServices", ""},
    {Action::SlmStop, Kind::Call, "SlmStopMediaServices", ""},
    {Action::SlmLaunchTuners, Kind::Call, "SlmLaunchTunerProcesses", ""},
    {Action::SlmStopTuners, Kind::Call, "SlmStopTunerProcesses", ""}};

const Word& Find(Action aAction)
{
    return *std::find_if(std::begin(kWords), std::end(kWords),
                         [aAction](const Word& aWord) { return aWord.action == aAction; });
}

} // namespace

Kind KindOf(Action aAction)
{
    return Find(aAction).kind;
}

QString WordOf(Action aAction)
{
    return QString::fromLatin1(Find(aAction).name);
}

QString InWords(const Step& aStep)
{
    const Word& word = Find(aStep.action);
    if (word.kind == Kind::Call) {
        return QStringLiteral("%1(%2)").arg(QLatin1String(word.name), aStep.object);
    }
    QString sentence = QString::fromLatin1(word.sentence);
    // Not one arg() of all: a sentence need not name each.
    sentence.replace(QLatin1String("%1"), aStep.object);
    sentence.replace(QLatin1String("%2"), QString::number(aStep.milliseconds));
    return sentence.replace(QLatin1String("%3"), QString::number(aStep.at));
}

} // namespace chaos
