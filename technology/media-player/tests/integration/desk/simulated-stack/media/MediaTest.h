// A mass-storage source with a handful of audio files, and the proxies of its five objects.
#pragma once

#include "AudioFiles.h"
#include "StackFaults.h"
#include <MPL_Proxies.h>
#include <MPL_Types.h>

#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

/// Lets events be handled until the condition holds; false after five seconds.
bool Wait(const std::function<bool()>& aCondition);

/// The value of a reply that must come without an error.
template <class T>
T Value(QDBusPendingReply<T> aReply)
{
    aReply.waitForFinished();
    EXPECT_FALSE(aReply.isError()) << aReply.error().message().toStdString();
    return aReply.value();
}

inline void Done(QDBusPendingReply<> aReply)
{
    aReply.waitForFinished();
    EXPECT_FALSE(aReply.isError()) << aReply.error().message().toStdString();
}

/// The texts under aKey of some records.
QStringList Column(const QList<MPL::ResultDictionary>& aRecords, const QString& aKey);

class MediaTest : public testing::Test
{
protected:
    /// Where the source looks for media.
    static QString Folder();
    /// The four tracks of album "Tides" by "Wave" in four formats, each half a second long, and two others.
    static QString MakeStandardFiles();

    static void SetUpTestSuite();
    void SetUp() override;
    void TearDown() override;

    /// Starts the source with these reply faults (method: fault) and waits until it has indexed its media.
    void StartSource(const QMap<QString, QString>& aFaults = {});
    /// Fills the queue with the four tracks of the album and plays the first.
    void PlayAlbum();
    /// The records of the current browse level.
    QList<MPL::ResultDictionary> Records();
    /// Selects the record that has this text under this key.
    bool SelectByText(const QString& aKey, const QString& aText);

    QProcess m_Process;
    std::unique_ptr<StackFaults> m_Faults;
    std::unique_ptr<ComTalvexDBusMediaPlayerBrowserInterface> m_Browser;
    std::unique_ptr<ComTalvexDBusMediaPlayerPlaybackControlInterface> m_Control;
    std::unique_ptr<ComTalvexDBusMediaPlayerIndexerInfoInterface> m_Indexer;
    std::unique_ptr<ComTalvexDBusMediaPlayerMediaInfoInterface> m_Info;
    std::unique_ptr<ComTalvexDBusMediaPlayerPlayQueueInterface> m_Queue;
};
