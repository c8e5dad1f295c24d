#include "BrowseLevel.h"

#include <MPL_MediaPlayerLib.h>

#include <QSet>
#include <QUrl>

#include <algorithm>

namespace sim
{

BrowseLevel BrowseLevel::Top()
{
    BrowseLevel level;
    level.category = MPL::MPL_TOP_LEVEL_CATEGORIES_KEY;
    return level;
}

BrowseLevel BrowseLevel::Below(const BrowseRecord& aRecord)
{
    BrowseLevel level;
    level.category = aRecord.nextCategory;
    level.label = aRecord.name;
    level.filter = aRecord.filter;
    return level;
}

BrowseLevel BrowseLevel::Hits(const SearchQuery& aQuery)
{
    BrowseLevel level;
    level.category = MPL::MPL_RESULT_KEY_SEARCH;
    level.label = aQuery.text;
    level.query = aQuery;
    return level;
}

void BrowseLevel::Build(const MediaLibrary& aLibrary, const QString& aSortMode)
{
    if (category == MPL::MPL_TOP_LEVEL_CATEGORIES_KEY) {
        records = TopLevelRecords();
        return;
    }
    records = IsSearch() ? SearchRecords(aLibrary, query) : CategoryRecords(aLibrary, category, filter);
    Sort(records, aSortMode);
}

bool BrowseLevel::IsSearch() const
{
    return category == MPL::MPL_RESULT_KEY_SEARCH;
}

QString BrowseLevel::Step() const
{
    const QString step = QString::fromLatin1(QUrl::toPercentEncoding(label));
    return IsSearch() ? QStringLiteral("search/") + step : step;
}

MPL::BrowserHierarchy BrowseLevel::Entry() const
{
    MPL::BrowserHierarchy entry(category);
    entry.label = label;
    entry.index = selected;
    entry.count = static_cast<uint>(records.size());
    return entry;
}

Selection BrowseLevel::SongsFrom(const BrowseRecord& aRecord) const
{
    Selection songs;
    for (const BrowseRecord& record : records) {
        if (record.nextCategory.isEmpty()) {
            if (record.id == aRecord.id) {
                songs.first = static_cast<uint>(songs.tracks.size());
            }
            songs.tracks += record.tracks;
        }
    }
    return songs;
}

Tracks BrowseLevel::AllTracks() const
{
    Tracks all;
    QSet<quint64> known;
    for (const BrowseRecord& record : records) {
        for (const Track& track : record.tracks) {
            if (!known.contains(track.id)) {
                known.insert(track.id);
                all.append(track);
            }
        }
    }
    return all;
}

QString BrowseLevel::Dictionaries(uint aIndex, uint aCount, QList<MPL::ResultDictionary>& aDictionaries) const
{
    const auto size = static_cast<uint>(records.size());
    if (size == 0 || aCount == 0) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    }
    if (aIndex >= size) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS;
    }
    const uint end = aIndex + std::min(aCount, size - aIndex);
    for (uint index = aIndex; index < end; ++index) {
        aDictionaries.append(records.at(static_cast<int>(index)).dictionary);
    }
    return {};
}

QList<MPL::ResultDictionary> BrowseLevel::CharacterIndex() const
{
    QList<MPL::ResultDictionary> index;
    QStringList known;
    for (int place = 0; place < records.size(); ++place) {
        const QString initial = records.at(place).name.left(1).toUpper();
        if (!known.contains(initial)) {
            known.append(initial);
            index.append({{QStringLiteral("character"), initial},
                          {QStringLiteral("index"), static_cast<uint>(place)}});
        }
    }
    return index;
}

} // namespace sim
