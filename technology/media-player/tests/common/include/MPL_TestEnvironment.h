/// @file
/// The environment controller: brings the media-player stack under test into a known state and back.
///
/// It starts a private bus and switches all D-Bus traffic of the test program to it, launches and kills the
/// service processes or hands them to the lifecycle manager, waits for their names and objects, prepares the
/// environment directory and the persisted state, and asks the stack a few questions. Fixtures do most of
/// this for a test; call it directly for what a test needs beyond them:
///
///     if (!MPL_TestEnvironment::LaunchMPLTestDbusDaemon()) { return; }    // once, before any service starts
///     ASSERT_TRUE(MPL_TestEnvironment::LaunchMediaManagerProcess(true));
///     std::unique_ptr<ComTalvexDBusMediaPlayerMediaManagerInterface> manager(
///         MPL_TestEnvironment::CreateMediaManagerProxy());
///     ASSERT_TRUE(manager);
///     EXPECT_TRUE(MPL_TestEnvironment::KillMediaManagerProcess());
///
/// Everything is static, throws nothing and belongs to one thread, the one that runs the tests: nothing is
/// locked, every wait blocks that thread and runs no event loop. Unless a function says otherwise it returns
/// true on success and false on failure, leaves out-arguments unchanged on failure, skips the remaining steps
/// after the first that fails, and undoes nothing. Progress is logged at debug
/// level. A program that can't be started or killed, a service that answers with an error and a configuration
/// that can't be used are logged at critical level. Whatever else gives false says so at debug level or not
/// at all: a question whose answer is no, a null proxy, an unknown source's name, a wait that times out, a
/// remote source or a recognition server that can't be started, a file or directory that can't be used, and
/// the persisted state.
///
/// The times stated are those of the program's clock, with a bus and services that answer. Where these hang,
/// the host platform gives up 5 seconds after each question to the bus (a wait for a bus name asks 11 times),
/// 5 seconds after each look-up of objects (a wait for objects has 10), and 30 seconds after a job of the
/// lifecycle manager; Qt 25 seconds after each call of a method. A persisted state that another program has
/// locked costs under a second.
#pragma once

#include <MPL_IndexerInfoProxy.h>
#include <MPL_MediaManagerProxy.h>
#include <MPL_MediaSourceFactorySimulationProxy.h>
#include <MPL_MediaSourceProxy.h>
#include <MPL_TestEnvironmentNames.h>
#include <MPL_Types.h>

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QMap>
#include <QString>
#include <QStringList>

/// @{
/// The environment directory a test program starts with, and the persistence database inside it.
extern const QString kMPLDefaultEnvironment;
extern const QString kMPLDataManagerDb;
/// @}

/// @{
/// Media names of the prepared test media.
extern const QString TEST_MEDIA_SMALLMUSIC_NAME;
extern const QString TEST_MEDIA_LARGEMUSIC_NAME;
extern const QString TEST_MEDIA_MODIFIED_METADATA_NAME;
/// @}

/// @{
/// Device ids of the sources that the test media source exports, and their number.
extern const QString TEST_SOURCE_1_DEVICE_ID;
extern const QString TEST_SOURCE_2_DEVICE_ID;
extern const QString TEST_SOURCE_3_DEVICE_ID;
extern const int EXPECTED_NUMBER_OF_TEST_MEDIA_SOURCE;
/// @}

/// Brings the stack under test into a known state and back.
class MPL_TestEnvironment
{
public:
    /// Any proxy of a media source's `com.talvex.DBus.MediaPlayer.MediaSource` interface. Only the general
    /// proxy base is needed, so a ComTalvexDBusMediaPlayerMediaSourceInterface* is passed as it is, and so is
    /// a test's own proxy class.
    using MediaSourceClient = QDBusAbstractInterface;

    MPL_TestEnvironment() = delete;

    /// @name Bus
    /// @{

    /// Returns the connection that all test code shares: the private test bus after LaunchMPLTestDbusDaemon()
    /// succeeded, otherwise the system bus. The first call without a connection switches to the system bus
    /// and logs it. Copy the connection where a value is needed; its name() is "MPLTestDbus" on the test bus.
    static QDBusConnection& GetDbusConnection();

    /// Probes the private bus. Returns true when a connection to its address could be opened; it then stays
    /// registered under "MPLTestDbus". A failed probe leaves no connection behind. Does not wait, except for
    /// a daemon that accepts the connection and then says nothing: that blocks the probe as long as it lasts.
    static bool IsMplTestDbusDaemonAlive();

    /// Starts the private bus daemon unless one is alive already, and makes it the shared connection.
    /// Returns false, with the connection unchanged, when the daemon can't be started or does not answer 30
    /// probes. Blocks up to 30 seconds (see above for a daemon that hangs). The daemon outlives the test
    /// program.
    static bool LaunchMPLTestDbusDaemon();

    /// @}
    /// @name Processes and the lifecycle manager
    /// @{

    /// Terminates every process of this executable name: SIGTERM, again for a process that reappears under a
    /// new id, and SIGKILL after 10 seconds. Returns true when none is left (or none ran), false after about
    /// 15 seconds.
    static bool KillMediaProcess(const char* aName);

    /// Terminates the media manager, then the mount service, each as KillMediaProcess() does and only if it
    /// runs; the second is tried even when the first stays. Returns true when both are gone.
    static bool KillMediaManagerProcess();

    /// Terminates the test media source as KillMediaProcess() does.
    static bool KillTestMediaSourceProcess();

    /// Terminates the five media sources of MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES in that order. After the
    /// first that stays the others are not signalled.
    static bool KillMediaSourceProcess();

    /// Terminates the main display process, then the instrument cluster's.
    static bool KillHmiProcesses();

    /// Starts the recognition server, detached. Returns whether it started; does not wait for its bus name.
    static bool LaunchRecognitionServer();

    /// Sends SIGKILL to the recognition server. Always returns true; does not wait for its end.
    static bool StopRecognitionServerService();

    /// Resets the persisted state (see ClearMPLState()) and has the lifecycle manager start the mount
    /// service, the media manager and the media sources, in this order. Blocks until the lifecycle manager
    /// has reported on each.
    static bool SlmLaunchMediaServices(bool aActivateDataManager);

    /// Has the lifecycle manager stop the media manager, the mount service and the media sources, in this
    /// order. Blocks as above.
    static bool SlmStopMediaServices();

    /// Has the lifecycle manager stop the two tuner services. Blocks as above.
    static bool SlmStopTunerProcesses();
    /// The same for starting them.
    static bool SlmLaunchTunerProcesses();

    /// @}
    /// @name Waits and proxies
    /// @{

    /// Waits until the bus name is owned. Asks at once and then after pauses of 2 seconds; returns false
    /// after 10 pauses. A name that appears during the last pause still counts as missing.
    static bool WaitForServiceRunning(const QString& aServiceName);

    /// Waits until at least `aCount` objects of the service implement the interface: 10 look-ups with pauses
    /// of 100 milliseconds. `aPaths` receives what the last look-up found, on failure too. Meant to follow
    /// WaitForServiceRunning(), which does the long wait.
    static bool WaitForServiceObjects(const QString& aServiceName, unsigned int aCount,
                                      const QString& aInterfaceName, QStringList& aPaths);

    /// The same for the media-source interface, with the paths discarded.
    static bool WaitForMediaSourceServiceObjects(const QString& aServiceName, unsigned int aCount);

    /// True when all five media sources of MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES run; logs a line for each.
    static bool AllMediaSourcesAlive();

    /// True when none of them runs; logs the first that does.
    static bool AllMediaSourcesTerminated();

    /// Returns a new proxy of the media manager without a parent; the caller deletes it. Returns null when
    /// the manager's name is not owned (checked once) or when it does not export exactly one manager object.
    /// Waits for the object about a second; if that fails, the running test gets a non-fatal failure.
    static ComTalvexDBusMediaPlayerMediaManagerInterface* CreateMediaManagerProxy();

    /// Returns a new proxy of the test media source's simulation object without a parent; the caller deletes
    /// it. Returns null when the test media source's name is not owned or when it does not export exactly one
    /// simulation object. Does not wait.
    static ComTalvexDBusMediaPlayerMediaSourceFactorySimulationInterface* CreateSimulatorProxy();

    /// @}
    /// @name Launching
    /// Programs are started detached: they outlive the test program, and the Kill functions find them again
    /// by name. They are told to use the private test bus exactly when the shared connection is that bus.
    /// `aActivateDataManager` is passed to ClearMPLState(), whose result a launch ignores.
    /// @{

    /// Resets the persisted state, starts the mount service and the media manager unless they run, and waits
    /// for the manager's name and object. `aExtraArgument`, if not null, becomes the manager's first
    /// argument. Blocks up to about 23 seconds; the last 2 are always slept, to let the manager settle.
    static bool LaunchMediaManagerProcess(bool aActivateDataManager, const char* aExtraArgument = nullptr);

    /// Starts one of the media sources of MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES and waits up to 20 seconds for
    /// its bus name. Any other name gives false. The Pandora source gets the configuration that
    /// AddPandoraLogin() writes. Does not check whether the process runs already.
    static bool LaunchMediaSourceProcess(bool aActivateDataManager, const QString& aProcess,
                                         bool aResetActiveMediaSource, bool aVerbose);

    /// Starts the test media source unless it runs, and waits up to 20 seconds for its bus name. A name that
    /// does not appear is a non-fatal failure of the running test; the result is only that of the start.
    static bool LaunchTestMediaSourceProcess(bool aActivateDataManager, unsigned int aCapabilitiesOption,
                                             bool aResetActiveMediaSource, bool aCreatePlayQueue);

    /// Like LaunchMediaSourceProcess(), for a source that delegates to a remote computer. Only the
    /// mass-storage, disc and Apple sources are told of the remote computer, and none when `aRemoteIP` is
    /// empty. No login is written for the Pandora source.
    static bool LaunchRemoteMediaSourceProcess(bool aActivateDataManager, const QString& aProcess,
                                               QString aRemoteIP, QString aPort, QString aDdpPort,
                                               bool aVerbose, bool aResetActiveMediaSource);

    /// Starts all sources and waits for the name and one object of each: Apple, disc, mass storage, Pandora
    /// and Spotify; without a remote computer (`aRemoteIP` empty) only the last three. The first failure is a
    /// fatal failure of the running test and ends the function, so check HasFatalFailure(). Blocks up to
    /// about 41 seconds for each source.
    static void LaunchMediaSourceProcesses(bool aActivateDataManager, bool aResetActiveMediaSource,
                                           const QString& aRemoteIP, const QString& aPort,
                                           const QString& aDdpPort, bool aVerbose);

    /// @}
    /// @name Environment directory, configuration, persisted state
    /// @{

    /// Makes `aDirectory` the environment directory, creating it with its parents; with `aClean` its former
    /// content is removed. Returns false, with the old environment directory in force, when `aDirectory` is
    /// empty or can't be created.
    static bool SetEnvironment(const QString& aDirectory, bool aClean);

    /// Removes the files of the environment directory, but not its sub-directories and dot-files. Returns
    /// true only when nothing at all is listed afterwards; as a listing has "." and "..", this is so only for
    /// a directory that does not exist.
    static bool CleanEnvironment();

    /// Copies the file into the environment directory under its own name. Returns false when the path has no
    /// file name, can't be read, or a file of that name is there already.
    static bool UseFile(const QString& aFilePath);

    /// Stops the whole stack: kills the media sources, the test media source, the media manager and the mount
    /// service, then resets the persisted state. Blocks for the kills, 15 seconds for each that resists.
    static bool SterilizeEnvironment(bool aActivateDataManager);

    /// Writes "/var/talvex/media-player/mplUnitConfig.json": the installed media-player configuration with
    /// the current Pandora login. Writes nothing when the configuration can't be read or has no login.
    static bool AddPandoraLogin();

    /// Sets the login that the next AddPandoraLogin() writes; not checked.
    static void SetPandoraCredentials(const QString& aUserName, const QString& aPassword);

    /// Resets what the stack remembers between runs: the active source and its playback state. With
    /// `aActivateDataManager` the data-manager library is started before and shut down after. Without it the
    /// program must have started the library itself: on the host platform nothing is stored otherwise, and
    /// the result is false. Returns whether both were stored; blocks for the store's file access.
    static bool ClearMPLState(bool aActivateDataManager);

    /// @}
    /// @name Source queries
    /// Each call blocks until the reply is there or the D-Bus time-out has passed. Proxies stay the caller's.
    /// @{

    /// Asks an indexer for its status text. False for a null proxy or an error reply.
    static bool GetIndexStatus(ComTalvexDBusMediaPlayerIndexerInfoInterface* aIndexer, QString& aStatus);

    /// Asks an indexer for its progress in percent. False for a null proxy or an error reply.
    static bool GetIndexProgress(ComTalvexDBusMediaPlayerIndexerInfoInterface* aIndexer,
                                 unsigned int& aProgress);

    /// Waits until the mass-storage source's indexer at this object path reports "Indexing Completed" and 100
    /// percent; asks every 5 seconds, at most 100 times (500 seconds). Then the status text alone decides.
    /// False also when the indexer does not answer.
    static bool WaitForIndexFinished(const QString& aIndexerObjectPath);

    /// Asks a media source for the object path of one functionality (a word of MPL_FUNCTIONALITIES). False
    /// for a null proxy or an error reply.
    static bool GetMediaCapability(ComTalvexDBusMediaPlayerMediaSourceInterface* aSource,
                                   const QString& aCapability, QDBusObjectPath& aPath);

    /// Looks among the mass-storage service's sources for the one named `aSourceName`. Sets `aObjectPath` to
    /// its path and adds to `aCapabilities` the object path of each functionality it offers: browsing,
    /// playback control, index, media information, play queue. Returns false when no source of that name is
    /// found, be it that the service does not answer.
    static bool GetMediaSourceCapabilities(const QString& aSourceName,
                                           QMap<QString, QDBusObjectPath>& aCapabilities,
                                           QString& aObjectPath);

    /// Returns the source state ("ACTIVE" …) that a media source reports; empty on an error reply or when the
    /// report has none. `aClient` must not be null.
    static QString GetActiveSourceStatus(MediaSourceClient* aClient);

    /// Has the media manager make `aSource` the active source. False for a null manager, for a source that
    /// the manager does not list (service name and object path), and for an error reply; any other reply
    /// counts as done.
    static bool SetActiveMediaSource(const MPL::ServiceObject& aSource,
                                     ComTalvexDBusMediaPlayerMediaManagerInterface* aManager);

    /// @}

    /// The environment directory; changed by SetEnvironment() only.
    static QString m_EnvironmentDirectory;
    /// @{
    /// The login that AddPandoraLogin() writes; changed by SetPandoraCredentials() only.
    static QString m_PandoraUserName;
    static QString m_PandoraPassword;
    /// @}
    /// The shared connection, not connected at first; take it from GetDbusConnection().
    static QDBusConnection m_TestDbusConnection;
};
