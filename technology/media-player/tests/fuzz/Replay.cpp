// Stands in for libFuzzer where the corpus is only to be run again: the arguments are files and folders of
// it.
#include "Fuzzing.h"

#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cstdio>

namespace
{

QStringList FilesIn(const QString& aPlace)
{
    QStringList files;
    QDirIterator entries(aPlace, QDir::Files);
    while (entries.hasNext()) {
        files << entries.next();
    }
    files.sort();
    return QFileInfo(aPlace).isDir() ? files : QStringList(aPlace);
}

bool Replay(const QString& aFile)
{
    QFile file(aFile);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s can't be read: %s\n", qPrintable(aFile), qPrintable(file.errorString()));
        return false;
    }
    std::printf("%s\n", qPrintable(aFile));
    std::fflush(stdout); // the last line names what ended the program
    const QByteArray input = file.readAll();
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()),
                           static_cast<size_t>(input.size()));
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int argument = 1; argument < argc; ++argument) {
        for (const QString& file : FilesIn(QFile::decodeName(argv[argument]))) {
            if (!Replay(file)) {
                return 1;
            }
            ++replayed;
        }
    }
    if (replayed == 0) {
        std::fprintf(stderr, "no input to replay: name files or folders of a corpus\n");
    }
    return replayed > 0 ? 0 : 1;
}
