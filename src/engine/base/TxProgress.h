#pragma once

#include <QtGlobal>

#include <functional>

/// How long work tells how far it is and asks whether to go on. Called now and then, on the caller's thread.
///
/// The first argument counts what is done, the second what there is in all (-1 when it is not known), in the unit that
/// the work names. The answer false asks the work to stop; it then takes back what it did and fails. An empty function
/// lets the work run through.
using TxProgress = std::function<bool(qint64 done, qint64 total)>;
