#include "acquisition/ComPortStartup.h"

#include "acquisition/ErrorRoute.h"
#include "acquisition/SerialControl.h"
#include "acquisition/frmSetup.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"

#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>

bool chooseComPortAtStartup(SerialControl &ComPort, Int16 &ComPortNumber, LinkState &link,
                            QTimer &TimerCheckComData, bool PrevInstance, QWidget *parent)
{
    bool noPortFree = false;
    {
        frmSetup setup(ComPort, ComPortNumber, link, TimerCheckComData, parent);
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
                TimerCheckComData.stop();
                if (ComPort.PortOpen())
                    ComPort.setPortOpen(false);
            }
        }
    }
    if (noPortFree) {
        MsgBox(QStringLiteral("All available COM ports are already in use.  Please free one COM "
                              "port before restarting Ostrel MS."));
        return true;
    }
    ComPort.setInBufferSize(32000);
    return false;
}

void openComPortAtStartup(SerialControl &ComPort, Int16 &ComPortNumber, LinkState &link,
                          QTimer &TimerCheckComData, ErrorRoute &errors, QWidget *parent)
{
    const int number = trapError([&] { ComPort.setPortOpen(true); });
    if (number == 0)
        return;
    errors.HandelError(number);
    if (number == ErrorNumber::InvalidPortNumber) {
        frmSetup setup(ComPort, ComPortNumber, link, TimerCheckComData, parent);
        setup.exec();
    }
}
