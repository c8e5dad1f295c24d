// The records of a browse level: how they are made from the library, sorted and written as dictionaries.
#pragma once

#include "MediaLibrary.h"

#include <array>

namespace sim
{

/// How the results of a level are ordered. By default songs come in playing order, all else by name.
inline const QString kSortDefault = QStringLiteral("SORT_DEFAULT");
inline const QString kSortAscending = QStringLiteral("SORT_NAME_ASCENDING");
inline const QString kSortDescending = QStringLiteral("SORT_NAME_DESCENDING");
inline const std::array<QString, 3> kSortModes{kSortDefault, kSortAscending, kSortDescending};

/// What tracks are grouped by.
struct Category {
    QString word;
    QString resultType;
    QString next; ///< the category one level below; empty below songs
};

const std::array<Category, 5>& Categories();
/// The category of that word, or null.
const Category* FindCategory(const QString& aWord);

struct BrowseRecord {
    quint64 id = 0; ///< of the track for a song, otherwise of the group; stable like a track's
    QString name;
    QString nextCategory;   ///< what the level below lists; empty for a song
    TrackFilter filter;     ///< which tracks lie below
    Tracks tracks;          ///< those tracks, in playing order; for a song itself. Not filled at the top.
    QVariantMap dictionary; ///< the record as it travels
};

using BrowseRecords = QVector<BrowseRecord>;

struct SearchQuery {
    QString text; ///< looked for anywhere in a name, without regard to case
    QStringList categories;
    uint maximum = 0; ///< of hits; 0: all
};

BrowseRecords TopLevelRecords();
BrowseRecords CategoryRecords(const MediaLibrary& aLibrary, const QString& aCategory,
                              const TrackFilter& aFilter);
/// Each record also has its "SCORE" from 1 to 100.
BrowseRecords SearchRecords(const MediaLibrary& aLibrary, const SearchQuery& aQuery);

void Sort(BrowseRecords& aRecords, const QString& aSortMode);

} // namespace sim
