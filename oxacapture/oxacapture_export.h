// SPDX-License-Identifier: Apache-2.0
#ifndef OXACAPTURE_OXACAPTURE_EXPORT_H
#define OXACAPTURE_OXACAPTURE_EXPORT_H

#include <QtGlobal>

/// Marks what a program may call; everything else stays hidden in the library.
#ifdef OXACAPTURE_LIBRARY
#define OXACAPTURE_EXPORT Q_DECL_EXPORT
#else
#define OXACAPTURE_EXPORT Q_DECL_IMPORT
#endif

#endif
