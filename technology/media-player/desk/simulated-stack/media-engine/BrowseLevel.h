// One level of a walk through the library: what it lists, and what can be asked about its records.
#pragma once

#include "BrowseRecord.h"
#include <MPL_Types.h>

namespace sim
{

/// What a selection leads to when it does not lead a level down: tracks to play.
struct Selection {
    Tracks tracks;
    uint first = 0;
};

struct BrowseLevel {
    /// The top level, the level below a record, and that of a search.
    static BrowseLevel Top();
    static BrowseLevel Below(const BrowseRecord& aRecord);
    static BrowseLevel Hits(const SearchQuery& aQuery);

    /// Reads the records anew.
    void Build(const MediaLibrary& aLibrary, const QString& aSortMode);

    bool IsSearch() const;
    /// The level's part of the way to it.
    QString Step() const;
    MPL::BrowserHierarchy Entry() const;
    /// The songs of the level, to be played from `aRecord` on; a search level may hold other records too.
    Selection SongsFrom(const BrowseRecord& aRecord) const;
    /// Each track of the records once.
    Tracks AllTracks() const;
    /// At most `aCount` dictionaries from `aIndex` on. Returns the error text of the browse service.
    QString Dictionaries(uint aIndex, uint aCount, QList<MPL::ResultDictionary>& aDictionaries) const;
    QList<MPL::ResultDictionary> CharacterIndex() const;

    QString category; ///< what the level lists; at the top and for a search the word for that
    QString label;    ///< what was selected to get here
    TrackFilter filter;
    SearchQuery query;
    BrowseRecords records;
    uint selected = MPL::BrowserHierarchy().index;
};

} // namespace sim
