#pragma once

#include <QtGlobal>

#if defined(PANEDECK_BUILDING)
#define PANEDECK_EXPORT Q_DECL_EXPORT
#elif defined(PANEDECK_STATIC)
#define PANEDECK_EXPORT
#else
#define PANEDECK_EXPORT Q_DECL_IMPORT
#endif
