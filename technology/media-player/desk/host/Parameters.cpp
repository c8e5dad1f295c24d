#include "ParameterText.h"
#include <MPL_Parameters.h>

#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace
{

// Queries decode by themselves, too, but lose the characters that Unicode keeps for itself, as U+FFFF. The
// byte in front is there as a U+FEFF at the beginning would be taken for a mark of the encoding.
QString Decoded(const QString& aText)
{
    const QByteArray bytes = 'x' + QByteArray::fromPercentEncoding(aText.toLatin1());
    return QString::fromUtf8(bytes.constData(), bytes.size()).mid(1);
}

} // namespace

bool MPL::GetParameters(const QString& aText, QMap<QString, QString>& aParameters)
{
    QUrlQuery query;
    query.setQueryDelimiters(QLatin1Char('='), QLatin1Char(';'));
    query.setQuery(aText);
    bool found = false;
    for (const auto& [key, value] : query.queryItems(QUrl::FullyEncoded)) {
        // Words without a "=" have a null value: they are no pair, and no more is one without a key.
        if (!key.isEmpty() && !value.isNull()) {
            aParameters.insert(Decoded(key), Decoded(value));
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
