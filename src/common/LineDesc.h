#pragma once

/// A straight line of the plane, given by a point on it and its slope.
struct LineDesc
{
    /// The slope that means a vertical line; compared exactly.
    static constexpr double vertical = 1e6;

    double x = 0.0;     ///< a point on the line
    double y = 0.0;     ///< a point on the line
    double slope = 0.0; ///< dy/dx
    double c = 0.0;     ///< the y-intercept, filled by CTdCommMethods::FindC
};
