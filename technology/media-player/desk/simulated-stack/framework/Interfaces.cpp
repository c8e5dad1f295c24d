#include "Interfaces.h"

#include <QFile>
#include <QXmlStreamReader>

// The linker takes resources of a static library only when they are called for, and not from within a
// namespace.
static void LoadDescriptions()
{
    Q_INIT_RESOURCE(interfaces);
}

namespace sim
{

QStringList MethodsOf(const QString& aInterfaceName)
{
    LoadDescriptions();
    QFile description(QStringLiteral(":/%1.xml").arg(aInterfaceName));
    if (!description.open(QIODevice::ReadOnly)) {
        return {};
    }
    QStringList methods;
    for (QXmlStreamReader xml(&description); !xml.atEnd(); xml.readNext()) {
        if (xml.isStartElement() && xml.name() == QLatin1String("method")) {
            methods << xml.attributes().value(QLatin1String("name")).toString();
        }
    }
    return methods;
}

} // namespace sim
