/// @file
/// A test client of one media source's PlaybackControl interface: every method as a blocking call with a
/// boolean result, the source's current functionalities as a map, and hooks for what the source signals.
///
///     class Listener : public MPL::PlaybackClient
///     {
///     public:
///         using PlaybackClient::PlaybackClient;
///         void HandlePlayStateChanged(const QString& aState) override { state = aState; }
///         QString state;
///     };
///
///     Listener client(service, path, &thread);   // path of the source's PlaybackControl object
///     ASSERT_TRUE(client.Resume());
///
/// The proxy lives on the given thread and is deleted when that thread finishes, not with the client. The
/// slots, and so the hooks, run on the client's own thread, which needs an event loop for them: move the
/// client to a running thread to hear of signals while a test blocks.
#pragma once

#include <MPL_PlaybackControlProxy.h>
#include <MPL_Types.h>

#include <QMap>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

class QThread;

namespace MPL
{

/// Drives the playback control of one media source.
class PlaybackClient : public QObject
{
    Q_OBJECT

public:
    /// One functionality of the source.
    struct Functionality {
        /// As the source's text names it.
        QString name;
        /// True only for the exact state text "ENABLED".
        bool enabled = false;
        /// Its options, in the order of the text.
        QStringList options;
    };

    /// Makes a client without a proxy: every command fails until CreateProxy() is called.
    explicit PlaybackClient(QThread* aThread);

    /// Makes a client with a proxy, see CreateProxy().
    PlaybackClient(const QString& aService, const QString& aPath, QThread* aThread);

    /// Makes the proxy on the shared connection, moves it to the client's thread of the constructor and
    /// connects its signals. The end of that thread deletes it; a thread that never ends never does. Without
    /// a thread there is no proxy, and one critical line is logged. May block for one round trip to the bus.
    void CreateProxy(const QString& aService, const QString& aPath);

    /// @name Commands
    /// @{

    /// Each sends the D-Bus method of its name and blocks the calling thread until the reply is there or the
    /// D-Bus time-out has passed. Returns true when the call completed without an error, whatever boolean the
    /// source answered with. Otherwise, and without a proxy, one critical line is logged.
    bool NextTrack();
    bool PreviousTrack();
    bool Pause();
    bool Resume();
    /// Takes a word of MPL_SEEK_MODES.
    bool SeekTrack(const QString& aSeekMode);
    /// Takes the position in milliseconds from the start of the track.
    bool SeekToTime(unsigned int aPosition);
    /// Takes the distance in milliseconds from here, backwards if negative.
    bool Jump(int aOffset);
    bool SetTrackIndex(unsigned int aIndex);
    /// Take words of MPL_REPEAT_MODES, MPL_SHUFFLE_MODES and MPL_PLAYBACK_SPEEDS.
    bool SetRepeatMode(const QString& aMode);
    bool SetShuffleMode(const QString& aMode);
    bool SetSpeedMode(const QString& aMode);
    /// @}

    /// @name Queries
    /// @{

    /// Like the commands; on success the answer is in the argument, on failure the argument is unchanged.
    bool GetAllSpeedModes(QStringList& aModes);
    bool GetFunctionalities(QString& aFunctionalities);
    bool GetPlayState(QString& aState);
    bool GetRepeatMode(QString& aMode);
    bool GetShuffleMode(QString& aMode);
    bool GetSpeedMode(QString& aMode);
    /// @}

    /// Adds the functionalities of the text to `aMap`, as MPL::TestUtils::GetAvailableFunctionMap() does.
    static void GetAvailableFunctionMap(const QString& aText,
                                        QMap<QString, MPL::PlaybackClient::Functionality>& aMap);

    /// @name Hooks
    /// @{

    /// Called on the client's thread. HandleError() gets the whole text of an error event and logs it at
    /// debug level; the others do nothing here.
    virtual void HandleError(const QString& aEvent);
    virtual void HandleFunctionalitiesChanged(const QString& aFunctions);
    virtual void HandlePlayStateChanged(const QString& aPlayState);
    virtual void HandleRepeatModeChanged(const QString& aRepeatMode);
    virtual void HandleShuffleModeChanged(const QString& aShuffleMode);
    virtual void HandleSpeedModeChanged(const QString& aSpeed);
    /// @}

private Q_SLOTS:
    void Event(const QString& aEvent);
    /// Also puts the source's repeat and shuffle modes off, once in a client's life, when the text first
    /// offers both modes.
    void FunctionalitiesChanged(const QString& aFunctions);
    void PlayStateChanged(const QString& aPlayState);
    void RepeatModeChanged(const RepeatMode& aRepeatMode);
    void ShuffleModeChanged(const ShuffleMode& aShuffleMode);
    void SpeedModeChanged(const QString& aSpeed);

protected:
    /// The thread of the constructor, on which the proxy lives.
    QThread* m_Thread;
    /// The functionalities that the source signalled last.
    QMap<QString, Functionality> m_Functionalities;
    /// For derived clients to set: while true, the map above stays and its hook is not called.
    bool m_FunctionalityUpdatesDisabled = false;
    /// Null when there is none, and once the thread's end has deleted it.
    QPointer<ComTalvexDBusMediaPlayerPlaybackControlInterface> m_Proxy;
    /// True once the modes were put off.
    bool m_StateReset = false;
};

} // namespace MPL
