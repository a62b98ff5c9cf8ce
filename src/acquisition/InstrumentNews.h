#pragma once

#include <QString>
#include <QtGlobal>

/// What the decoders hand on to the sample intake: one call per decoded block, with values
/// already checked against the block's table.
class InstrumentNews
{
public:
    virtual ~InstrumentNews() = default;
    /// A "U" (0x55, no run advances) or "V" (0x56, a run advances) block, in AU.
    virtual void uvSample(quint8 type, float value) = 0;
    /// A "C" or "D" block, in mS/cm; it closes the sample pair.
    virtual void condSample(float value) = 0;
    /// An "E" block: 2 numbered event, 3 end of run, 4 start of run, 8 label "M".
    virtual void eventNews(quint8 value) = 0;
    /// An "H" block: 1 hold, 2 continue.
    virtual void holdNews(quint8 value) = 0;
    /// An "R" block: 0 ended, 1 running, 2 paused, 3 hold.
    virtual void runStatusNews(quint8 value) = 0;
    /// A "P" block: 0 pen off (stop), 1 pen on (record).
    virtual void penStatusNews(quint8 value) = 0;
    /// An "M" block's text, without its closing sync byte.
    virtual void methodText(const QString &text) = 0;
};
