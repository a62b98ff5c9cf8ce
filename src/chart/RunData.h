#pragma once

#include "chart/ChartAnnotations.h"
#include "chart/ChartAxes.h"
#include "chart/SampleStore.h"

#include <QString>

/// Everything a run file holds: what a chart shows, without the drawing.
struct RunData
{
    SampleStore store;
    ChartAnnotations annotations;
    ChartAxes axes;
    QString title;
};
