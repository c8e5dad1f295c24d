#include "BrowseSession.h"

#include <MPL_MediaPlayerLib.h>

#include <algorithm>
#include <functional>

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
    Push(BrowseLevel::Top());
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
    BrowseLevel& level = m_Levels.last();
    if (aIndex >= static_cast<uint>(level.records.size())) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE;
    }
    level.selected = aIndex;
    const BrowseRecord record = level.records.at(static_cast<int>(aIndex));
    if (record.nextCategory.isEmpty()) {
        aSelection = level.SongsFrom(record);
    } else {
        Push(BrowseLevel::Below(record));
    }
    return {};
}

QString BrowseSession::SelectById(quint64 aId, Selection& aSelection)
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    const BrowseRecords& records = m_Levels.last().records;
    const auto found = std::find_if(records.begin(), records.end(),
                                    [aId](const BrowseRecord& aRecord) { return aRecord.id == aId; });
    if (found != records.end()) {
        return Select(static_cast<uint>(found - records.begin()), aSelection);
    }
    const Track* track = m_Library->Find(aId);
    if (track == nullptr) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX;
    }
    aSelection.tracks = {*track};
    return {};
}

QString BrowseSession::Search(SearchQuery aQuery, const QString& aSortMode)
{
    if (aQuery.categories.isEmpty()) {
        aQuery.categories = AllCategories();
    }
    QString error = CheckSearch(aQuery, aSortMode);
    if (!error.isEmpty()) {
        return error;
    }
    if (!aSortMode.isEmpty()) {
        SetSortMode(aSortMode);
    }
    Push(BrowseLevel::Hits(aQuery));
    return {};
}

QString BrowseSession::CheckSearch(const SearchQuery& aQuery, const QString& aSortMode) const
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    if (!aSortMode.isEmpty() && !IsSortMode(aSortMode)) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED;
    }
    if (!std::all_of(aQuery.categories.begin(), aQuery.categories.end(), FindCategory)) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED;
    }
    return aQuery.text.isEmpty() || SearchRecords(*m_Library, aQuery).isEmpty()
               ? MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO
               : QString();
}

QString BrowseSession::AllTracks(Tracks& aTracks) const
{
    if (!IsOpen()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
    }
    const Tracks all = CanGoBack() ? m_Levels.last().AllTracks() : m_Library->All();
    if (all.isEmpty()) {
        return MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    }
    aTracks = all;
    return {};
}

QString BrowseSession::Records(uint aIndex, uint aCount, QList<MPL::ResultDictionary>& aRecords) const
{
    return IsOpen() ? m_Levels.last().Dictionaries(aIndex, aCount, aRecords)
                    : MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
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
    for (BrowseLevel& level : m_Levels) {
        level.Build(*m_Library, m_SortMode);
    }
}

bool BrowseSession::IsSearching() const
{
    return std::any_of(m_Levels.begin(), m_Levels.end(), std::mem_fn(&BrowseLevel::IsSearch));
}

QString BrowseSession::Url() const
{
    if (!CanGoBack()) {
        return IsOpen() ? QStringLiteral("browse:/") : QString();
    }
    QStringList steps;
    for (const BrowseLevel& level : m_Levels) {
        steps.append(level.Step());
    }
    return QStringLiteral("browse:") + steps.join(QLatin1Char('/'));
}

QVector<MPL::BrowserHierarchy> BrowseSession::Hierarchy() const
{
    QVector<MPL::BrowserHierarchy> hierarchy;
    for (const BrowseLevel& level : m_Levels) {
        hierarchy.append(level.Entry());
    }
    return hierarchy;
}

QList<MPL::ResultDictionary> BrowseSession::CharacterIndex() const
{
    return IsOpen() ? m_Levels.last().CharacterIndex() : QList<MPL::ResultDictionary>();
}

void BrowseSession::Push(BrowseLevel aLevel)
{
    aLevel.Build(*m_Library, m_SortMode);
    m_Levels.append(aLevel);
}

} // namespace sim
