#include "IndexerObject.h"

#include "Relay.h"
#include "sim_IndexerInfoAdaptor.h"

namespace sim
{

IndexerObject::IndexerObject(Indexer* aIndexer, const FaultPlan& aFaults, QObject* aParent)
    : Object(aFaults, aParent), m_Indexer(aIndexer), m_Adaptor(Adapt<IndexerInfoAdaptor>(this))
{
    Relay(aIndexer, &Indexer::ProgressChanged, this, m_Adaptor, &IndexerInfoAdaptor::SignalProgressChanged);
    Relay(aIndexer, &Indexer::StatusChanged, this, m_Adaptor, &IndexerInfoAdaptor::SignalStatusChanged);
}

} // namespace sim
