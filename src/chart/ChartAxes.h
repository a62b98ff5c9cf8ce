#pragma once

/// The six axis values of a chart: UV in AU, conductivity in mS/cm, time in minutes.
struct ChartAxes
{
    float uvMin = -0.2f;
    float uvMax = 2.0f;
    float condMin = 0.0f;
    float condMax = 500.0f;
    float timeMin = 0.0f;
    float timeMax = 10.0f;

    friend bool operator==(const ChartAxes &, const ChartAxes &) = default;
};
