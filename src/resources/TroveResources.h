#pragma once

#include "kvxreftroveui_export.h"

#include <QString>

#include <string>

namespace Util {
class ResourceModule;
}

namespace TroveUI {

/// The English resource module compiled into the library.
KVXREFTROVEUI_EXPORT const Util::ResourceModule& DefaultResourceModule();

/// The library's resource module: the default one unless the host chose another (a language
/// module loaded with Util::ResourceModule::LoadRcc, usually falling back to the default one).
KVXREFTROVEUI_EXPORT const Util::ResourceModule* ResourceInstance();
/// Makes @p module the library's resource module; null goes back to the default module. The
/// module must outlive its use.
KVXREFTROVEUI_EXPORT void SetResourceInstance(const Util::ResourceModule* module);

/// A text of the library's resource module; empty when the id is missing.
KVXREFTROVEUI_EXPORT QString ResString(unsigned id);
KVXREFTROVEUI_EXPORT std::wstring ResStringW(unsigned id);

} // namespace TroveUI
