/// The other side of MPL::GetParameters: what the stack's programs pack their small records with.
#pragma once

#include <QPair>
#include <QString>
#include <QVector>

namespace MPL::Detail
{

/// Joins the pairs, in their order, to one parameter text: key=value with `;` between pairs, and everything
/// that could be mistaken percent-encoded. MPL::GetParameters yields the same pairs again.
QString MakeParameters(const QVector<QPair<QString, QString>>& aParameters);

} // namespace MPL::Detail
