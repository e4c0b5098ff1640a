// dzcore_export.h - visibility of the library's classes and of a plug-in's two entry points.
#pragma once

#include <qglobal.h>

#ifdef DZCORE_LIBRARY
#define DZCORE_EXPORT Q_DECL_EXPORT
#else
#define DZCORE_EXPORT Q_DECL_IMPORT
#endif

#define DZEXPORT Q_DECL_EXPORT

typedef int DzError; // 0: none
static const DzError DZ_NO_ERROR = 0;
