// What a test program prints, and the report that is made of it. The input's first byte says in how large
// pieces it arrives; when that is odd, the report is also saved before the program has ended.
#include "Fuzzing.h"
#include "report/JunitReport.h"
#include "run/GoogletestLog.h"

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <algorithm>
#include <string_view>

namespace
{

void ExpectXml(const QString& aFile)
{
    QFile file(aFile);
    fuzz::Promise(file.open(QIODevice::ReadOnly), "the report is there");
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        xml.readNext();
    }
    fuzz::Promise(!xml.hasError(), "the report is XML whatever was printed");
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* aData, size_t aSize)
{
    static const QTemporaryDir kFolder("/dev/shm/mpl-fuzz-XXXXXX");
    static const QString kFile = kFolder.filePath("report.xml");
    std::string_view output(reinterpret_cast<const char*>(aData), aSize);
    const size_t size = output.empty() ? 1 : std::max<size_t>(1, static_cast<uint8_t>(output.front()));
    output.remove_prefix(std::min<size_t>(1, output.size()));

    sandbox::Cases cases;
    sandbox::GoogletestLog log(cases);
    sandbox::JunitReport report("fuzz", kFile.toStdString());
    while (!output.empty()) {
        log.Take(output.substr(0, size));
        output.remove_prefix(std::min(size, output.size()));
    }
    if (size % 2 != 0) {
        fuzz::Promise(report.Save(cases), "a report can be saved while its program runs");
        ExpectXml(kFile);
    }
    log.Finish();
    report.Finish(cases, "exit status 0", 0);
    ExpectXml(kFile);
    return 0;
}
