// The text in which programs are given parameters, read and written.
#include "Fuzzing.h"
#include "ParameterText.h"
#include <MPL_Parameters.h>

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    QMap<QString, QString> parameters;
    const bool found = MPL::GetParameters(fuzz::ToText(aData, aSize), parameters);
    fuzz::Promise(found != parameters.isEmpty(), "it tells whether it has found any");

    QVector<QPair<QString, QString>> pairs;
    for (auto entry = parameters.cbegin(); entry != parameters.cend(); ++entry) {
        pairs.append({entry.key(), entry.value()});
    }
    QMap<QString, QString> readAgain;
    MPL::GetParameters(MPL::Detail::MakeParameters(pairs), readAgain);
    fuzz::Promise(readAgain == parameters, "what is written is read again");
    return 0;
}
