#include "BrowseRecord.h"

#include <MPL_MediaPlayerLib.h>

#include <algorithm>

namespace sim
{
namespace
{

QVariantMap SongDictionary(const Track& aTrack)
{
    return {{MPL::MPL_RESULT_KEY_ARTIST, aTrack.artist},
            {MPL::MPL_RESULT_KEY_ALBUM, aTrack.album},
            {MPL::MPL_RESULT_KEY_GENRE, aTrack.genre},
            {MPL::MPL_RESULT_KEY_COMPOSER, aTrack.composer},
            {MPL::MPL_RESULT_KEY_FOLDER, aTrack.folder},
            {MPL::MPL_RESULT_KEY_FILE, aTrack.fileName},
            {MPL::MPL_RESULT_KEY_DURATION, aTrack.lengthMs},
            {MPL::MPL_RESULT_KEY_ALBUM_ARTIST, aTrack.albumArtist},
            {MPL::MPL_RESULT_KEY_ALBUM_ART, aTrack.art},
            {MPL::MPL_RESULT_KEY_ALBUM_YEAR, aTrack.year},
            {MPL::MPL_RESULT_KEY_TRACK_NUMBER, aTrack.number}};
}

QVariantMap GroupDictionary(const QString& aCategory, const Tracks& aTracks)
{
    uint duration = 0;
    QStringList albums;
    for (const Track& track : aTracks) {
        duration += track.lengthMs;
        albums.append(track.album);
    }
    QVariantMap dictionary{{MPL::MPL_RESULT_KEY_TRACK_COUNT, static_cast<uint>(aTracks.size())},
                           {MPL::MPL_RESULT_KEY_DURATION, duration}};
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_ALBUM && !aTracks.isEmpty()) {
        dictionary.insert(MPL::MPL_RESULT_KEY_ARTIST, aTracks.first().artist);
        dictionary.insert(MPL::MPL_RESULT_KEY_ALBUM_ART, aTracks.first().art);
        dictionary.insert(MPL::MPL_RESULT_KEY_ALBUM_YEAR, aTracks.first().year);
    } else {
        albums.removeDuplicates();
        dictionary.insert(MPL::MPL_RESULT_KEY_ALBUM_COUNT, static_cast<uint>(albums.size()));
    }
    return dictionary;
}

// What every record says: its type, its name under the type's own word, and its id.
void Complete(BrowseRecord& aRecord, const QString& aType)
{
    aRecord.dictionary.insert(MPL::MPL_RESULT_KEY_RESULT_TYPE, aType);
    aRecord.dictionary.insert(aType, aRecord.name);
    aRecord.dictionary.insert(MPL::MPL_RESULT_KEY_ENTRY_ID, aRecord.id);
}

BrowseRecord SongRecord(const Track& aTrack)
{
    BrowseRecord record;
    record.id = aTrack.id;
    record.name = aTrack.title;
    record.tracks = {aTrack};
    record.dictionary = SongDictionary(aTrack);
    Complete(record, MPL::MPL_RESULT_KEY_SONG);
    return record;
}

BrowseRecord GroupRecord(const MediaLibrary& aLibrary, const Category& aCategory, const QString& aName,
                         TrackFilter aFilter)
{
    aFilter.append({aCategory.word, aName});
    QString address;
    for (const auto& condition : aFilter) {
        address += condition.first % QLatin1Char('=') % condition.second % QLatin1Char('\n');
    }
    BrowseRecord record;
    record.id = StableId(address);
    record.name = aName;
    record.nextCategory = aCategory.next;
    record.filter = aFilter;
    record.tracks = aLibrary.Select(aFilter);
    record.dictionary = GroupDictionary(aCategory.word, record.tracks);
    Complete(record, aCategory.resultType);
    return record;
}

uint ScoreOf(const QString& aName, const QString& aText)
{
    if (aName.compare(aText, Qt::CaseInsensitive) == 0) {
        return 100;
    }
    return aName.startsWith(aText, Qt::CaseInsensitive) ? 75 : 50;
}

} // namespace

const std::array<Category, 5>& Categories()
{
    using namespace MPL;
    static const std::array<Category, 5> kCategories{
        {{MPL_BROWSE_CATEGORY_GENRE, MPL_RESULT_KEY_GENRE, MPL_BROWSE_CATEGORY_ARTIST},
         {MPL_BROWSE_CATEGORY_ARTIST, MPL_RESULT_KEY_ARTIST, MPL_BROWSE_CATEGORY_ALBUM},
         {MPL_BROWSE_CATEGORY_ALBUM, MPL_RESULT_KEY_ALBUM, MPL_BROWSE_CATEGORY_SONG},
         {MPL_BROWSE_CATEGORY_SONG, MPL_RESULT_KEY_SONG, {}},
         {MPL_BROWSE_CATEGORY_FOLDER, MPL_RESULT_KEY_FOLDER, MPL_BROWSE_CATEGORY_SONG}}};
    return kCategories;
}

const Category* FindCategory(const QString& aWord)
{
    const auto& all = Categories();
    const auto* found = std::find_if(all.begin(), all.end(),
                                     [&aWord](const Category& aCategory) { return aCategory.word == aWord; });
    return found == all.end() ? nullptr : found;
}

BrowseRecords TopLevelRecords()
{
    BrowseRecords records;
    for (const Category& category : Categories()) {
        BrowseRecord record;
        record.id = StableId(category.word);
        record.name = category.word;
        record.nextCategory = category.word;
        Complete(record, MPL::MPL_RESULT_KEY_TOPLEVEL);
        records.append(record);
    }
    return records;
}

BrowseRecords CategoryRecords(const MediaLibrary& aLibrary, const QString& aCategory,
                              const TrackFilter& aFilter)
{
    BrowseRecords records;
    if (aCategory == MPL::MPL_BROWSE_CATEGORY_SONG) {
        for (const Track& track : aLibrary.Select(aFilter)) {
            records.append(SongRecord(track));
        }
    } else if (const Category* category = FindCategory(aCategory)) {
        for (const QString& name : aLibrary.Values(aCategory, aFilter)) {
            records.append(GroupRecord(aLibrary, *category, name, aFilter));
        }
    }
    return records;
}

BrowseRecords SearchRecords(const MediaLibrary& aLibrary, const SearchQuery& aQuery)
{
    BrowseRecords hits;
    for (const QString& category : aQuery.categories) {
        for (BrowseRecord& record : CategoryRecords(aLibrary, category, {})) {
            if (record.name.contains(aQuery.text, Qt::CaseInsensitive)) {
                record.dictionary.insert(MPL::MPL_RESULT_KEY_SCORE, ScoreOf(record.name, aQuery.text));
                hits.append(record);
            }
        }
    }
    if (aQuery.maximum > 0 && aQuery.maximum < static_cast<uint>(hits.size())) {
        hits.resize(static_cast<int>(aQuery.maximum));
    }
    return hits;
}

void Sort(BrowseRecords& aRecords, const QString& aSortMode)
{
    if (aSortMode == kSortDefault) {
        return; // the library's order
    }
    const bool descending = aSortMode == kSortDescending;
    std::stable_sort(aRecords.begin(), aRecords.end(),
                     [descending](const BrowseRecord& aLeft, const BrowseRecord& aRight) {
                         const int order = aLeft.name.compare(aRight.name, Qt::CaseInsensitive);
                         return descending ? order > 0 : order < 0;
                     });
}

} // namespace sim
