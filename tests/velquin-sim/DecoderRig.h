#pragma once

#include "SimStream.h"
#include "acquisition/DecoderHost.h"
#include "runtime/ErrorRoute.h"
#include "acquisition/InstrumentNews.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"
#include "acquisition/StreamDecoder.h"
#include "documents/ErrorHandler.h"
#include "documents/MenuCommands.h"

#include <QStringList>
#include <QTimer>

/// The recorder's receive side on a virtual clock: bytes leave the simulated line at their
/// scheduled times, reach the ring in receive events of at least 50 bytes (each restarting the
/// 700 ms timer), and the timer's ticks run the real decoder, whose errors go to the real
/// error route and ChartErr.log. A link silent for more than 10 s is dropped as the watchdog
/// does, so that the decoder searches again when bytes return.
class DecoderRig : public InstrumentNews, public DecoderHost, public MenuCommands, public ErrorRoute
{
public:
    struct Reported
    {
        qint32 code;
        /// Stream bytes in the ring when the error came.
        qint64 fed;
    };

    DecoderRig();

    void play(const SimStream &stream);
    /// ChartErr.log with each entry's date line replaced by "<date>".
    [[nodiscard]] QString log() const;

    /// One line per piece of news: letter and value, floats as their bits.
    static QString uvNews(quint8 type, float value);
    static QString condNews(float value);

    QStringList news;
    QList<Reported> errors;
    /// Stream bytes in the ring each time the watchdog dropped the link.
    QList<qint64> linkLosses;
    int syncs = 0;
    int menuCalls = 0;
    LinkState link;

private:
    void tick();

    void uvSample(quint8 type, float value) override;
    void condSample(float value) override;
    void eventNews(quint8 value) override;
    void holdNews(quint8 value) override;
    void runStatusNews(quint8 value) override;
    void penStatusNews(quint8 value) override;
    void methodText(const QString &text) override;
    void syncFound() override { ++syncs; }
    void passEnded() override {}
    void mnuStop_Click() override { ++menuCalls; }
    void mnuLogOff_Click() override { ++menuCalls; }
    void HandelError(qint32 ErrorCode) override;

    ReceiveRing m_ring;
    SerialControl m_port;
    QTimer m_timer;
    ErrorHandler m_handler;
    StreamDecoder m_decoder;
    qint64 m_fed = 0;
};
