// SPDX-License-Identifier: Apache-2.0
#ifndef OXAUTILS_OXAUTILS_EXPORT_H
#define OXAUTILS_OXAUTILS_EXPORT_H

#include <QtGlobal>

/// Marks what a host may call; other symbols are hidden.
#ifdef OXAUTILS_LIBRARY
#define OXAUTILS_EXPORT Q_DECL_EXPORT
#else
#define OXAUTILS_EXPORT Q_DECL_IMPORT
#endif

#endif
