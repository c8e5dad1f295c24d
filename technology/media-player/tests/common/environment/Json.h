// A JSON text as a tree that frees itself. The environment's configuration and the sources' functionalities
// are read with it.
#pragma once

#include <QString>

#include <cjson/cJSON.h>

#include <memory>

namespace MPL::Detail
{

struct JsonDeleter {
    void operator()(cJSON* aTree) const { cJSON_Delete(aTree); }
};
using JsonTree = std::unique_ptr<cJSON, JsonDeleter>;

// Empty when the text is no JSON.
inline JsonTree ParseJson(const QString& aText)
{
    return JsonTree(cJSON_Parse(aText.toUtf8().constData()));
}

} // namespace MPL::Detail
