#include "Journal.h"

#include <QMutex>

namespace MPL::Doubles
{

namespace
{
QMutex s_Mutex;
QStringList s_Notes;
} // namespace

void Note(const QString& aLine)
{
    QMutexLocker lock(&s_Mutex);
    s_Notes << aLine;
}

QStringList Notes(const QString& aPrefix)
{
    QMutexLocker lock(&s_Mutex);
    QStringList chosen;
    for (const QString& line : qAsConst(s_Notes)) {
        if (line.startsWith(aPrefix)) {
            chosen << line;
        }
    }
    return chosen;
}

void ClearNotes()
{
    QMutexLocker lock(&s_Mutex);
    s_Notes.clear();
}

std::string Text(const QStringList& aLines)
{
    return aLines.join(QLatin1Char('\n')).toStdString();
}

} // namespace MPL::Doubles
