#include "../acquisition/StreamBytes.h"
#include "acquisition/DecoderHost.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"
#include "acquisition/StreamDecoder.h"
#include "documents/ErrorHandler.h"
#include "documents/MenuCommands.h"
#include "ScriptedDialogs.h"

#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

using namespace StreamBytes;

namespace {

class Quiet : public InstrumentNews, public DecoderHost, public MenuCommands
{
public:
    void uvSample(quint8, float) override {}
    void condSample(float) override { ++pairs; }
    void eventNews(quint8) override {}
    void holdNews(quint8) override {}
    void runStatusNews(quint8) override {}
    void penStatusNews(quint8) override {}
    void methodText(const QString &) override {}
    void syncFound() override {}
    void passEnded() override {}
    void mnuStop_Click() override {}
    void mnuLogOff_Click() override {}
    int pairs = 0;
};

/// The second line onwards of each entry: the date line is checked elsewhere.
QStringList messagesOfLog()
{
    QFile log(ErrorHandler::logPath());
    EXPECT_TRUE(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromLocal8Bit(log.readAll());
    QStringList messages;
    // Each entry starts with a date line; the message and its dump follow up to the next one.
    const QStringList lines = text.split("\r\n");
    for (int i = 0; i < lines.size(); ++i) {
        if (lines[i].contains(':') && lines[i].contains('/') && !lines[i].startsWith(' '))
            messages << QString();
        else if (!messages.isEmpty() && !lines[i].isEmpty())
            messages.last() += (messages.last().isEmpty() ? "" : "\r\n") + lines[i];
    }
    return messages;
}

} // namespace

TEST(DecodingErrorLog, EachFaultWritesItsEntryWithTheRingBytesBeforeIt)
{
    QFile::remove(ErrorHandler::logPath());
    ScriptedDialogs dialogs;
    Quiet quiet;
    LinkState link;
    ReceiveRing ring;
    SerialControl port;
    QTimer timer;
    ErrorHandler route(link, port, quiet);
    StreamDecoder decoder(ring, link, route, quiet, quiet, timer);
    auto tick = [&] {
        if (ring.ByteCount > 2)
            decoder.ProcessComData();
    };

    ring.store(pair(1.0f, 2.0f) + status('E', 5) + sample('C', 2.0f));
    tick();
    tick();
    EXPECT_EQ(quiet.pairs, 2) << "the pass went on behind the rejected block";
    EXPECT_FALSE(link.FirstSyncFound);

    ring.store(pair(1.0f, 2.0f) + QByteArray("\x41\x42\x43"));
    tick();
    tick();
    tick();

    const QString zeros18 = QString(" 0").repeated(18);
    const QString lostSyncDump = "\r\n 85 63 128 0 0 150 67 64 0 0 0 150 69 5 150 67 64 0 0 0 150 "
                                 "85 63 128 0 0 150 67 64 0 0 0";
    EXPECT_EQ(messagesOfLog(),
              QStringList({"ERROR - Unknown data parameter.Sub HandelEventData; Event Byte "
                           "Expected; Actual Byte Received: 5\r\n" +
                               zeros18 + " 150 85 63 128 0 0 150 67 64 0 0 0 150 69",
                           "ERROR - Lost Sync.Sub PeekDataBlock; Sync Byte Expected; Actual Byte "
                           "Received: 65" +
                               lostSyncDump,
                           "First Sync not found" +
                               QString("Sub PeekDataBlock; Sync Byte "
                                       "Expected; Actual Byte Received: 65") +
                               lostSyncDump}));
    EXPECT_EQ(dialogs.beeps, 3);
    EXPECT_EQ(quiet.pairs, 3);
}
