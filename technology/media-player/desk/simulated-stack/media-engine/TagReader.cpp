#include "TagReader.h"

#include <QDir>
#include <QFileInfo>

#include <fileref.h>
#include <tpropertymap.h>

namespace sim
{
namespace
{

QString Text(const TagLib::String& aText, const QString& aIfEmpty)
{
    const std::string utf8 = aText.to8Bit(true);
    return utf8.empty() ? aIfEmpty : QString::fromStdString(utf8);
}

QString Property(const TagLib::PropertyMap& aProperties, const char* aName)
{
    const auto found = aProperties.find(aName);
    if (found == aProperties.end() || found->second.isEmpty()) {
        return {};
    }
    return Text(found->second.front(), {});
}

QString FolderOf(const QFileInfo& aFile, const QString& aRoot)
{
    const QString relative = QDir(aRoot).relativeFilePath(aFile.absolutePath());
    return relative.isEmpty() || relative == QLatin1String(".") ? QStringLiteral("/") : relative;
}

// Embedded pictures are left alone: a picture beside the files is what a test can provide most easily.
QString ArtBeside(const QFileInfo& aFile)
{
    for (const char* name : {"cover.jpg", "cover.png", "folder.jpg"}) {
        QString path = aFile.absoluteDir().filePath(QLatin1String(name));
        if (QFileInfo::exists(path)) {
            return path;
        }
    }
    return {};
}

} // namespace

QStringList AudioFilePatterns()
{
    return {QStringLiteral("*.mp3"), QStringLiteral("*.flac"), QStringLiteral("*.ogg"),
            QStringLiteral("*.wav"), QStringLiteral("*.m4a"),  QStringLiteral("*.wma")};
}

bool ReadTrack(const QString& aPath, const QString& aRoot, Track& aTrack)
{
    const QFileInfo info(aPath);
    const TagLib::FileRef file(QFile::encodeName(aPath).constData());
    if (file.isNull() || file.audioProperties() == nullptr || file.audioProperties()->sampleRate() <= 0) {
        return false;
    }
    const QString unknown = QStringLiteral("Unknown");
    const TagLib::Tag& tag = *file.tag();
    const TagLib::PropertyMap properties = file.file()->properties();

    Track track;
    track.url = info.absoluteFilePath();
    track.id = StableId(track.url);
    track.fileName = info.fileName();
    track.folder = FolderOf(info, aRoot);
    track.title = Text(tag.title(), info.completeBaseName());
    track.artist = Text(tag.artist(), unknown);
    track.album = Text(tag.album(), unknown);
    track.genre = Text(tag.genre(), unknown);
    track.albumArtist = Property(properties, "ALBUMARTIST");
    track.composer = Property(properties, "COMPOSER");
    track.art = ArtBeside(info);
    track.year = tag.year();
    track.number = tag.track();
    track.lengthMs = static_cast<uint>(file.audioProperties()->lengthInMilliseconds());
    aTrack = track;
    return true;
}

} // namespace sim
