// The texts that every capability object publishes: its functionalities and its events.
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <algorithm>
#include <iterator>

namespace sim
{

struct Functionality {
    QString name;
    bool enabled = true;
    QStringList options;
};

/// The JSON text in which a capability lists what it can do at the moment.
QString FunctionalitiesText(const QVector<Functionality>& aFunctionalities);

/// An event in parameter form; aType and aEvent are words of the events, aText explains it to people.
QString EventText(const QString& aType, const QString& aEvent, const QString& aText);

/// A group of words as the options of a functionality.
template <class Words>
QStringList OptionsOf(const Words& aWords)
{
    QStringList options;
    std::copy(aWords.begin(), aWords.end(), std::back_inserter(options));
    return options;
}

} // namespace sim
