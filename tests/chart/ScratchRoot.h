#pragma once

#include <QString>

/// Where a test that writes many files keeps them: memory-backed when there is such a place,
/// since what is under test is the format or the kill, not the disk.
QString scratchRoot();
