/// A mass-storage source with a handful of audio files, and the proxies of its five objects.
#pragma once

#include "../StackFixture.h"
#include "AudioFiles.h"
#include <MPL_Proxies.h>

/// The texts under aKey of some records.
QStringList Column(const QList<MPL::ResultDictionary>& aRecords, const QString& aKey);

class MediaFixture : public StackFixture
{
protected:
    /// Where the source looks for media.
    static QString Folder();

    /// Makes the four tracks of album "Tides" by "Wave" in four formats, each half a second long, and two
    /// others; starts the source and waits until it has indexed them.
    void SetUp() override;
    void TearDown() override;

    /// Fills the queue with the four tracks of the album and plays the first.
    void PlayAlbum();
    /// The records of the current browse level.
    QList<MPL::ResultDictionary> Records();
    /// Selects the record that has this text under this key.
    bool SelectByText(const QString& aKey, const QString& aText);

    QProcess* m_Source = nullptr;
    std::unique_ptr<ComTalvexDBusMediaPlayerBrowserInterface> m_Browser;
    std::unique_ptr<ComTalvexDBusMediaPlayerPlaybackControlInterface> m_Control;
    std::unique_ptr<ComTalvexDBusMediaPlayerIndexerInfoInterface> m_Indexer;
    std::unique_ptr<ComTalvexDBusMediaPlayerMediaInfoInterface> m_Info;
    std::unique_ptr<ComTalvexDBusMediaPlayerPlayQueueInterface> m_Queue;
};
