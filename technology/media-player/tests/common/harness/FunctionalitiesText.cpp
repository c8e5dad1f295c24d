#include "FunctionalitiesText.h"

#include "environment/Json.h"
#include <MPL_MediaPlayerLib.h>

namespace MPL
{
namespace
{

QString ToText(const char* aUtf8)
{
    if (aUtf8 == nullptr) {
        return {};
    }
    // Qt drops a leading byte-order mark; a text is to arrive as it was sent.
    QString text = QString::fromUtf8(aUtf8);
    return qstrncmp(aUtf8, "\xEF\xBB\xBF", 3) == 0 ? QChar(QChar::ByteOrderMark) + text : text;
}

const cJSON* Member(const cJSON* aObject, const QString& aKey)
{
    return cJSON_GetObjectItem(aObject, aKey.toUtf8().constData());
}

QString StringOf(const cJSON* aItem)
{
    return cJSON_IsString(aItem) != 0 ? ToText(aItem->valuestring) : QString();
}

FunctionalityEntry ReadEntry(const cJSON* aFunctionality)
{
    FunctionalityEntry entry;
    entry.name = ToText(aFunctionality->string);
    entry.state = StringOf(Member(aFunctionality, MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE));
    const cJSON* options = Member(aFunctionality, MPL_FUNCTIONALITY_JSON_KEY_OPTIONS);
    const cJSON* option = nullptr;
    cJSON_ArrayForEach(option, options)
    {
        entry.options << StringOf(option);
    }
    return entry;
}

} // namespace

QVector<FunctionalityEntry> ReadFunctionalitiesText(const QString& aText)
{
    QVector<FunctionalityEntry> entries;
    const Detail::JsonTree root = Detail::ParseJson(aText);
    const cJSON* functionalities = Member(root.get(), MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES);
    const cJSON* functionality = nullptr;
    cJSON_ArrayForEach(functionality, functionalities)
    {
        entries << ReadEntry(functionality);
    }
    return entries;
}

} // namespace MPL
