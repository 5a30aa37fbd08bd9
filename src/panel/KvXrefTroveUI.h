#pragma once

#include "kvxreftroveui_export.h"

/// Called once by the host when it loads the library, before anything else; returns 1 on
/// success. Everything else the library needs is created when first used.
extern "C" KVXREFTROVEUI_EXPORT int kvXrefTroveUIInitialize();
/// Called once by the host as the last call into the library; returns 1 on success.
extern "C" KVXREFTROVEUI_EXPORT int kvXrefTroveUITerminate();
