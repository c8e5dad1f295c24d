/// Tells at once of services that end when nobody has asked them to.
#pragma once

#include "Fact.h"

#include <functional>
#include <map>
#include <set>
#include <string>

namespace sandbox
{

class Alarm
{
public:
    /// `aSay` takes one line.
    explicit Alarm(std::function<void(const std::string&)> aSay) : m_Say(std::move(aSay)) {}

    /// Takes what is seen, in the order in which it happens.
    void Take(const Fact& aFact);

private:
    struct Service {
        std::string name;
        std::set<int> signals;  ///< that others have sent it
        std::string exitStatus; ///< with which it says that it ends; empty: it has not said so
    };

    void TakeExec(const Fact& aFact);
    void TakeEnd(const std::string& aProcess, const std::string& aHow, const std::string& aNumber);

    static bool WasAsked(const Service& aService, int aSignal);

    std::function<void(const std::string&)> m_Say;
    std::string m_Root; ///< what this one starts is no service
    std::map<std::string, Service> m_Services;
};

} // namespace sandbox
