#include "Printers.h"

#include <MPL_TestPrinters.h>

#include <QDBusArgument>
#include <QDebug>

#include <cctype>
#include <tuple>

namespace
{

template <typename Value>
std::string DebugText(const Value& aValue)
{
    QString text;
    QDebug(&text).nospace() << aValue;
    return text.toStdString();
}

template <typename Value>
bool PrintIf(const QVariant& aValue, std::ostream* aStream)
{
    if (aValue.userType() != qMetaTypeId<Value>()) {
        return false;
    }
    *aStream << testing::PrintToString(aValue.value<Value>());
    return true;
}

template <typename... Values>
bool PrintIfOneOf(const QVariant& aValue, std::ostream* aStream)
{
    return (PrintIf<Values>(aValue, aStream) || ...);
}

// Qt writes QVariant(<type>, <value>).
std::string UnwrappedText(const QVariant& aValue)
{
    const std::string text = DebugText(aValue);
    const std::size_t begin = text.find(", ") + 2;
    return text.substr(begin, text.size() - begin - 1);
}

// What the bus brought in and nobody has read yet.
bool PrintIfUnread(const QVariant& aValue, std::ostream* aStream)
{
    if (aValue.userType() != qMetaTypeId<QDBusArgument>()) {
        return false;
    }
    *aStream << "signature " << DebugText(aValue.value<QDBusArgument>().currentSignature());
    return true;
}

} // namespace

namespace MPL::Detail
{

void PrintBareValue(const QVariant& aValue, std::ostream* aStream)
{
    const bool printed =
        PrintIfOneOf<QString, QByteArray, QStringList, QVariantMap, QVariantList, QMap<QString, QString>,
                     QDBusVariant, QDBusObjectPath, QList<QVariantMap>, QList<uint>>(aValue, aStream) ||
        PrintIfOneOf<MPL::ServiceObject, QList<MPL::ServiceObject>, MPL::TransactionId, MPL::BrowserHierarchy,
                     QVector<MPL::BrowserHierarchy>, MPL::BufferedMedia>(aValue, aStream) ||
        PrintIfUnread(aValue, aStream);
    if (!printed) {
        *aStream << (aValue.canConvert<QString>() ? aValue.toString().toStdString() : UnwrappedText(aValue));
    }
}

std::string NameOfParameter(const std::string& aPrinted)
{
    std::string name;
    for (const char character : aPrinted) {
        if (std::isalnum(static_cast<unsigned char>(character)) != 0) {
            name += character;
        } else if (!name.empty() && name.back() != '_') {
            name += '_';
        }
    }
    if (!name.empty() && name.back() == '_') {
        name.pop_back();
    }
    return name.empty() ? "Empty" : name;
}

} // namespace MPL::Detail

void PrintTo(const QString& aText, std::ostream* aStream)
{
    *aStream << DebugText(aText);
}

void PrintTo(const QByteArray& aBytes, std::ostream* aStream)
{
    *aStream << DebugText(aBytes);
}

void PrintTo(const QVariant& aValue, std::ostream* aStream)
{
    *aStream << "QVariant(";
    if (aValue.isValid()) {
        *aStream << aValue.typeName() << ", ";
        MPL::Detail::PrintBareValue(aValue, aStream);
    } else {
        *aStream << "Invalid";
    }
    *aStream << ")";
}

void PrintTo(const QDBusVariant& aValue, std::ostream* aStream)
{
    PrintTo(aValue.variant(), aStream);
}

void PrintTo(const QDBusObjectPath& aPath, std::ostream* aStream)
{
    PrintTo(aPath.path(), aStream);
}

void PrintTo(QDBusError::ErrorType aType, std::ostream* aStream)
{
    // The last part of the type's D-Bus name is what Qt calls it; these two have none.
    switch (aType) {
    case QDBusError::NoError:
        *aStream << "NoError";
        break;
    case QDBusError::Other:
        *aStream << "Other";
        break;
    default:
        *aStream << QDBusError::errorString(aType).section(QLatin1Char('.'), -1).toStdString();
    }
}

void PrintTo(const QDBusError& aError, std::ostream* aStream)
{
    PrintTo(aError.type(), aStream);
    if (aError.isValid()) {
        *aStream << " (" << aError.name().toStdString() << "): " << DebugText(aError.message());
    }
}

namespace MPL
{

void PrintTo(const ServiceObject& aObject, std::ostream* aStream)
{
    *aStream << "ServiceObject(" << DebugText(aObject.serviceName) << ", "
             << DebugText(aObject.GetPathString()) << ")";
}

void PrintTo(const TransactionId& aId, std::ostream* aStream)
{
    *aStream << "TransactionId(" << DebugText(aId.GetDbusId()) << ", " << aId.GetRequestId() << ")";
}

void PrintTo(const BrowserHierarchy& aHierarchy, std::ostream* aStream)
{
    *aStream << "BrowserHierarchy(" << DebugText(aHierarchy.name) << ", " << DebugText(aHierarchy.label)
             << ", index " << aHierarchy.index << ", count " << aHierarchy.count << ")";
}

void PrintTo(const BufferedMedia& aMedia, std::ostream* aStream)
{
    *aStream << "BufferedMedia(start " << aMedia.start << ", end " << aMedia.end << ", total " << aMedia.total
             << ", valueA " << aMedia.valueA << ", valueB " << aMedia.valueB << ")";
}

bool operator==(const ServiceObject& aLeft, const ServiceObject& aRight)
{
    return aLeft.serviceName == aRight.serviceName && aLeft.objectPath == aRight.objectPath;
}

bool operator!=(const ServiceObject& aLeft, const ServiceObject& aRight)
{
    return !(aLeft == aRight);
}

bool operator==(const BrowserHierarchy& aLeft, const BrowserHierarchy& aRight)
{
    return std::tie(aLeft.name, aLeft.label, aLeft.index, aLeft.count) ==
           std::tie(aRight.name, aRight.label, aRight.index, aRight.count);
}

bool operator!=(const BrowserHierarchy& aLeft, const BrowserHierarchy& aRight)
{
    return !(aLeft == aRight);
}

} // namespace MPL
