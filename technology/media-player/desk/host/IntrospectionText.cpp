#include "IntrospectionText.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

namespace MPL::Detail
{

namespace
{

// One element of an object path, or several: an object may name its grandchildren without the level between.
bool IsChildName(const QString& aName)
{
    static const QRegularExpression kChildName(QStringLiteral("\\A[A-Za-z0-9_]+(/[A-Za-z0-9_]+)*\\z"));
    return kChildName.match(aName).hasMatch();
}

} // namespace

std::optional<Introspection> ReadIntrospection(const QString& aText)
{
    QXmlStreamReader xml(aText);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("node")) {
        return std::nullopt;
    }
    Introspection read;
    while (xml.readNextStartElement()) {
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        if (xml.name() == QLatin1String("interface")) {
            read.interfaces << name;
        } else if (xml.name() == QLatin1String("node") && IsChildName(name)) {
            read.children << name;
        }
        // The children's own content is asked of the children.
        xml.skipCurrentElement();
    }
    return xml.hasError() ? std::nullopt : std::make_optional(read);
}

} // namespace MPL::Detail
