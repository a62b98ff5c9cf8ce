#pragma once

#include <QtGlobal>

/// What the print dialog hands to the print loop. It outlives the dialog: the last choice
/// stays until the next OK.
struct PrintChoice
{
    /// True from the dialog's load until its OK.
    bool PrintCancelled = false;
    bool PrintChromatogram = false;
    bool PrintNotes = false;
    bool PrintMethod = false;
    /// 4 the UV trace, 2 the conductivity trace, 1 the event marks.
    qint32 PrintTraceFlags = 0;
};
