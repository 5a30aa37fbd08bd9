#include "resources/TroveResources.h"

#include "util/ResourceModule.h"

namespace TroveUI {

namespace {
const Util::ResourceModule* g_instance = nullptr;
}

const Util::ResourceModule& DefaultResourceModule()
{
    static const Util::ResourceModule module(QStringLiteral(":/kvxreftroveui/default"),
                                             QStringLiteral("default"));
    return module;
}

const Util::ResourceModule* ResourceInstance()
{
    return g_instance ? g_instance : &DefaultResourceModule();
}

void SetResourceInstance(const Util::ResourceModule* module)
{
    g_instance = module;
}

QString ResString(unsigned id)
{
    return ResourceInstance()->String(id);
}

std::wstring ResStringW(unsigned id)
{
    return Util::LoadStrW(ResourceInstance(), id);
}

} // namespace TroveUI
