#include "acquisition/PortChoice.h"

#include "acquisition/Link.h"
#include "acquisition/RecordingSession.h"
#include "acquisition/frmSetup.h"
#include "runtime/ErrorRoute.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"

#include <QPushButton>
#include <QRadioButton>

#include <algorithm>

PortChoice::PortChoice(Link &link, RecordingSession &session, Int16 &ComPortNumber)
    : m_link(link)
    , m_session(session)
    , ComPortNumber(ComPortNumber)
{}

bool PortChoice::chooseAtStartup(bool PrevInstance, QWidget *parent)
{
    SerialControl &ComPort = m_link.ComPort;
    bool noPortFree = false;
    {
        frmSetup setup(m_link, ComPortNumber, m_session, parent);
        // The load's probe passed over the link's own port; now the link tries every port.
        setup.FindFreeComPorts(true);
        const bool storedPortFree = ComPortNumber >= 1 && ComPortNumber <= frmSetup::kPortCount &&
                                    setup.optCom[ComPortNumber - 1]->isEnabled();
        if (storedPortFree && !PrevInstance) {
            ComPort.setCommPort(ComPortNumber);
        } else {
            const auto firstFree =
                std::find_if(setup.optCom.begin(), setup.optCom.end(),
                             [](const QRadioButton *option) { return option->isEnabled(); });
            if (firstFree == setup.optCom.end()) {
                noPortFree = true;
            } else {
                ComPortNumber = Int16(firstFree - setup.optCom.begin() + 1);
                setup.cmdCancel->setEnabled(false);
                setup.exec();
                // The link is opened once the window is ready, and watched from then on.
                m_session.stopWatchdog();
                if (ComPort.PortOpen())
                    ComPort.setPortOpen(false);
            }
        }
    }
    if (noPortFree) {
        MsgBox(QStringLiteral("All available COM ports are already in use.  Please free one COM "
                              "port before restarting Ostrel MS."));
        return false;
    }
    ComPort.setInBufferSize(32000);
    return true;
}

void PortChoice::openAtStartup(ErrorRoute &errors, QWidget *parent)
{
    const int number = trapError([&] { m_link.ComPort.setPortOpen(true); });
    if (number == 0)
        return;
    errors.HandelError(number);
    if (number == ErrorNumber::InvalidPortNumber)
        mnuComPort_Click(parent);
}

void PortChoice::mnuComPort_Click(QWidget *parent)
{
    frmSetup form(m_link, ComPortNumber, m_session, parent);
    form.exec();
}
