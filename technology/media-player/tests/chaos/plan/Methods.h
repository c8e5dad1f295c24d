/// The methods of the stack's programs that a schedule lets go wrong.
#pragma once

#include <MPL_SimulatedFaults.h>

#include <QString>
#include <QVector>

namespace chaos
{

/// Each as "program method".
const QVector<QString>& MethodNames();

/// Asks the program for this fault of the method, named as above.
testing::AssertionResult SetReply(MPL::SimulatedFaults& aFaults, const QString& aMethodName,
                                  MPL::ReplyFault aReply);

} // namespace chaos
