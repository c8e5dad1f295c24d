// Passes a signal of the engine on to the bus.
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

} // namespace sim
