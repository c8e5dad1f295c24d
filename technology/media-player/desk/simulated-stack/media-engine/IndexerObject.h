// The IndexerInfo interface of a media source.
#pragma once

#include "Indexer.h"
#include "Object.h"

class IndexerInfoAdaptor;

namespace sim
{

class IndexerObject : public Object
{
    Q_OBJECT
public:
    IndexerObject(Indexer* aIndexer, const FaultPlan& aFaults, QObject* aParent);

    uint GetProgress() const { return m_Indexer->Progress(); }
    QString GetStatus() const { return m_Indexer->Status(); }
    bool Reindex() { return m_Indexer->Start(); }

private:
    Indexer* m_Indexer;
    IndexerInfoAdaptor* m_Adaptor;
};

} // namespace sim
