// Reading a structure that a peer may have typed otherwise.
#pragma once

#include <QDBusArgument>
#include <QString>

#include <algorithm>
#include <initializer_list>

namespace MPL::Detail
{

// Opens the structure if it has one of these signatures. Otherwise steps over the value, whatever it is, so
// that a list of such values still comes to its end.
inline bool OpenStructure(const QDBusArgument& aArgument, std::initializer_list<const char*> aSignatures)
{
    const QString signature = aArgument.currentSignature();
    const auto matches = [&signature](const char* aSignature) {
        return signature == QLatin1String(aSignature);
    };
    if (std::none_of(aSignatures.begin(), aSignatures.end(), matches)) {
        aArgument.asVariant();
        return false;
    }
    aArgument.beginStructure();
    return true;
}

} // namespace MPL::Detail
