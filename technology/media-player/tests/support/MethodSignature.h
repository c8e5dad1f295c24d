/// The D-Bus signature of what a signal or slot of a proxy carries.
///
///     EXPECT_EQ(SignatureOfArguments(method), "su");
#pragma once

#include <QDBusMetaType>
#include <QMetaMethod>
#include <QString>

namespace MPL::Doubles
{

namespace Detail
{

// Qt 5 knows a type by its number, Qt 6 by an object.
inline const char* Ask(const char* (*aSignatureOf)(int), int aType)
{
    return aSignatureOf(aType);
}

inline const char* Ask(const char* (*aSignatureOf)(QMetaType), int aType)
{
    return aSignatureOf(QMetaType(aType));
}

} // namespace Detail

inline QString SignatureOfType(int aType)
{
    return QLatin1String(Detail::Ask(&QDBusMetaType::typeToSignature, aType));
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
