#include "panel/detail/ToolTipSettings.h"

#include "panel/XmlHelpers.h"

#include <QDomNode>

#include <algorithm>
#include <climits>

namespace {

int clampToInt(long value)
{
    return int(std::clamp<long>(value, INT_MIN, INT_MAX));
}

} // namespace

bool ToolTipSettings::Load(const QDomNode& parent, bool& showDetail)
{
    QDomNode settings;
    if (!GetChildNode(parent, L"TooltipSettings", &settings))
        return false;
    long style = 0;
    long size = 0;
    long detail = 0;
    GetAttributeValue(settings, L"TooltipStyle", style);
    GetAttributeValue(settings, L"TooltipSize", size);
    GetAttributeValue(settings, L"ShowDetail", detail);
    m_current.style = clampToInt(style);
    m_current.previewSize = clampToInt(size);
    showDetail = detail != 0;
    return true;
}

bool ToolTipSettings::Save(const QDomNode& node, bool showDetail) const
{
    return SetAttributeValue(node, L"TooltipStyle", long(m_current.style)) &&
           SetAttributeValue(node, L"TooltipSize", long(m_current.previewSize)) &&
           SetAttributeValue(node, L"ShowDetail", long(showDetail ? 1 : 0));
}
