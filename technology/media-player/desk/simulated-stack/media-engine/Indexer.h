// Finds the audio files of a folder and fills the library with them, a file at a time.
#pragma once

#include "Track.h"

#include <QStringList>
#include <QTimer>

namespace sim
{

class MediaLibrary;

/// Works on its thread's event loop, one file per turn, so that the source keeps answering. The library
/// changes once, when the last file has been read.
class Indexer : public QObject
{
    Q_OBJECT
public:
    /// Indexes aFolder. An empty aFolder stands for a source without files of its own: its index is
    /// aCatalogue.
    Indexer(QString aFolder, Tracks aCatalogue, MediaLibrary* aLibrary, QObject* aParent);

    /// Starts over, also while a run is under way. Returns false when there is no such folder; then nothing
    /// changes.
    bool Start();

    uint Progress() const { return m_Progress; } ///< percent
    QString Status() const { return m_Status; }

Q_SIGNALS:
    void ProgressChanged(uint aProgress);
    void StatusChanged(const QString& aStatus);
    /// A file that looks like audio and is not.
    void FileRejected(const QString& aPath);

private:
    void ReadNext();
    void SetProgress(uint aProgress);
    void SetStatus(const QString& aStatus);

    QString m_Folder;
    Tracks m_Catalogue;
    MediaLibrary* m_Library;
    QTimer m_Turn;
    QStringList m_Files;
    Tracks m_Tracks;
    int m_Next = 0;
    uint m_Progress = 0;
    QString m_Status;
};

} // namespace sim
