// The Browser interface of a media source.
#pragma once

#include "BrowseSession.h"
#include "Object.h"

#include <QMap>

class BrowserAdaptor;

namespace sim
{

class PlayQueue;
class Player;

/// All clients share one walk through the library, as they share one screen. Both styles of the interface
/// do the same; they differ in how the answer travels: a direct call that fails is explained by an error
/// event, a request by the error text of its reply signal.
class BrowserObject : public Object
{
    Q_OBJECT
public:
    BrowserObject(const MediaLibrary* aLibrary, PlayQueue* aQueue, Player* aPlayer, const FaultPlan& aFaults,
                  QObject* aParent);

    uint Start();
    bool Back() { return Explain(DoBack()); }
    bool Cancel() { return Explain(DoCancel()); }
    bool PlayAll() { return Explain(DoPlayAll()); }
    bool SelectRecord(uint aIndex) { return Explain(DoSelect(aIndex)); }
    bool SelectRecordById(qulonglong aId);
    bool SearchFor(const QString& aText, const QStringList& aCategories, uint aMaximum, const QString& aSort);
    bool SetCurrentResultsSortMode(const QString& aSortMode);
    uint GetNumberOfRecords() const { return static_cast<uint>(m_Session.Current().size()); }
    QVector<MPL::BrowserHierarchy> GetBrowserHierarchy() const { return m_Session.Hierarchy(); }
    QList<MPL::ResultDictionary> GetCharacterIndex() const { return m_Session.CharacterIndex(); }
    QString GetCurrentBrowseHierarchyUrl() const { return m_Session.Url(); }
    QString GetCurrentResultsSortMode() const { return m_Session.SortMode(); }
    QString GetFunctionalities() const;

    bool RequestRecords(uint aIndex, uint aCount, uint aTransactionId);
    void RequestCurrentPlayingIndex();

    void RequestStart(const MPL::TransactionId& aTid);
    void RequestBack(const MPL::TransactionId& aTid);
    void RequestCancel(const MPL::TransactionId& aTid);
    void RequestBrowserHierarchy(const MPL::TransactionId& aTid);
    void RequestCharacterIndex(const MPL::TransactionId& aTid);
    void RequestFunctionalities(const MPL::TransactionId& aTid);
    void RequestNumberOfRecords(const MPL::TransactionId& aTid);
    void RequestPlayAll(const MPL::TransactionId& aTid);
    void RequestRecordsByTransactionId(const MPL::TransactionId& aTid, uint aIndex, uint aCount);
    void RequestSearchFor(const MPL::TransactionId& aTid, const QString& aText,
                          const QStringList& aCategories, uint aMaximum, const QString& aSort);
    void RequestSelectRecord(const MPL::TransactionId& aTid, uint aIndex);

private:
    // Each does the work of both styles, announces the new state and returns the error text.
    QString DoBack();
    QString DoCancel();
    QString DoPlayAll();
    QString DoSelect(uint aIndex);
    QString DoSearch(const SearchQuery& aQuery, const QString& aSort);

    /// What follows a selection: playing, or a new level.
    QString Follow(const QString& aError, const Selection& aSelection);
    void Play(const Tracks& aTracks, uint aFirst);
    bool Explain(const QString& aError);
    /// The error text of something that needs an open session.
    QString NeedsSession() const;
    /// Tells of the step that was taken or that failed; aStep is a word of the browse status, or empty.
    void AnnounceStep(const QString& aError, const QString& aStep, const QString& aSearchState = {});
    void AnnounceLevel();
    void UpdateFunctionalities();
    void OnLibraryChanged();

    BrowseSession m_Session;
    PlayQueue* m_Queue;
    Player* m_Player;
    BrowserAdaptor* m_Adaptor;
    QString m_Functionalities; // as last announced
};

} // namespace sim
