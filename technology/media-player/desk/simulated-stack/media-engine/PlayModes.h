// How the queue is played: repeat, shuffle and speed.
#pragma once

#include <QObject>
#include <QStringList>

namespace sim
{

/// Each setter takes a word of its group. Any other word changes nothing and emits Failed.
class PlayModes : public QObject
{
    Q_OBJECT
public:
    PlayModes();

    bool SetRepeat(const QString& aMode);
    bool SetShuffle(const QString& aMode);
    bool SetSpeed(const QString& aMode);
    /// Whether `aMode` is one of `aWords`; emits Failed, with `aKind` in the text, when it is none.
    bool Check(const QString& aMode, const QStringList& aWords, const QString& aKind);

    QString Repeat() const { return m_Repeat; }
    QString Shuffle() const { return m_Shuffle; }
    QString Speed() const { return m_Speed; }

    bool RepeatsTrack() const;
    bool RepeatsQueue() const;
    bool Shuffles() const;
    /// Milliseconds of the track per millisecond of time.
    double Rate() const;

Q_SIGNALS:
    void RepeatChanged(const QString& aMode);
    void ShuffleChanged(const QString& aMode);
    void SpeedChanged(const QString& aMode);
    void Failed(const QString& aEvent, const QString& aText);

private:
    using Signal = void (PlayModes::*)(const QString&);

    bool Set(QString& aKept, const QString& aMode, const QStringList& aWords, const QString& aKind,
             Signal aChanged);

    QString m_Repeat;
    QString m_Shuffle;
    QString m_Speed;
};

} // namespace sim
