#include "Calls.h"

#include "Files.h"
#include "Queries.h"
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>

#include <QDir>
#include <QHash>

#include <memory>

namespace chaos
{
namespace
{

using Environment = MPL_TestEnvironment;
using Fixture = MPL::MediaSourceTestFixture;
using Maker = std::function<Call(const Step& aStep)>;

// A call without arguments that returns bool.
Maker Plain(bool (*aFunction)())
{
    return [aFunction](const Step&) { return [aFunction] { return Outcome{aFunction()}; }; };
}

// The same for one that is told whether to start the data manager.
Maker WithDataManager(bool (*aFunction)(bool aActivateDataManager))
{
    return [aFunction](const Step&) { return [aFunction] { return Outcome{aFunction(true)}; }; };
}

// What returns nothing tells its failures otherwise.
Maker Void(void (*aFunction)())
{
    return [aFunction](const Step&) {
        return [aFunction] {
            aFunction();
            return Outcome{};
        };
    };
}

Maker OnObject(bool (*aFunction)(const QString& aObject))
{
    return [aFunction](const Step& aStep) {
        return [aFunction, object = aStep.object] { return Outcome{aFunction(object)}; };
    };
}

void LaunchAllSources()
{
    Environment::LaunchMediaSourceProcesses(true, true, {}, {}, {}, false);
}

bool SetEnvironment()
{
    return Environment::SetEnvironment(kMPLDefaultEnvironment, true);
}

bool LaunchSource(const QString& aProcess)
{
    return Environment::LaunchMediaSourceProcess(true, aProcess, true, false);
}

bool LaunchRemoteSource(const QString& aProcess)
{
    const QString port = QStringLiteral("4242");
    return Environment::LaunchRemoteMediaSourceProcess(true, aProcess, QStringLiteral("192.0.2.1"), port,
                                                       port, false, true);
}

bool LaunchTestSource()
{
    return Environment::LaunchTestMediaSourceProcess(true, 31, true, true);
}

bool LaunchManager()
{
    return Environment::LaunchMediaManagerProcess(true);
}

bool WaitForObjects(const QString& aService)
{
    return Environment::WaitForMediaSourceServiceObjects(aService, 1);
}

template <typename Proxy, Proxy* (*Create)()>
bool Creates()
{
    return std::unique_ptr<Proxy>(Create()) != nullptr;
}

Outcome UseFile()
{
    const QString file = QStringLiteral("/opt/talvex/test/media/SMALLMUSIC/tone1.flac");
    const QString copy = QDir(Environment::m_EnvironmentDirectory).filePath(QStringLiteral("tone1.flac"));
    const bool wasThere = QFile::exists(copy);
    const bool wasTrue = Environment::UseFile(file);
    return {wasTrue, {}, wasThere ? QStringLiteral("was there") : CompareCopy(file, copy)};
}

Outcome SetCredentials(const QString& aUser)
{
    Environment::SetPandoraCredentials(aUser, QStringLiteral("secret"));
    return {};
}

Outcome AddPandoraLogin()
{
    const bool wasTrue = Environment::AddPandoraLogin();
    return {wasTrue, {}, Environment::m_PandoraUserName};
}

Maker Just(Outcome (*aFunction)())
{
    return [aFunction](const Step&) { return aFunction; };
}

const QHash<int, Maker>& Makers()
{
    static const QHash<int, Maker> kMakers = [] {
        QHash<int, Maker> makers = Queries();
        const auto add = [&makers](Action aAction, const Maker& aMaker) {
            makers.insert(static_cast<int>(aAction), aMaker);
        };
        add(Action::LaunchBus, Plain(Environment::LaunchMPLTestDbusDaemon));
        add(Action::ProbeBus, Plain(Environment::IsMplTestDbusDaemonAlive));
        add(Action::SetUpFixture, Void(Fixture::SetUpTestCase));
        add(Action::TearDownFixture, Void(Fixture::TearDownTestCase));
        add(Action::SetEnvironment, Plain(SetEnvironment));
        add(Action::CleanEnvironment, Plain(Environment::CleanEnvironment));
        add(Action::UseFile, Just(UseFile));
        add(Action::Sterilize, WithDataManager(Environment::SterilizeEnvironment));
        add(Action::SetCredentials,
            [](const Step& aStep) { return [user = aStep.object] { return SetCredentials(user); }; });
        add(Action::AddPandoraLogin, Just(AddPandoraLogin));
        add(Action::ClearState, WithDataManager(Environment::ClearMPLState));
        add(Action::LaunchManager, Plain(LaunchManager));
        add(Action::LaunchSource, OnObject(LaunchSource));
        add(Action::LaunchRemoteSource, OnObject(LaunchRemoteSource));
        add(Action::LaunchAllSources, Void(LaunchAllSources));
        add(Action::LaunchTestSource, Plain(LaunchTestSource));
        add(Action::LaunchRecognition, Plain(Environment::LaunchRecognitionServer));
        add(Action::StopRecognition, Plain(Environment::StopRecognitionServerService));
        add(Action::KillManager, Plain(Environment::KillMediaManagerProcess));
        add(Action::KillSources, Plain(Environment::KillMediaSourceProcess));
        add(Action::KillTestSource, Plain(Environment::KillTestMediaSourceProcess));
        add(Action::KillHmi, Plain(Environment::KillHmiProcesses));
        add(Action::WaitForService, OnObject(Environment::WaitForServiceRunning));
        add(Action::WaitForObjects, OnObject(WaitForObjects));
        add(Action::AllSourcesAlive, Plain(Environment::AllMediaSourcesAlive));
        add(Action::AllSourcesTerminated, Plain(Environment::AllMediaSourcesTerminated));
        add(Action::CreateManagerProxy, Plain(Creates<ComTalvexDBusMediaPlayerMediaManagerInterface,
                                                      Environment::CreateMediaManagerProxy>));
        add(Action::CreateSimulatorProxy,
            Plain(Creates<ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface,
                          Environment::CreateSimulatorProxy>));
        add(Action::SlmLaunch, WithDataManager(Environment::SlmLaunchMediaServices));
        add(Action::SlmStop, Plain(Environment::SlmStopMediaServices));
        add(Action::SlmLaunchTuners, Plain(Environment::SlmLaunchTunerProcesses));
        add(Action::SlmStopTuners, Plain(Environment::SlmStopTunerProcesses));
        return makers;
    }();
    return kMakers;
}

} // namespace

Call Prepare(const Step& aStep)
{
    return Makers()[static_cast<int>(aStep.action)](aStep);
}

} // namespace chaos
