#include "PlayModes.h"

#include "CapabilityTexts.h"
#include <MPL_MediaPlayerLib.h>

#include <QHash>

namespace sim
{

PlayModes::PlayModes()
    : m_Repeat(MPL::MPL_REPEAT_MODE_REPEAT_MODE_OFF),
      m_Shuffle(MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF),
      m_Speed(MPL::MPL_PLAYBACK_SPEED_SPEED_1X)
{
}

bool PlayModes::SetRepeat(const QString& aMode)
{
    return Set(m_Repeat, aMode, OptionsOf(MPL::MPL_REPEAT_MODES), QStringLiteral("repeat mode"),
               &PlayModes::RepeatChanged);
}

bool PlayModes::SetShuffle(const QString& aMode)
{
    return Set(m_Shuffle, aMode, OptionsOf(MPL::MPL_SHUFFLE_MODES), QStringLiteral("shuffle mode"),
               &PlayModes::ShuffleChanged);
}

bool PlayModes::SetSpeed(const QString& aMode)
{
    return Set(m_Speed, aMode, OptionsOf(MPL::MPL_PLAYBACK_SPEEDS), QStringLiteral("speed"),
               &PlayModes::SpeedChanged);
}

bool PlayModes::Check(const QString& aMode, const QStringList& aWords, const QString& aKind)
{
    if (!aWords.contains(aMode)) {
        Q_EMIT Failed(MPL::MPL_EVENT_UNRECOGNIZED_FORMAT,
                      QStringLiteral("\"%1\" is no %2.").arg(aMode, aKind));
        return false;
    }
    return true;
}

bool PlayModes::RepeatsTrack() const
{
    return m_Repeat == MPL::MPL_REPEAT_MODE_REPEAT_MODE_ONE;
}

bool PlayModes::RepeatsQueue() const
{
    return m_Repeat == MPL::MPL_REPEAT_MODE_REPEAT_MODE_ALL;
}

bool PlayModes::Shuffles() const
{
    return m_Shuffle == MPL::MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON;
}

double PlayModes::Rate() const
{
    static const QHash<QString, double> kRates{{MPL::MPL_PLAYBACK_SPEED_SPEED_1_2X, 0.5},
                                               {MPL::MPL_PLAYBACK_SPEED_SPEED_2X, 2},
                                               {MPL::MPL_PLAYBACK_SPEED_SPEED_4X, 4}};
    return kRates.value(m_Speed, 1);
}

bool PlayModes::Set(QString& aKept, const QString& aMode, const QStringList& aWords, const QString& aKind,
                    Signal aChanged)
{
    if (!Check(aMode, aWords, aKind)) {
        return false;
    }
    if (aKept != aMode) {
        aKept = aMode;
        Q_EMIT(this->*aChanged)(aMode);
    }
    return true;
}

} // namespace sim
