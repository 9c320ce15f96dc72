#pragma once

#include <QtGlobal>

/// Marks what libTdBasic.so shows to the outside.
#if defined(TdBasic_EXPORTS)
#define TDBASIC_API Q_DECL_EXPORT
#else
#define TDBASIC_API Q_DECL_IMPORT
#endif
