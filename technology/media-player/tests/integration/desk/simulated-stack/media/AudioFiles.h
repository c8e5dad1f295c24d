// Audio files made at test time: a tone with tags.
#pragma once

#include <QString>

struct AudioFile {
    QString path; ///< the suffix says which format
    QString title;
    QString artist;
    QString album;
    QString genre;
    uint number = 0;
    double seconds = 1;
};

/// Makes the file and its folder; one that is there is written anew. Returns what went wrong, empty on
/// success. Blocks for sox, some hundredths of a second per file.
QString MakeAudioFile(const AudioFile& aFile);

/// Gives an audio file that is there another title.
bool SetTitle(const QString& aPath, const QString& aTitle);
