#include "../acquisition/StreamBytes.h"
#include "Pty.h"
#include "RunningProgram.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

/// The 32 stream bytes lying 33 to 2 places behind `position`, as the program dumps them; the
/// ring of a fresh program holds zeros before the first byte.
QString dumpBefore(const QByteArray &stream, int position)
{
    QString dump = "\r\n";
    for (int i = position - 33; i <= position - 2; ++i)
        dump += ' ' + QString::number(i < 0 ? 0 : quint8(stream[i]));
    return dump;
}

/// Entries of ChartErr.log without their date lines.
QStringList messages(const QString &log)
{
    // The date line is in the locale's general date format, whatever the machine's locale.
    static const QRegularExpression dateLine(R"(^\d\S*( \S+)* \d+:\d\d:\d\d( [AP]M)?$)");
    QStringList result;
    for (const QString &line : log.split("\r\n")) {
        if (dateLine.match(line).hasMatch())
            result << QString();
        else if (!result.isEmpty())
            result.last() += (result.last().isEmpty() ? "" : "\r\n") + line;
    }
    for (QString &entry : result)
        entry = entry.trimmed();
    return result;
}

} // namespace

TEST(Program, GarbledStreamOnCom1WritesTheErrorLogEntries)
{
    Pty pty;
    RunningProgram program(pty.slavePath());
    ASSERT_TRUE(program.started());

    QByteArray stream;
    for (int i = 0; i < 5; ++i)
        stream += pair(0.1f * float(i), 12.5f);
    const int badEvent = int(stream.size()) + 3;
    stream += status('E', 5) + pair(0.5f, 12.5f);
    const int badType = int(stream.size()) + 2;
    stream += QByteArray("\x96GABCD");
    // Let the program open its port before the instrument talks.
    QThread::msleep(1500);
    ASSERT_TRUE(pty.write(stream));

    ASSERT_TRUE(waitFor([&] { return messages(program.errorLog()).size() >= 3; }, 15000))
        << program.errorLog().toStdString();
    const QStringList entries = messages(program.errorLog());
    const QString typeDump = dumpBefore(stream, badType);
    EXPECT_EQ(entries[0], ("ERROR - Unknown data parameter.Sub HandelEventData; Event Byte "
                           "Expected; Actual Byte Received: 5" +
                           dumpBefore(stream, badEvent))
                              .trimmed());
    EXPECT_EQ(entries[1], ("ERROR - Unknown data type.Sub PeekDataBlock; Data Type Byte "
                           "Expected; Actual Byte Received: 71" +
                           typeDump)
                              .trimmed());
    EXPECT_EQ(entries[2], ("First Sync not found" +
                           QString("Sub PeekDataBlock; Data Type Byte "
                                   "Expected; Actual Byte Received: 71") +
                           typeDump)
                              .trimmed())
        << "the six bytes left behind are too few for a search";
}
