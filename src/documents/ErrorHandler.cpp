#include "documents/ErrorHandler.h"

#include "acquisition/Link.h"
#include "documents/MenuCommands.h"
#include "runtime/App.h"
#include "runtime/MsgBox.h"
#include "runtime/Numbers.h"
#include "runtime/RuntimeError.h"

#include <QFile>

namespace {

constexpr QChar CR(13);

const QString kDataLost =
    QStringLiteral("Serious Data Error! Most recent data collected is permanently lost.");

} // namespace

ErrorHandler::ErrorHandler(Link &link, MenuCommands &menu)
    : m_link(link)
    , m_menu(menu)
{}

QString ErrorHandler::logPath()
{
    return App::Path() + QStringLiteral("/ChartErr.log");
}

void ErrorHandler::HandelError(qint32 ErrorCode)
{
    if (ErrorCode == 1001 || (ErrorCode >= 1002 && ErrorCode <= 1010) ||
        (ErrorCode >= -25 && ErrorCode <= 7)) {
        if (showBox(ErrorCode) || logOnly(ErrorCode))
            return;
        switch (ErrorCode) {
        case 1:
        case 4:
        case 5:
        case 6:
        case 7:
        case 1004:
        case 1009:
            return;
        case 3:
            // The only place where fullness is ever tested.
            if (m_link.ComPort.InBufferCount() > 32000)
                WriteErrorLog(QStringLiteral("ERROR - Communication buffer full."));
            return;
        default:
            break;
        }
    }
    WriteErrorLog(ErrorDescription(ErrorCode));
}

bool ErrorHandler::showBox(qint32 ErrorCode)
{
    QString text;
    QString caption = QStringLiteral("ERROR!");
    int icon = MsgBoxStyle::Exclamation;
    switch (ErrorCode) {
    case -25:
        text = QStringLiteral("Cannot Load Print Setup dialog box.");
        break;
    case -24:
        text = QStringLiteral("Cannot Export.");
        break;
    case -22:
        text = kDataLost;
        icon = 0;
        break;
    case -21:
        text = QStringLiteral("Log file is corapted");
        caption.clear();
        icon = 0;
        break;
    case -20:
        text = QStringLiteral("Cannot load configuration file.") + CR + Err().description() + CR +
               QStringLiteral("Using default values.");
        break;
    case -19:
        text = QStringLiteral("Disk reading error while closing");
        caption = QStringLiteral("FILE CLOSE ERROR!");
        icon = 0;
        break;
    case -18:
        text = QStringLiteral(
            "An error occurred while opening the Data File.  The file was NOT opened.");
        caption = QStringLiteral("FILE OPEN ERROR!");
        icon = 0;
        break;
    case -17:
        text = kDataLost + CR + QStringLiteral("Unable to save the log file");
        icon = 0;
        break;
    case -16:
        text = QStringLiteral("An error occurred while saving the data.  The data was NOT saved.");
        caption = QStringLiteral("FILE SAVE ERROR!");
        icon = 0;
        break;
    case -15:
        text = QStringLiteral("Out of memory, Recording and Logging stopped.  Please exit Ostrel.");
        caption.clear();
        icon = 0;
        break;
    case -14:
        text = QStringLiteral("An error occurred during printing the chart recording.") + CR +
               QStringLiteral("Please try again.  If the problem persists, contact Zarvex "
                              "technical support.");
        caption = QStringLiteral("PRINT ERROR!");
        icon = 0;
        break;
    default:
        return false;
    }
    MsgBox(text, MsgBoxStyle::OkOnly | icon, caption);
    if (ErrorCode == -15) {
        // Box first, stop after the user's OK: the message promises what then happens.
        m_menu.mnuStop_Click();
        m_menu.mnuLogOff_Click();
    }
    return true;
}

bool ErrorHandler::logOnly(qint32 ErrorCode)
{
    QString text;
    switch (ErrorCode) {
    case -13:
        text = QStringLiteral("First Sync not found");
        break;
    case -12:
        text = QStringLiteral("ERROR - Unknown data type.");
        break;
    case -11:
        text = QStringLiteral("ERROR - Unknown data parameter.");
        break;
    case -10:
        text = QStringLiteral("ERROR - Lost Sync.");
        break;
    case 1001:
        text = QStringLiteral("ERROR - Break signal received.");
        break;
    case 1002:
        text = QStringLiteral("ERROR - Clear-to-send timeout.");
        break;
    case 1003:
        text = QStringLiteral("ERROR - Data-set ready timeout.");
        break;
    case 1006:
        text = QStringLiteral(
            "The COM Port hardware is unable to keep up with the data transmission.");
        break;
    case 1007:
        text = QStringLiteral("ERROR - Carrier detect timeout.");
        break;
    case 1008:
        text = QStringLiteral("ERROR - Receive buffer overflow.");
        break;
    case 1010:
        text = QStringLiteral("ERROR - Transmit buffer full.");
        break;
    default:
        return false;
    }
    if (ErrorCode >= -12 && ErrorCode <= -10)
        m_link.loseSync();
    WriteErrorLog(text);
    return true;
}

void ErrorHandler::WriteErrorLog(const QString &message)
{
    Beep();
    QFile log(logPath());
    if (!log.open(QIODevice::WriteOnly | QIODevice::Append))
        Raise(log.error() == QFileDevice::PermissionsError ? ErrorNumber::PermissionDenied
                                                           : ErrorNumber::PathFileAccess);
    const QByteArray entry =
        (Now() + QStringLiteral("\r\n") + message + m_link.state().DebugText + QStringLiteral("\r\n"))
            .toLocal8Bit();
    if (log.write(entry) != entry.size() || !log.flush())
        Raise(ErrorNumber::DeviceIo);
    log.close();
}
