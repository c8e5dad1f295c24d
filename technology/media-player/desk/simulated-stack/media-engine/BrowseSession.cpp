#include "BrowseSession.h"

#include <MPL_MediaPlayerLib.h>

#include <QSet>
#include <QUrl>

#include <algorithm>

namespace sim
{
namespace
{

bool IsSortMode(const QString& aWord)
{
    return std::find(kSortModes.begin(), kSortModes.end(), aWord) != kSortModes.end();
}

QStringList AllCategories()
{
    QStringList words;
    for (const Category& category : Categories()) {
        words.append(category.word);
    }
    return words;
}

} // namespace

uint BrowseSession::Start()
{
    m_Levels.clear();
    Level top;
    top.category = MPL::MPL_TOP_LEVEL_CATEGORIES_KEY;
    Push(top);
    return ++m_Id;
}

QString BrowseSession::Back()
{
    if (!CanGoBack()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    m_Levels.removeLast();
    return {};
}

QString BrowseSession::Cancel()
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    m_Levels.clear();
    return {};
}

QString BrowseSession::Select(uint aIndex, Selection& aSelection)
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    Level& level = m_Levels.last();
    if (aIndex >= static_cast<uint>(level.records.size())) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE;
    }
    level.selected = aIndex;
    const BrowseRecord record = level.records.at(static_cast<int>(aIndex));
    if (!record.nextCategory.isEmpty()) {
        Level below;
        below.category = record.nextCategory;
        below.label = record.name;
        below.filter = record.filter;
        Push(below);
        return {};
    }
    // The songs of the level are played from the selected one on; a search level may hold other records too.
    for (const BrowseRecord& other : qAsConst(level.records)) {
        if (other.nextCategory.isEmpty()) {
            if (other.id == record.id) {
                aSelection.first = static_cast<uint>(aSelection.tracks.size());
            }
            aSelection.tracks += other.tracks;
        }
    }
    return {};
}

QString BrowseSession::SelectById(quint64 aId, Selection& aSelection)
{
    const BrowseRecords records = Current();
    const auto found = std::find_if(records.begin(), records.end(),
                                    [aId](const BrowseRecord& aRecord) { return aRecord.id == aId; });
    if (found != records.end()) {
        return Select(static_cast<uint>(found - records.begin()), aSelection);
    }
    const Track* track = IsOpen() ? m_Library->Find(aId) : nullptr;
    if (track == nullptr) {
        return IsOpen() ? MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX
                        : MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    aSelection.tracks = {*track};
    return {};
}

QString BrowseSession::Search(SearchQuery aQuery, const QString& aSortMode)
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    if (!aSortMode.isEmpty() && !IsSortMode(aSortMode)) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED;
    }
    for (const QString& category : qAsConst(aQuery.categories)) {
        if (FindCategory(category) == nullptr) {
            return MPL::MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED;
        }
    }
    if (aQuery.categories.isEmpty()) {
        aQuery.categories = AllCategories();
    }
    if (aQuery.text.isEmpty() || SearchRecords(*m_Library, aQuery).isEmpty()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    }
    if (!aSortMode.isEmpty()) {
        SetSortMode(aSortMode);
    }
    Level level;
    level.category = MPL::MPL_RESULT_KEY_SEARCH;
    level.label = aQuery.text;
    level.query = aQuery;
    Push(level);
    return {};
}

QString BrowseSession::AllTracks(Tracks& aTracks) const
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    Tracks all;
    QSet<quint64> known;
    const Tracks top = m_Levels.size() == 1 ? m_Library->All() : Tracks();
    for (const BrowseRecord& record : Current()) {
        for (const Track& track : record.tracks) {
            if (!known.contains(track.id)) {
                known.insert(track.id);
                all.append(track);
            }
        }
    }
    all += top;
    if (all.isEmpty()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    }
    aTracks = all;
    return {};
}

QString BrowseSession::Records(uint aIndex, uint aCount, QList<MPL::ResultDictionary>& aRecords) const
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    const BrowseRecords& records = m_Levels.last().records;
    const auto size = static_cast<uint>(records.size());
    if (size == 0 || aCount == 0) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    }
    if (aIndex >= size) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS;
    }
    const uint count = std::min(aCount, size - aIndex);
    for (uint index = aIndex; index - aIndex < count; ++index) {
        aRecords.append(records.at(static_cast<int>(index)).dictionary);
    }
    return {};
}

bool BrowseSession::SetSortMode(const QString& aSortMode)
{
    if (!IsSortMode(aSortMode)) {
        return false;
    }
    m_SortMode = aSortMode;
    Refresh();
    return true;
}

void BrowseSession::Refresh()
{
    for (Level& level : m_Levels) {
        Build(level);
    }
}

bool BrowseSession::IsSearching() const
{
    return std::any_of(m_Levels.begin(), m_Levels.end(),
                       [](const Level& aLevel) { return aLevel.category == MPL::MPL_RESULT_KEY_SEARCH; });
}

QString BrowseSession::Url() const
{
    if (!IsOpen()) {
        return {};
    }
    QStringList steps;
    for (const Level& level : m_Levels) {
        if (level.category == MPL::MPL_RESULT_KEY_SEARCH) {
            steps.append(QStringLiteral("search"));
        }
        steps.append(QString::fromLatin1(QUrl::toPercentEncoding(level.label)));
    }
    return QStringLiteral("browse:") %
           (steps.size() == 1 ? QStringLiteral("/") : steps.join(QLatin1Char('/')));
}

QVector<MPL::BrowserHierarchy> BrowseSession::Hierarchy() const
{
    QVector<MPL::BrowserHierarchy> hierarchy;
    for (const Level& level : m_Levels) {
        MPL::BrowserHierarchy entry(level.category);
        entry.label = level.label;
        entry.index = level.selected;
        entry.count = static_cast<uint>(level.records.size());
        hierarchy.append(entry);
    }
    return hierarchy;
}

QList<MPL::ResultDictionary> BrowseSession::CharacterIndex() const
{
    QList<MPL::ResultDictionary> index;
    QStringList known;
    const BrowseRecords records = Current();
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

void BrowseSession::Build(Level& aLevel) const
{
    if (aLevel.category == MPL::MPL_TOP_LEVEL_CATEGORIES_KEY) {
        aLevel.records = TopLevelRecords();
        return;
    }
    aLevel.records = aLevel.category == MPL::MPL_RESULT_KEY_SEARCH
                         ? SearchRecords(*m_Library, aLevel.query)
                         : CategoryRecords(*m_Library, aLevel.category, aLevel.filter);
    Sort(aLevel.records, m_SortMode);
}

void BrowseSession::Push(Level aLevel)
{
    Build(aLevel);
    m_Levels.append(aLevel);
}

} // namespace sim
