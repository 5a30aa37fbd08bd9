#include "resources/TemporaryResourceOverride.h"

#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

CTemporaryResourceOverride::CTemporaryResourceOverride()
    : CTemporaryResourceOverride(TroveUI::ResourceInstance())
{}

CTemporaryResourceOverride::CTemporaryResourceOverride(const Util::ResourceModule* module)
{
    if (!module)
        return;
    m_previous = Util::CurrentResourceModule();
    if (m_previous != module) {
        Util::SetCurrentResourceModule(module);
        m_changed = true;
    }
}

CTemporaryResourceOverride::~CTemporaryResourceOverride()
{
    if (m_changed)
        Util::SetCurrentResourceModule(m_previous);
}
