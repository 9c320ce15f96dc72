#pragma once

#include <QString>

#include <optional>

/// The finite number that a user wrote, with a decimal point or a decimal comma; nothing when the text is none.
std::optional<double> enteredNumber(QString text);
