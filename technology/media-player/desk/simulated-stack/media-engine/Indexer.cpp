#include "Indexer.h"

#include "MediaLibrary.h"
#include "TagReader.h"
#include <MPL_MediaPlayerLib.h>

#include <QDir>
#include <QDirIterator>

namespace sim
{
namespace
{

// The status while a run is under way; the vocabulary has words only for before and after.
const QString kIndexing = QStringLiteral("Indexing");

QStringList AudioFilesIn(const QString& aFolder)
{
    QStringList files;
    if (aFolder.isEmpty()) {
        return files;
    }
    QDirIterator entries(aFolder, AudioFilePatterns(), QDir::Files, QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        files.append(entries.next());
    }
    files.sort();
    return files;
}

} // namespace

Indexer::Indexer(QString aFolder, Tracks aCatalogue, MediaLibrary* aLibrary, QObject* aParent)
    : QObject(aParent),
      m_Folder(std::move(aFolder)),
      m_Catalogue(std::move(aCatalogue)),
      m_Library(aLibrary),
      m_Status(MPL::MPL_INDEX_STATUS_INACTIVE)
{
    m_Turn.setInterval(0);
    connect(&m_Turn, &QTimer::timeout, this, &Indexer::ReadNext);
}

bool Indexer::Start()
{
    if (!m_Folder.isEmpty() && !QDir(m_Folder).exists()) {
        return false;
    }
    m_Files = AudioFilesIn(m_Folder);
    m_Tracks = m_Catalogue;
    m_Next = 0;
    SetStatus(kIndexing);
    SetProgress(0);
    m_Turn.start();
    return true;
}

void Indexer::ReadNext()
{
    if (m_Next < m_Files.size()) {
        const QString& path = m_Files.at(m_Next++);
        Track track;
        if (ReadTrack(path, m_Folder, track)) {
            m_Tracks.append(track);
        } else {
            Q_EMIT FileRejected(path);
        }
        SetProgress(static_cast<uint>(m_Next * 100 / m_Files.size()));
        return;
    }
    m_Turn.stop();
    // The library first: who hears of the end must find everything in place.
    m_Library->Replace(m_Tracks);
    SetProgress(100);
    SetStatus(MPL::MPL_INDEX_STATUS_INDEXING_COMPLETED);
}

void Indexer::SetProgress(uint aProgress)
{
    if (m_Progress != aProgress) {
        m_Progress = aProgress;
        Q_EMIT ProgressChanged(aProgress);
    }
}

void Indexer::SetStatus(const QString& aStatus)
{
    if (m_Status != aStatus) {
        m_Status = aStatus;
        Q_EMIT StatusChanged(aStatus);
    }
}

} // namespace sim
