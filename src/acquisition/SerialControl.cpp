#include "acquisition/SerialControl.h"

#include "acquisition/ComPortMap.h"
#include "acquisition/DeviceUsers.h"
#include "runtime/RuntimeError.h"

#include <QFileInfo>
#include <QSerialPort>

SerialControl::SerialControl(QObject *parent) : QObject(parent), m_port(new QSerialPort(this))
{
    connect(m_port, &QSerialPort::readyRead, this, &SerialControl::onReadyRead);
    connect(m_port, &QSerialPort::errorOccurred, this, &SerialControl::onError);
    m_reopenTimer.setInterval(1000);
    connect(&m_reopenTimer, &QTimer::timeout, this, &SerialControl::tryReopen);
}

SerialControl::~SerialControl() = default;

void SerialControl::setCommPort(Int16 port)
{
    if (port < 1 || port > 255)
        Raise(ErrorNumber::InvalidPortNumber);
    m_commPort = port;
}

QString SerialControl::devicePath() const
{
    return ComPortMap::devicePath(m_commPort);
}

bool SerialControl::openDevice(const QString &path, int *errorNumber)
{
    // Two readers would each get half the stream, so a device that another program holds
    // open without a lock is as busy as a locked one.
    if (isOpenElsewhere(path)) {
        *errorNumber = ErrorNumber::PortAlreadyOpen;
        return false;
    }
    m_port->setPortName(path);
    if (!m_port->open(QIODevice::ReadOnly)) {
        switch (m_port->error()) {
        case QSerialPort::DeviceNotFoundError:
            *errorNumber = ErrorNumber::InvalidPortNumber;
            break;
        case QSerialPort::PermissionError:
        case QSerialPort::OpenError:
            *errorNumber = ErrorNumber::PortAlreadyOpen;
            break;
        default:
            *errorNumber = ErrorNumber::PortNotAvailable;
            break;
        }
        m_port->clearError();
        return false;
    }
    const bool configured =
        m_port->setBaudRate(QSerialPort::Baud9600) && m_port->setDataBits(QSerialPort::Data8) &&
        m_port->setParity(QSerialPort::NoParity) && m_port->setStopBits(QSerialPort::OneStop) &&
        m_port->setFlowControl(QSerialPort::NoFlowControl);
    if (!configured) {
        m_port->close();
        m_port->clearError();
        *errorNumber = ErrorNumber::CannotSetCommState;
        return false;
    }
    return true;
}

void SerialControl::setPortOpen(bool open)
{
    if (open == m_open)
        return;
    if (!open) {
        m_reopenTimer.stop();
        m_port->close();
        m_open = false;
        m_inBuffer.clear();
        return;
    }
    const QString path = devicePath();
    if (path.isEmpty() || !QFileInfo::exists(path))
        Raise(ErrorNumber::InvalidPortNumber);
    int errorNumber = 0;
    if (!openDevice(path, &errorNumber))
        Raise(errorNumber);
    m_openPath = path;
    m_open = true;
}

void SerialControl::setInBufferSize(int size)
{
    if (size < 1)
        Raise(ErrorNumber::InvalidPropertyValue);
    m_inBufferSize = size;
    if (m_inBuffer.size() > size)
        m_inBuffer.truncate(size);
}

QByteArray SerialControl::Input()
{
    return std::exchange(m_inBuffer, QByteArray());
}

void SerialControl::raise(int event)
{
    m_commEvent = event;
    emit OnComm();
}

void SerialControl::onReadyRead()
{
    QByteArray arrived = m_port->readAll();
    while (!arrived.isEmpty()) {
        const qsizetype room = m_inBufferSize - m_inBuffer.size();
        if (room <= 0) {
            // What does not fit is lost, as on the original control; the owner hears of it.
            raise(kEventRxOverflow);
            return;
        }
        m_inBuffer.append(arrived.left(room));
        arrived.remove(0, room);
        // The receive event may empty the buffer and so make room for the rest.
        if (m_rThreshold > 0 && m_inBuffer.size() >= m_rThreshold)
            raise(kEventReceive);
    }
}

void SerialControl::onError()
{
    const QSerialPort::SerialPortError error = m_port->error();
    if (error != QSerialPort::ResourceError)
        return;
    // The device went away (an adapter unplugged): stay logically open, so the watchdog sees a
    // silent link, and take the device back when it returns.
    m_port->close();
    m_port->clearError();
    if (m_open)
        m_reopenTimer.start();
}

void SerialControl::tryReopen()
{
    if (!m_open || !QFileInfo::exists(m_openPath)) {
        if (!m_open)
            m_reopenTimer.stop();
        return;
    }
    int errorNumber = 0;
    if (openDevice(m_openPath, &errorNumber))
        m_reopenTimer.stop();
}
