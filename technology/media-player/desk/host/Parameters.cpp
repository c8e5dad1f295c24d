#include "ParameterText.h"
#include <MPL_Parameters.h>

#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

bool MPL::GetParameters(const QString& aText, QMap<QString, QString>& aParameters)
{
    QUrlQuery query;
    query.setQueryDelimiters(QLatin1Char('='), QLatin1Char(';'));
    query.setQuery(aText);
    bool found = false;
    for (const auto& [key, value] : query.queryItems(QUrl::FullyDecoded)) {
        // Words without a "=" have a null value: they are no pair, and no more is one without a key.
        if (!key.isEmpty() && !value.isNull()) {
            aParameters.insert(key, value);
            found = true;
        }
    }
    return found;
}

QString MPL::Detail::MakeParameters(const QVector<QPair<QString, QString>>& aParameters)
{
    // Paths and sentences stay readable: none of these characters means anything in a parameter text.
    const QByteArray readable = QByteArrayLiteral(" /:,()@");
    QStringList pairs;
    for (const auto& [key, value] : aParameters) {
        const QByteArray pair =
            QUrl::toPercentEncoding(key, readable) + '=' + QUrl::toPercentEncoding(value, readable);
        pairs << QString::fromLatin1(pair);
    }
    return pairs.join(QLatin1Char(';'));
}
