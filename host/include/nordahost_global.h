#pragma once

#include <QtGlobal>

// Everything the host library offers is exported with this mark; the plugin sees it as an import.
#if defined(NORDAHOST_LIBRARY)
#define NORDAHOST_EXPORT Q_DECL_EXPORT
#else
#define NORDAHOST_EXPORT Q_DECL_IMPORT
#endif

// Members of a host class whose bodies the plugin supplies: they live inside the plugin library
// and must not be exported from it.
#define NORDA_PLUGIN_SIDE Q_DECL_HIDDEN
