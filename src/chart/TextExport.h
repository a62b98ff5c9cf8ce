#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

class ChartAnnotations;
class SampleStore;

/// @brief A run as a tab-separated text file that a spreadsheet opens directly.
///
/// A header names the run, its time range, rate and point count; columns follow for time
/// (min), UV (AU) and conductivity (mS/cm) as chosen, with each event mark's label on the row
/// of its time. Notes and method texts stand before the data, after it, or in columns of their
/// own, one line a row from the row of their time.
///
/// Below the instrument's five pairs a second, each point stands for the interval from its time
/// to the next point's: UV is the highest absorbance in it, so that a peak's apex keeps its
/// height at any rate, and conductivity the mean, which follows a gradient without the noise.
/// At the full rate each point is one sample, as measured. There are exactly `pointCount`
/// points; beyond the last sample a point repeats the last values.
class TextExport
{
public:
    enum class MethodPosition { Before = 0, After = 1, Column = 2 };

    struct Options
    {
        bool uv = true;
        bool conductivity = true;
        bool events = true;
        bool notes = true;
        bool method = true;
        MethodPosition methodPosition = MethodPosition::Before;
        double timeFrom = 0.0;
        double timeTo = 0.0;
        double sampleRate = 1.0;
        qint64 pointCount = 0;
    };

    TextExport(const SampleStore &store, const ChartAnnotations &annotations, QString title);

    /// The file's text, CR LF line ends, in UTF-8 with a byte order mark, numbers in the default
    /// locale's format without group separators; empty when the options make no sense (a rate
    /// that is not positive, a negative count).
    [[nodiscard]] QByteArray text(const Options &options) const;

    /// The line of the header that tells how points are made, also for the converter's help.
    [[nodiscard]] static QString thinningNote();

private:
    const SampleStore &m_store;
    const ChartAnnotations &m_annotations;
    QString m_title;
};
