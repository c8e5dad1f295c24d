#include "Journal.h"

#include <QMutex>

namespace MPL::Doubles
{

namespace
{
QMutex s_Mutex;
QStringList s_Notes;
} // namespace

void Note(const QString& line)
{
    QMutexLocker lock(&s_Mutex);
    s_Notes << line;
}

QStringList Notes(const QString& prefix)
{
    QMutexLocker lock(&s_Mutex);
    QStringList chosen;
    for (const QString& line : qAsConst(s_Notes)) {
        if (line.startsWith(prefix)) {
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

std::string Text(const QStringList& lines)
{
    return lines.join(QLatin1Char('\n')).toStdString();
}

} // namespace MPL::Doubles
