#include "FunctionalitiesText.h"

#include <MPL_MediaPlayerLib.h>

#include <cjson/cJSON.h>

#include <memory>

namespace MPL
{
namespace
{

struct TreeDeleter {
    void operator()(cJSON* tree) const { cJSON_Delete(tree); }
};

QString ToText(const char* utf8)
{
    if (utf8 == nullptr) {
        return {};
    }
    // Qt drops a leading byte-order mark; a text is to arrive as it was sent.
    QString text = QString::fromUtf8(utf8);
    return qstrncmp(utf8, "\xEF\xBB\xBF", 3) == 0 ? QChar(QChar::ByteOrderMark) + text : text;
}

const cJSON* Member(const cJSON* object, const QString& key)
{
    return cJSON_GetObjectItem(object, key.toUtf8().constData());
}

QString StringOf(const cJSON* item)
{
    return cJSON_IsString(item) != 0 ? ToText(item->valuestring) : QString();
}

FunctionalityEntry ReadEntry(const cJSON* functionality)
{
    FunctionalityEntry entry;
    entry.name = ToText(functionality->string);
    entry.state = StringOf(Member(functionality, MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE));
    const cJSON* options = Member(functionality, MPL_FUNCTIONALITY_JSON_KEY_OPTIONS);
    const cJSON* option = nullptr;
    cJSON_ArrayForEach(option, options)
    {
        entry.options << StringOf(option);
    }
    return entry;
}

} // namespace

QVector<FunctionalityEntry> ReadFunctionalitiesText(const QString& text)
{
    QVector<FunctionalityEntry> entries;
    const std::unique_ptr<cJSON, TreeDeleter> root(cJSON_Parse(text.toUtf8().constData()));
    const cJSON* functionalities = Member(root.get(), MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES);
    const cJSON* functionality = nullptr;
    cJSON_ArrayForEach(functionality, functionalities)
    {
        entries << ReadEntry(functionality);
    }
    return entries;
}

} // namespace MPL
