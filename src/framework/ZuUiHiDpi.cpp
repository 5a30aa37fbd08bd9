#include "framework/ZuUiHiDpi.h"

#include <QGuiApplication>
#include <QScreen>

#include <optional>
#include <utility>

namespace {

std::optional<std::pair<double, double>> g_override;

const std::pair<double, double>& screenScale()
{
    static const std::pair<double, double> scale = [] {
        const QScreen* screen = qobject_cast<QGuiApplication*>(QCoreApplication::instance())
                                    ? QGuiApplication::primaryScreen()
                                    : nullptr;
        if (!screen)
            return std::pair<double, double>(1.0, 1.0);
        const double x = screen->logicalDotsPerInchX() / 96.0;
        const double y = screen->logicalDotsPerInchY() / 96.0;
        return std::pair<double, double>(x > 0 ? x : 1.0, y > 0 ? y : 1.0);
    }();
    return scale;
}

} // namespace

double CZuUiHiDpi::GetMonitorDpiXScale()
{
    return g_override ? g_override->first : screenScale().first;
}

double CZuUiHiDpi::GetMonitorDpiYScale()
{
    return g_override ? g_override->second : screenScale().second;
}

void CZuUiHiDpi::SetOverride(double xScale, double yScale)
{
    if (xScale > 0 && yScale > 0)
        g_override = std::make_pair(xScale, yScale);
}

void CZuUiHiDpi::ClearOverride()
{
    g_override.reset();
}

bool CZuUiHiDpi::HasOverride()
{
    return g_override.has_value();
}
