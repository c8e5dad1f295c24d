#include "Chapters.h"

#include "Json.h"

#include <QJsonArray>

#include <algorithm>

namespace sim
{

uint ChapterAt(const Track& aTrack, uint aPositionMs)
{
    for (uint chapter = kChapters; aTrack.lengthMs > 0 && chapter > 1; --chapter) {
        if (aPositionMs >= ChapterStart(aTrack, chapter)) {
            return chapter;
        }
    }
    return aTrack.lengthMs > 0 ? 1 : 0;
}

uint ChapterStart(const Track& aTrack, uint aChapter)
{
    return static_cast<uint>(quint64(aTrack.lengthMs) * (aChapter - 1) / kChapters);
}

QString ChaptersText(const Track& aTrack)
{
    QJsonArray chapters;
    for (uint chapter = 1; aTrack.lengthMs > 0 && chapter <= kChapters; ++chapter) {
        chapters.append(
            QJsonObject{{QStringLiteral("chapter_id"), static_cast<qint64>(chapter)},
                        {QStringLiteral("start_ms"), static_cast<qint64>(ChapterStart(aTrack, chapter))}});
    }
    return ToText({{QStringLiteral("chapters"), chapters}});
}

} // namespace sim
