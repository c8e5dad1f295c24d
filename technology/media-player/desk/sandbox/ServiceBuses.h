/// Records a bus from when there is something on it to explain.
#pragma once

#include "BusRecorder.h"
#include "InsideSettings.h"
#include "record/Fact.h"

#include <optional>
#include <string>

namespace sandbox
{

class ServiceBuses
{
public:
    explicit ServiceBuses(const InsideSettings& aSettings);

    /// Takes what is seen. The first service that is started begins the record of the sandbox's bus, and a
    /// bus daemon among them that of the private test bus: a sandbox without services does not pay for it.
    void Take(const Fact& aFact);

    /// To be called when the program has ended; if it `aIsInnocent`, the last messages may be missing.
    void End(bool aIsInnocent);

private:
    void Begin(std::optional<BusRecorder>& aRecorder, const std::string& aSocket, int aFile) const;

    int m_Facts = -1; ///< all are -1 when nothing is to be recorded here
    int m_TestFile = -1;
    int m_SystemFile = -1;
    std::optional<BusRecorder> m_System;
    std::optional<BusRecorder> m_Test;
};

} // namespace sandbox
