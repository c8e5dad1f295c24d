/// The bus daemon that these tests have for the whole program, in the place of the system bus and of the
/// private test bus.
#pragma once

#include "DoublesTest.h"

#include <QString>

/// The address of the daemon; it is the system bus of this program.
QString BusAddress();

class BusesTest : public MPL::Doubles::DoublesTest
{
protected:
    /// Makes the shared connection what it is after the private bus was launched, or without one.
    static void UseTestBus();
    static void UseSystemBus();
};
