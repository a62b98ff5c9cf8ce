#pragma once

#include <QList>

class QRandomGenerator;

namespace VelquinSim {

/// The two detectors behind the column: UV absorbance in AU with baseline drift, noise and
/// the peaks of the proteins that elute, and conductivity in mS/cm following the salt program
/// through the mixer's lag.
class TraceModel
{
public:
    explicit TraceModel(QRandomGenerator &random);

    /// Draws the peaks of a new run of the given length.
    void startRun(double runSeconds);
    /// Advances by one sample pair (0.2 s). `programSeconds` is the run's own clock, which stops
    /// while the run pauses or holds; `flowing` is false while the pump stands.
    void step(double streamSeconds, double programSeconds, bool inRun, bool flowing);

    [[nodiscard]] float uv() const { return m_uv; }
    [[nodiscard]] float conductivity() const { return m_conductivity; }

private:
    struct Peak
    {
        double centre;
        double height;
        double width;
    };

    double gaussian();
    double uniform(double low, double high);

    QRandomGenerator &m_random;
    QList<Peak> m_peaks;
    double m_runSeconds = 0;
    double m_mixed = 0;
    float m_uv = 0;
    float m_conductivity = 0;
};

} // namespace VelquinSim
