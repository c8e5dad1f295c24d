// From the engine to the bus: passing signals on, and telling what has changed.
#pragma once

#include "Object.h"

namespace sim
{

/// Whenever aSender emits aSignal, aObject announces it as the adaptor's signal aOut with the same values.
template <class Sender, class... Args, class Adaptor, class... OutArgs>
void Relay(Sender* aSender, void (Sender::*aSignal)(Args...), Object* aObject, Adaptor* aAdaptor,
           void (Adaptor::*aOut)(OutArgs...))
{
    QObject::connect(aSender, aSignal, aObject, [aObject, aAdaptor, aOut](Args... aArgs) {
        aObject->Announce([=] { (aAdaptor->*aOut)(aArgs...); });
    });
}

/// Keeps aValue as what was told last. Returns whether it has to be told.
inline bool Update(QString& aTold, const QString& aValue)
{
    const bool isNew = aTold != aValue;
    aTold = aValue;
    return isNew;
}

} // namespace sim
