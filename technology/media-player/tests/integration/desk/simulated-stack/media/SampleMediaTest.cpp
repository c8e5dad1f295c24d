// The stack's sample media are what the guide says of them.
#include <QDir>
#include <QMap>
#include <QSet>

#include <fileref.h>
#include <gtest/gtest.h>
#include <tag.h>

namespace
{

struct Medium {
    QMap<QString, QString> titles; // by file name
    QSet<QString> artists;
    QSet<QString> albums;
};

QString Text(const TagLib::String& aText)
{
    return QString::fromStdString(aText.to8Bit(true));
}

Medium Read(const char* aName)
{
    Medium medium;
    const QDir folder(QStringLiteral("/opt/talvex/test/media/") + aName);
    for (const QFileInfo& info : folder.entryInfoList(QDir::Files)) {
        const TagLib::FileRef file(QFile::encodeName(info.filePath()).constData());
        EXPECT_TRUE(!file.isNull() && file.audioProperties()->lengthInMilliseconds() >= 1000)
            << qPrintable(info.filePath());
        if (!file.isNull()) {
            medium.titles.insert(info.fileName(), Text(file.tag()->title()));
            medium.artists.insert(Text(file.tag()->artist()));
            medium.albums.insert(Text(file.tag()->album()));
        }
    }
    return medium;
}

TEST(SampleMedia, AreTaggedInSeveralFormats)
{
    const QMap<QString, QString> small = Read("SMALLMUSIC").titles;
    const QMap<QString, QString> expected{{"tone1.flac", "Tone 1"}, {"tone2.flac", "Tone 2"},
                                          {"tone3.flac", "Tone 3"}, {"fifth.ogg", "Fifth"},
                                          {"octave.mp3", "Octave"}, {"untagged.wav", ""}};
    EXPECT_TRUE(small == expected) << qPrintable(QStringList(small.values()).join('|'));
    const Medium large = Read("LARGEMUSIC");
    EXPECT_EQ(large.titles.size(), 60);
    EXPECT_EQ(large.albums.size(), 10);
    EXPECT_EQ(large.artists.size(), 5);
}

TEST(SampleMedia, AreThereWithOtherTagsUnderTheSameNames)
{
    const Medium before = Read("SMALLMUSIC");
    const Medium after = Read("MODIFIED_MD");
    EXPECT_EQ(after.titles.keys(), before.titles.keys());
    EXPECT_EQ(after.titles.value("octave.mp3").toStdString(), "Octave (remastered)");
    EXPECT_TRUE(after.artists.contains("Square Two"));
    EXPECT_FALSE(before.artists.contains("Square Two"));
}

} // namespace
