// The direct methods, and the work that both styles share.
#include "BrowserObject.h"

#include "CapabilityTexts.h"
#include "Player.h"
#include "Relay.h"
#include "sim_BrowserAdaptor.h"
#include <MPL_MediaPlayerLib.h>

#include <algorithm>

namespace sim
{

BrowserObject::BrowserObject(const MediaLibrary* aLibrary, PlayQueue* aQueue, Player* aPlayer,
                             const FaultPlan& aFaults, QObject* aParent)
    : Object(aFaults, aParent),
      m_Session(aLibrary),
      m_Queue(aQueue),
      m_Player(aPlayer),
      m_Adaptor(Adapt<BrowserAdaptor>(this)),
      m_Functionalities(GetFunctionalities())
{
    connect(aLibrary, &MediaLibrary::Changed, this, &BrowserObject::OnLibraryChanged);
}

uint BrowserObject::Start()
{
    const uint id = m_Session.Start();
    AnnounceStep({}, {}, MPL::MPL_SEARCH_STATE_INQUIRY_BROWSE);
    AnnounceLevel();
    return id;
}

bool BrowserObject::SelectRecordById(qulonglong aId)
{
    Selection selection;
    const QString error = m_Session.SelectById(aId, selection);
    return Explain(Follow(error, selection));
}

bool BrowserObject::SearchFor(const QString& aText, const QStringList& aCategories, uint aMaximum,
                              const QString& aSort)
{
    return Explain(DoSearch({aText, aCategories, aMaximum}, aSort));
}

bool BrowserObject::SetCurrentResultsSortMode(const QString& aSortMode)
{
    const QString before = m_Session.SortMode();
    if (!m_Session.SetSortMode(aSortMode)) {
        return Explain(MPL::MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED);
    }
    if (before != aSortMode) {
        Announce([this, aSortMode, url = m_Session.Url()] {
            Q_EMIT m_Adaptor->SignalCurrentResultsSortModeChanged(aSortMode);
            Q_EMIT m_Adaptor->SignalBrowsingResultsChanged(url);
        });
    }
    return true;
}

QString BrowserObject::GetFunctionalities() const
{
    const bool open = m_Session.IsOpen();
    const bool any = open && GetNumberOfRecords() > 0;
    QStringList categories;
    for (const Category& category : Categories()) {
        categories.append(category.word);
    }
    return FunctionalitiesText({
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_START, true, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_BACK, m_Session.CanGoBack(), {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_CANCEL, open, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_SEARCH, open, categories},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_SELECT_INDEX, any, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_GET_COUNT, open, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_GET_RESULT, any, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_PLAY_ALL, any, {MPL::MPL_BROWSER_FUNCTION_PLAYALL}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_CHARACTER_INDEX, any, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_HIERARCHY, open, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_CURRENT_HIERARCHY_URL, open, {}},
        {MPL::MPL_BROWSER_FUNCTION_BROWSER_CURRENT_SORT_MODE, true, OptionsOf(kSortModes)},
    });
}

QString BrowserObject::DoBack()
{
    const bool searching = m_Session.IsSearching();
    QString error = m_Session.Back();
    const bool cleared = searching && !m_Session.IsSearching();
    AnnounceStep(error, MPL::MPL_BROWSE_STATUS_BROWSE_BACK,
                 cleared ? MPL::MPL_SEARCH_STATE_SEARCH_CLEARED : QString());
    if (error.isEmpty()) {
        AnnounceLevel();
    }
    return error;
}

QString BrowserObject::DoCancel()
{
    const bool searching = m_Session.IsSearching();
    QString error = m_Session.Cancel();
    AnnounceStep(error, MPL::MPL_BROWSE_STATUS_BROWSE_CANCELLED,
                 searching ? MPL::MPL_SEARCH_STATE_SEARCH_CANCELLED : QString());
    UpdateFunctionalities();
    return error;
}

QString BrowserObject::DoPlayAll()
{
    Tracks tracks;
    QString error = m_Session.AllTracks(tracks);
    if (error.isEmpty()) {
        Play(tracks, 0);
    }
    return error;
}

QString BrowserObject::DoSelect(uint aIndex)
{
    Selection selection;
    const QString error = m_Session.Select(aIndex, selection);
    return Follow(error, selection);
}

QString BrowserObject::DoSearch(const SearchQuery& aQuery, const QString& aSort)
{
    QString error = m_Session.Search(aQuery, aSort);
    AnnounceStep(error, MPL::MPL_BROWSE_STATUS_BROWSE_NEXT, MPL::MPL_SEARCH_STATE_SEARCH_DONE);
    if (error.isEmpty()) {
        AnnounceLevel();
    }
    return error;
}

QString BrowserObject::Follow(const QString& aError, const Selection& aSelection)
{
    if (aError.isEmpty() && !aSelection.tracks.isEmpty()) {
        Play(aSelection.tracks, aSelection.first);
        return {};
    }
    AnnounceStep(aError, MPL::MPL_BROWSE_STATUS_BROWSE_NEXT);
    if (aError.isEmpty()) {
        AnnounceLevel();
    }
    return aError;
}

void BrowserObject::Play(const Tracks& aTracks, uint aFirst)
{
    m_Queue->Load(aTracks, aFirst);
    m_Player->Resume();
}

bool BrowserObject::Explain(const QString& aError)
{
    if (aError.isEmpty()) {
        return true;
    }
    const bool nothing = aError == MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO;
    const QString& event = nothing ? MPL::MPL_EVENT_EMPTY_BROWSE_RESULTS : MPL::MPL_EVENT_SELECT_TRACK_FAILED;
    Announce([this, text = EventText(MPL::MPL_EVENT_TYPE_ERROR, event, aError)] {
        Q_EMIT m_Adaptor->SignalEvent(text);
    });
    return false;
}

QString BrowserObject::NeedsSession() const
{
    return m_Session.IsOpen() ? QString() : MPL::MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION;
}

void BrowserObject::AnnounceStep(const QString& aError, const QString& aStep, const QString& aSearchState)
{
    const bool done = aError.isEmpty();
    QMap<QString, QString> status{
        {MPL::MPL_BROWSE_STATUS_BROWSE_STATUS,
         done ? MPL::MPL_BROWSE_STATUS_SUCCESS : MPL::MPL_BROWSE_STATUS_FAILURE},
        {MPL::MPL_BROWSE_STATUS_BROWSE_RESULTS_COUNT, QString::number(GetNumberOfRecords())},
        {MPL::MPL_BROWSE_STATUS_BROWSE_RESULTS_SORT_INFO, m_Session.SortMode()},
        {MPL::MPL_BROWSE_STATUS_BROWSE_REQUIRES_HMI_SORT, MPL::MPL_TEXTUAL_BOOLEAN_FALSE}};
    if (!aStep.isEmpty()) {
        status.insert(aStep, done ? MPL::MPL_TEXTUAL_BOOLEAN_TRUE : MPL::MPL_TEXTUAL_BOOLEAN_FALSE);
    }
    if (done && !aSearchState.isEmpty()) {
        status.insert(MPL::MPL_RESULT_KEY_SEARCH, aSearchState);
    }
    Announce([this, id = m_Session.Id(), status] { Q_EMIT m_Adaptor->SignalBrowseStatus(id, status); });
}

void BrowserObject::AnnounceLevel()
{
    Announce([this, hierarchy = m_Session.Hierarchy(), url = m_Session.Url()] {
        Q_EMIT m_Adaptor->SignalBrowserHierarchy(hierarchy, url);
        Q_EMIT m_Adaptor->SignalBrowserHierarchyUrl(url);
    });
    if (GetNumberOfRecords() == 0) {
        const QString text = EventText(MPL::MPL_EVENT_TYPE_INFO, MPL::MPL_EVENT_EMPTY_BROWSE_RESULTS,
                                       MPL::MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO);
        Announce([this, text] { Q_EMIT m_Adaptor->SignalEvent(text); });
    }
    UpdateFunctionalities();
}

void BrowserObject::UpdateFunctionalities()
{
    if (Update(m_Functionalities, GetFunctionalities())) {
        Announce([this, text = m_Functionalities] { Q_EMIT m_Adaptor->SignalFunctionalitiesChanged(text); });
    }
}

void BrowserObject::OnLibraryChanged()
{
    const BrowseRecords before = m_Session.Current();
    m_Session.Refresh();
    const BrowseRecords after = m_Session.Current();
    const QString url = m_Session.Url();
    const bool sameRecords = std::equal(
        before.begin(), before.end(), after.begin(), after.end(),
        [](const BrowseRecord& aLeft, const BrowseRecord& aRight) { return aLeft.id == aRight.id; });
    if (!sameRecords) {
        Announce([this, url] { Q_EMIT m_Adaptor->SignalBrowsingResultsChanged(url); });
        UpdateFunctionalities();
        return;
    }
    for (int place = 0; place < after.size(); ++place) {
        const MPL::ResultDictionary dictionary = after.at(place).dictionary;
        if (dictionary != before.at(place).dictionary) {
            Announce([this, url, place, dictionary] {
                Q_EMIT m_Adaptor->SignalBrowseResultItemMetadataChanged(url, static_cast<uint>(place),
                                                                        dictionary);
            });
        }
    }
}

} // namespace sim
