#include "services/RmxImageSettings.h"

#include <QtGlobal>

namespace TroveUI {

RmxImageSettings* RmxImageSettings::m_pInstance = nullptr;

void RmxImageSettings::New()
{
    if (!m_pInstance)
        m_pInstance = new RmxImageSettings;
}

void RmxImageSettings::Delete()
{
    delete m_pInstance;
    m_pInstance = nullptr;
}

RmxImageSettings& RmxImageSettings::Value()
{
    Q_ASSERT_X(m_pInstance, "RmxImageSettings::Value", "RmxImageSettings::New was not called");
    return *m_pInstance;
}

bool RmxImageSettings::IsValueCreated()
{
    return m_pInstance != nullptr;
}

} // namespace TroveUI
