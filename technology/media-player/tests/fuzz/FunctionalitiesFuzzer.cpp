// The text in which an object lists what it can do.
#include "Fuzzing.h"
#include <MPL_TestUtils.h>

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    QMap<QString, MPL::Functionality> functionalities{{"KEPT", {"KEPT", "ENABLED", {}}}};
    MPL::TestUtils::GetAvailableFunctionMap(fuzz::ToText(aData, aSize), functionalities);
    fuzz::Promise(functionalities.contains("KEPT"), "what the map has, stays");
    for (auto entry = functionalities.cbegin(); entry != functionalities.cend(); ++entry) {
        fuzz::Promise(entry.key() == entry->name, "each functionality is under its name");
    }
    return 0;
}
