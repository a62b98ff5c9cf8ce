#pragma once

/// What a plot shows of a run, and how heavily: the screen shows everything in hairlines, a
/// printed report what the operator chose, with traces thick enough for a fine printer.
struct PlotContent
{
    bool uv = true;
    bool conductivity = true;
    /// Event marks; the marks of method texts belong to the chromatogram and always show.
    bool eventMarks = true;
    /// Width of a trace in the device's pixels.
    int traceWidth = 1;
};
