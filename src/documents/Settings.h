#pragma once

#include "runtime/Int16.h"

class ErrorRoute;

/// The three values that outlive the program, kept in the per-user store under the
/// application's title, section "Options". Owned by the main window; the parts that read or
/// change a value get a reference to it.
class Settings
{
public:
    /// `InstanceNumber` is read when the settings are saved: only the first running copy writes.
    Settings(ErrorRoute &errors, const Int16 &InstanceNumber);

    Int16 ComPortNumber = 1;
    bool DataLogging = true;
    double DataFileSizeHours = 24.0;

    /// A missing key gives its default silently; a value that does not convert shows the -20
    /// box and gives every value its default, also those already read.
    void ReadSettings();
    /// Raises what the store raises: there is nobody left to tell at exit.
    void SaveSettings();
    void SetDefaultSettings();

private:
    ErrorRoute &m_errors;
    const Int16 &m_instanceNumber;
};
