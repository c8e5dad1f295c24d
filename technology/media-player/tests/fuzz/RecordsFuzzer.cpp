// What passed on a bus, as it was recorded, and the time line that is made of it.
#include "Fuzzing.h"
#include "run/BusReader.h"
#include "timeline/ChromeTrace.h"

#include <QJsonDocument>

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    const std::string record(reinterpret_cast<const char*>(aData), aSize);
    sandbox::Run run;
    for (const sandbox::Bus bus : {sandbox::Bus::Private, sandbox::Bus::System}) {
        sandbox::ReadBus(record, bus, 0, run);
    }
    QJsonParseError error{};
    QJsonDocument::fromJson(QByteArray::fromStdString(sandbox::ChromeTrace(run)), &error);
    fuzz::Promise(error.error == QJsonParseError::NoError, "the time line is JSON whatever was recorded");
    return 0;
}
