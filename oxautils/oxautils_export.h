#ifndef OXAUTILS_OXAUTILS_EXPORT_H
#define OXAUTILS_OXAUTILS_EXPORT_H

#include <QtGlobal>

/// Marks what a host may call; everything else stays hidden in the library.
#ifdef OXAUTILS_LIBRARY
#define OXAUTILS_EXPORT Q_DECL_EXPORT
#else
#define OXAUTILS_EXPORT Q_DECL_IMPORT
#endif

#endif
