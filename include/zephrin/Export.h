#pragma once

#include <QtCore/qglobal.h>

/// Marks what a host may link: everything else in the shared library is hidden.
#if defined(ZEPHRIN_BUILDING_LIBRARY)
#define ZEPHRIN_EXPORT Q_DECL_EXPORT
#elif defined(ZEPHRIN_SHARED)
#define ZEPHRIN_EXPORT Q_DECL_IMPORT
#else
#define ZEPHRIN_EXPORT
#endif
