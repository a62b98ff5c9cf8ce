#include "acquisition/frmSetup.h"

#include "acquisition/ComPortMap.h"
#include "acquisition/Link.h"
#include "acquisition/RecordingSession.h"
#include "runtime/HelpContext.h"
#include "runtime/MsgBox.h"
#include "runtime/RuntimeError.h"
#include "runtime/Twips.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>

namespace {
constexpr QChar CR(13);
}

frmSetup::frmSetup(Link &link, Int16 &ComPortNumber, RecordingSession &session, QWidget *parent)
    : QDialog(parent)
    , m_link(link)
    , ComPort(link.ComPort)
    , ComPortNumber(ComPortNumber)
    , m_session(session)
{
    setHelpContext(this, 6);
    buildControls();
    Form_Load();
}

void frmSetup::buildControls()
{
    setWindowTitle(QStringLiteral("Data Collection Setup"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    frameCom = new QGroupBox(QStringLiteral("COM Port"), this);
    frameCom->setGeometry(twips(this, 120), twips(this, 120), twips(this, 3495), twips(this, 3495));
    for (int Index = 0; Index < kPortCount; ++Index) {
        auto *option = new QRadioButton(QStringLiteral("COM %1").arg(Index + 1), frameCom);
        option->setObjectName(QStringLiteral("optCom%1").arg(Index));
        option->setToolTip(ComPortMap::describe(Index + 1));
        const int column = Index / 5;
        const int row = Index % 5;
        option->move(twips(this, column == 0 ? 360 : 2040), twips(this, 480 + 600 * row));
        option->resize(option->sizeHint().expandedTo({twips(this, 1335), 0}));
        connect(option, &QRadioButton::toggled, this, [this, Index](bool checked) {
            if (checked)
                optCom_Click(Index);
        });
        optCom[Index] = option;
    }

    cmdOk = new QPushButton(QStringLiteral("&OK"), this);
    cmdCancel = new QPushButton(QStringLiteral("&Cancel"), this);
    // Enter presses the focused button; the default button only when no button has the focus.
    for (QPushButton *button : {cmdOk, cmdCancel})
        button->resize(button->sizeHint().expandedTo({twips(this, 1455), twips(this, 375)}));
    cmdOk->setObjectName(QStringLiteral("cmdOk"));
    cmdCancel->setObjectName(QStringLiteral("cmdCancel"));
    cmdOk->setDefault(true);
    cmdOk->move(twips(this, 120), twips(this, 3840));
    cmdCancel->move(twips(this, 2160), twips(this, 3840));
    connect(cmdOk, &QPushButton::clicked, this, &frmSetup::cmdOk_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSetup::cmdCancel_Click);

    setFixedSize(frameCom->geometry().right() + 1 + twips(this, 120),
                 cmdOk->geometry().bottom() + 1 + twips(this, 120));
}

void frmSetup::Form_Load()
{
    FindFreeComPorts(false);
    SelectedComPort = ComPortNumber;
    // A stored number outside the ten ports shows no choice; OK then fails on it and says so.
    if (SelectedComPort >= 1 && SelectedComPort <= kPortCount)
        optCom[SelectedComPort - 1]->setChecked(true);
}

void frmSetup::FindFreeComPorts(bool UseComPort)
{
    SerialControl &probe = UseComPort ? ComPort : CommTmp;
    for (int port = 1; port <= kPortCount; ++port) {
        if (!UseComPort && ComPort.CommPort() == port)
            continue;
        // Each statement resumes after a failure, so a port that did open is always closed.
        const auto statement = [&](auto &&body) {
            const int number = trapError(body);
            if (number == ErrorNumber::InvalidPortNumber || number == ErrorNumber::PortAlreadyOpen)
                optCom[port - 1]->setEnabled(false);
        };
        statement([&] { probe.setCommPort(port); });
        statement([&] { probe.setPortOpen(true); });
        statement([&] {
            if (probe.PortOpen())
                probe.setPortOpen(false);
        });
    }
}

void frmSetup::optCom_Click(int Index)
{
    SelectedComPort = Index + 1;
}

void frmSetup::cmdOk_Click()
{
    Int16 oldPort = ComPortNumber;
    bool wasOpen = false;
    const int number = trapError([&] {
        // The run state is read from the sample letters again until the instrument on the
        // new port shows that it sends status blocks.
        m_link.forgetStatusBlocks();
        oldPort = ComPortNumber;
        ComPortNumber = SelectedComPort;
        if (ComPort.PortOpen()) {
            wasOpen = true;
            ComPort.setPortOpen(false);
        }
        ComPort.setCommPort(SelectedComPort);
        ComPort.setPortOpen(true);
        accept();
        // A port with nothing on it is reported by the watchdog like any lost link.
        m_session.startWatchdog();
    });
    if (number == 0)
        return;
    MsgBox(QStringLiteral("Cannot open the selected communication port") + CR + Err().description(),
           MsgBoxStyle::Exclamation, QStringLiteral("DATA COLLECTION SETUP ERROR"));
    ComPortNumber = oldPort;
    ignoreErrors([&] { ComPort.setCommPort(oldPort); });
    ignoreErrors([&] { ComPort.setPortOpen(wasOpen); });
}

void frmSetup::cmdCancel_Click()
{
    QDialog::reject();
}

void frmSetup::reject()
{
    if (cmdCancel->isEnabled())
        cmdCancel_Click();
}
