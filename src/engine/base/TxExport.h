#pragma once

#include <QtGlobal>

/// Marks what libtxengine.so shows to the outside.
#if defined(txengine_EXPORTS)
#define TX_EXPORT Q_DECL_EXPORT
#else
#define TX_EXPORT Q_DECL_IMPORT
#endif
