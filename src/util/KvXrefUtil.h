#pragma once

#include "kvxrefutil_export.h"

/// Start and end calls of the utility library, made once each by every library that uses it.
/// Calls nest: each initialisation needs one termination. Both return 1 on success; a
/// termination without a matching initialisation returns 0.
extern "C" KVXREFUTIL_EXPORT int kvXrefUtilCrtInitialize();
extern "C" KVXREFUTIL_EXPORT int kvXrefUtilCrtTerminate();

namespace Util {
/// How many initialisations are still open.
KVXREFUTIL_EXPORT int CrtInitializeCount();
} // namespace Util
