#pragma once

#include <QString>

/// The flags of the instrument link that the receiver, the decoder, the intake and the error
/// route share. Owned by the main window; each part gets a reference.
struct LinkState
{
    /// The receiver, the decoder or the link-lost handling is at work.
    bool DataBusy = false;
    /// Some event came from the serial control since the watchdog last looked.
    bool ComDataSeen = false;
    /// The decoder is synchronised with the block stream.
    bool FirstSyncFound = false;
    /// The instrument reports its state by "P", "R" or "F" blocks.
    bool StatusBlocksSeen = false;
    /// Diagnostic text that goes out with the next error line; never cleared.
    QString DebugText;
};
