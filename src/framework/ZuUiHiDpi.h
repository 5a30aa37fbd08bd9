#pragma once

#include "kvuiframework_export.h"

#include <cmath>

/// The monitor's DPI scale: the primary screen's logical DPI divided by 96, separately for the
/// horizontal and the vertical direction (1.0 at 96 DPI). Read from the screen once; tests and
/// hosts that manage DPI themselves override it.
class KVUIFRAMEWORK_EXPORT CZuUiHiDpi
{
public:
    static double GetMonitorDpiXScale();
    static double GetMonitorDpiYScale();

    /// A device-independent size in pixels at the current scale, rounded half away from zero.
    static int ScaleX(double dip) { return Round(dip * GetMonitorDpiXScale()); }
    static int ScaleY(double dip) { return Round(dip * GetMonitorDpiYScale()); }
    /// Pixels back to device-independent pixels, rounded half away from zero.
    static int UnscaleX(double px) { return Round(px / GetMonitorDpiXScale()); }
    static int UnscaleY(double px) { return Round(px / GetMonitorDpiYScale()); }

    /// Rounds half away from zero (22.5 -> 23, -22.5 -> -23).
    static int Round(double value) { return int(std::lround(value)); }

    /// Replaces the screen's scale until ClearOverride. Scales must be positive.
    static void SetOverride(double xScale, double yScale);
    static void ClearOverride();
    static bool HasOverride();
};
