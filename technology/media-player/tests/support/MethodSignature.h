/// The D-Bus signature of what a signal or slot of a proxy carries.
///
///     EXPECT_EQ(SignatureOfArguments(method), "su");
#pragma once

#include "environment/QtVersions.h"

#include <QMetaMethod>
#include <QString>

namespace MPL::Doubles
{

inline QString SignatureOfType(int aType)
{
    return QLatin1String(MPL::Detail::SignatureOfType(aType));
}

inline QString SignatureOfArguments(const QMetaMethod& aMethod)
{
    QString signature;
    for (int i = 0; i < aMethod.parameterCount(); ++i) {
        signature += SignatureOfType(aMethod.parameterType(i));
    }
    return signature;
}

} // namespace MPL::Doubles
