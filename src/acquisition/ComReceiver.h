#pragma once

class ErrorRoute;
class QTimer;
class ReceiveRing;
class SerialControl;
struct LinkState;

/// The receive side of the link: the serial control's event handler and the move of its bytes
/// into the ring. It never decodes; the main loop's timer does that.
class ComReceiver
{
public:
    ComReceiver(SerialControl &ComPort, ReceiveRing &ring, LinkState &link, ErrorRoute &errors,
                QTimer &TimerProcess);

    void ComPort_OnComm();
    void ReceiveComData();

private:
    SerialControl &ComPort;
    ReceiveRing &m_ring;
    LinkState &m_link;
    ErrorRoute &m_errors;
    QTimer &TimerProcess;
};
