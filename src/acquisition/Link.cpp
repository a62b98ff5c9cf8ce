#include "acquisition/Link.h"

Link::Link(ErrorRoute &errors, InstrumentNews &news, DecoderHost &host)
    : m_receiver(ComPort, m_ring, m_state, errors, m_timerProcess)
    , m_decoder(m_ring, m_state, errors, news, host, m_timerProcess)
{
    ComPort.setRThreshold(50);
    m_timerProcess.setInterval(700);
    QObject::connect(&m_timerProcess, &QTimer::timeout, &m_timerProcess,
                     [this] { TimerProcess_Timer(); });
    m_timerProcess.start();
}

void Link::TimerProcess_Timer()
{
    if (m_ring.ByteCount > 2)
        m_decoder.ProcessComData();
}

void Link::loseSync()
{
    m_state.FirstSyncFound = false;
}

void Link::forgetStatusBlocks()
{
    m_state.StatusBlocksSeen = false;
}

void Link::setDataBusy(bool busy)
{
    m_state.DataBusy = busy;
}

void Link::clearComDataSeen()
{
    m_state.ComDataSeen = false;
}
