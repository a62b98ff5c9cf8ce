#include "acquisition/ComReceiver.h"

#include "runtime/ErrorRoute.h"
#include "acquisition/LinkState.h"
#include "acquisition/ReceiveRing.h"
#include "acquisition/SerialControl.h"

#include <QTimer>

ComReceiver::ComReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link,
                         ErrorRoute &errors, QTimer &TimerProcess)
    : ComPort(ComPort)
    , m_ring(ring)
    , m_link(link)
    , m_errors(errors)
    , TimerProcess(TimerProcess)
{
    QObject::connect(&ComPort, &SerialControl::OnComm, &ComPort, [this] { ComPort_OnComm(); });
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
    // Off and on again: each receive event restarts the 700 ms the decoder waits for.
    TimerProcess.stop();
    m_link.DataBusy = true;
    m_ring.store(ComPort.Input());
    TimerProcess.start();
    m_link.DataBusy = false;
}
