#pragma once

#include <QtGlobal>

/// Marks what libTdCommon.so shows to the outside.
#if defined(TDCOMMON_BUILD)
#define TDCOMMON_API Q_DECL_EXPORT
#else
#define TDCOMMON_API Q_DECL_IMPORT
#endif
