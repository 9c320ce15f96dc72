#include "EnteredNumber.h"

#include "engine/base/TxNumberText.h"

#include <cmath>

std::optional<double> enteredNumber(QString text)
{
    if (!text.contains(u'.'))
        text.replace(u',', u'.'); // the one comma of "1,5"; two commas make no number
    bool ok = false;
    const double value = TxNumberText::toDouble(text, &ok);
    return ok && std::isfinite(value) ? std::optional(value) : std::nullopt;
}
