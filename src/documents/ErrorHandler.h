#pragma once

#include "runtime/ErrorRoute.h"

#include <QString>

class Link;
class MenuCommands;

/// The one error route: decides by the number alone between a message box, a line in
/// ChartErr.log and nothing. Negative numbers are the program's own, 1 to 7 and 1001 to 1010
/// the serial control's events, everything else a run-time error number.
class ErrorHandler : public ErrorRoute
{
public:
    ErrorHandler(Link &link, MenuCommands &menu);

    void HandelError(qint32 ErrorCode) override;
    /// Beeps, then appends the date line and the message with DebugText behind it; the file is
    /// opened and closed for each entry, so nothing waits in a buffer when the program dies.
    /// Raises the run-time error of a log that cannot be written.
    void WriteErrorLog(const QString &message);

    [[nodiscard]] static QString logPath();

private:
    bool showBox(qint32 ErrorCode);
    bool logOnly(qint32 ErrorCode);

    Link &m_link;
    MenuCommands &m_menu;
};
