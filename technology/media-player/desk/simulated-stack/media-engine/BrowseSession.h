// A walk through the library: from the categories down to songs, or through the hits of a search.
#pragma once

#include "BrowseLevel.h"

namespace sim
{

/// Operations that can fail return the error text of the browse service, empty on success, and change
/// nothing when they fail.
class BrowseSession
{
public:
    explicit BrowseSession(const MediaLibrary* aLibrary) : m_Library(aLibrary) {}

    /// Opens a session at the top level, in place of an open one. Returns its id; ids count up from 1.
    uint Start();
    QString Back();
    QString Cancel();
    /// Goes a level down, or fills aSelection with the level's songs when the record is a song.
    QString Select(uint aIndex, Selection& aSelection);
    /// Selects the record of that id in the current level, otherwise that track of the library.
    QString SelectById(quint64 aId, Selection& aSelection);
    /// Shows the hits as a new level. An unknown category or sort method is an error, so is finding nothing.
    QString Search(SearchQuery aQuery, const QString& aSortMode);
    /// All tracks below the current level.
    QString AllTracks(Tracks& aTracks) const;
    /// At most aCount records from aIndex on.
    QString Records(uint aIndex, uint aCount, QList<MPL::ResultDictionary>& aRecords) const;
    /// Re-sorts all levels. Returns false for an unknown mode.
    bool SetSortMode(const QString& aSortMode);
    /// Rebuilds all levels from the library.
    void Refresh();

    bool IsOpen() const { return !m_Levels.isEmpty(); }
    bool CanGoBack() const { return m_Levels.size() > 1; }
    bool IsSearching() const;
    uint Id() const { return m_Id; } ///< of the session opened last, 0 before the first
    QString SortMode() const { return m_SortMode; }
    BrowseRecords Current() const { return IsOpen() ? m_Levels.last().records : BrowseRecords(); }
    QString Url() const; ///< the way to the current level; empty when no session is open
    QVector<MPL::BrowserHierarchy> Hierarchy() const;
    /// One record for each initial letter: "character", and "index" of the first record that has it.
    QList<MPL::ResultDictionary> CharacterIndex() const;

private:
    QString CheckSearch(const SearchQuery& aQuery, const QString& aSortMode) const;
    void Push(BrowseLevel aLevel);

    const MediaLibrary* m_Library;
    QVector<BrowseLevel> m_Levels;
    QString m_SortMode = kSortDefault;
    uint m_Id = 0;
};

} // namespace sim
