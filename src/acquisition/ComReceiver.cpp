#include "acquisition/ComReceiver.h"

#include "acquisition/ErrorRoute.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"

#include <QTimer>

ComReceiver::ComReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link,
                         ErrorRoute &errors, QTimer &TimerProcess, QObject *parent)
    : QObject(parent)
    , ComPort(ComPort)
    , m_ring(ring)
    , m_link(link)
    , m_errors(errors)
    , TimerProcess(TimerProcess)
{
    connect(&ComPort, &SerialControl::OnComm, this, &ComReceiver::ComPort_OnComm);
}

void ComReceiver::ComPort_OnComm()
{
    m_link.ComDataSeen = true;
    if (ComPort.CommEvent() != SerialControl::kEventReceive) {
        m_errors.HandelError(ComPort.CommEvent());
        return;
    }
    // While the decoder works the bytes wait in the control's own buffer.
    if (!m_link.DataBusy)
        ReceiveComData();
}

void ComReceiver::ReceiveComData()
{
    if (ComPort.InBufferCount() == 0)
        return;
    TimerProcess.stop();
    m_link.DataBusy = true;
    m_ring.store(ComPort.Input());
    TimerProcess.start();
    m_link.DataBusy = false;
}
