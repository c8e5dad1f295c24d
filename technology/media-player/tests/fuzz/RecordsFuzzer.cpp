// What passed on a bus, as it was recorded, and the time line that is made of it. The input's length says on
// which bus it was.
#include "Fuzzing.h"
#include "run/BusReader.h"
#include "timeline/ChromeTrace.h"

#include <QJsonDocument>

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    const std::string record(reinterpret_cast<const char*>(aData), aSize);
    sandbox::Run run;
    sandbox::ReadBus(record, aSize % 2 == 0 ? sandbox::Bus::Private : sandbox::Bus::System, 0, run);
    QJsonParseError error{};
    QJsonDocument::fromJson(QByteArray::fromStdString(sandbox::ChromeTrace(run)), &error);
    fuzz::Promise(error.error == QJsonParseError::NoError, "the time line is JSON whatever was recorded");
    return 0;
}
