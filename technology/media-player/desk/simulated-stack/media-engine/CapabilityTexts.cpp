#include "CapabilityTexts.h"

#include "Json.h"
#include "ParameterText.h"
#include <MPL_MediaPlayerLib.h>

#include <QJsonArray>

namespace sim
{

QString FunctionalitiesText(const QVector<Functionality>& aFunctionalities)
{
    QJsonObject available;
    for (const Functionality& function : aFunctionalities) {
        available.insert(function.name,
                         QJsonObject{{MPL::MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE,
                                      function.enabled ? MPL::MPL_FUNCTIONALITY_STATE_ENABLED
                                                       : MPL::MPL_FUNCTIONALITY_STATE_DISABLED},
                                     {MPL::MPL_FUNCTIONALITY_JSON_KEY_OPTIONS,
                                      QJsonArray::fromStringList(function.options)}});
    }
    const QJsonObject root{{MPL::MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES, available}};
    return ToText(root);
}

QString EventText(const QString& aType, const QString& aEvent, const QString& aText)
{
    return MPL::Detail::MakeParameters({{MPL::MPL_EVENT_KEY_EVENT_TYPE, aType},
                                        {MPL::MPL_EVENT_KEY_EVENT, aEvent},
                                        {MPL::MPL_EVENT_KEY_TEXT_INFO, aText}});
}

} // namespace sim
