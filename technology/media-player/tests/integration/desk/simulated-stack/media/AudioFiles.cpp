#include "AudioFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>

#include <fileref.h>
#include <tag.h>

namespace
{

TagLib::String Text(const QString& aText)
{
    return {aText.toStdString(), TagLib::String::UTF8};
}

} // namespace

QString MakeAudioFile(const AudioFile& aFile)
{
    QDir().mkpath(QFileInfo(aFile.path).absolutePath());
    QProcess sox;
    sox.start("sox", {"-n", "-r", "16000", "-c", "1", aFile.path, "synth", QString::number(aFile.seconds),
                      "sine", "440"});
    if (!sox.waitForStarted()) {
        return "sox can't be started: " + sox.errorString();
    }
    if (!sox.waitForFinished() || sox.exitCode() != 0) {
        return "sox failed: " + QString::fromLocal8Bit(sox.readAllStandardError());
    }
    TagLib::FileRef file(aFile.path.toUtf8().constData());
    if (file.isNull()) {
        return "can't be tagged: " + aFile.path;
    }
    file.tag()->setTitle(Text(aFile.title));
    file.tag()->setArtist(Text(aFile.artist));
    file.tag()->setAlbum(Text(aFile.album));
    file.tag()->setGenre(Text(aFile.genre));
    file.tag()->setTrack(aFile.number);
    return file.save() ? QString() : "can't be saved: " + aFile.path;
}

bool SetTitle(const QString& aPath, const QString& aTitle)
{
    TagLib::FileRef file(aPath.toUtf8().constData());
    if (file.isNull()) {
        return false;
    }
    file.tag()->setTitle(Text(aTitle));
    return file.save();
}
