/// The library's calls that a schedule can name.
#pragma once

#include "Step.h"

#include <QStringList>

#include <functional>

namespace chaos
{

struct Outcome {
    bool wasTrue = true;
    QStringList changed = {}; ///< out-arguments
    QString evidence = {};
};

using Call = std::function<Outcome()>;

/// Makes what the call needs, such as proxies, which is not to count as its time, and returns the call.
Call Prepare(const Step& aStep);

} // namespace chaos
