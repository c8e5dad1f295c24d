// The one reader of the functionalities text; the utilities and the playback client each make their own
// records of what it finds.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace MPL
{

struct FunctionalityEntry {
    QString name;
    QString state;
    QStringList options;
};

// Returns the functionalities in the text's order, the same name more than once if the text has it so; none
// when the text is not JSON or has no "available_functionalities". A state that is no text counts as absent,
// an option that is no text as an empty one.
QVector<FunctionalityEntry> ReadFunctionalitiesText(const QString& aText);

} // namespace MPL
