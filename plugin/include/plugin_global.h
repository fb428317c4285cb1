#pragma once

#include <QtGlobal>

// The ready components that no id serves but that a host may build on. The rest stays hidden.
#define NORDA_PLUGIN_EXPORT Q_DECL_EXPORT
