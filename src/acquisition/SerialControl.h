#pragma once

#include "runtime/Int16.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QTimer>

class QSerialPort;

/// The serial control the program was written against, over QSerialPort. It keeps the
/// behaviour the program's timing depends on: a receive event (CommEvent 2) only once the held
/// bytes reach RThreshold, never for every chunk the driver delivers; at most InBufferSize bytes
/// held, with event 1008 for what does not fit; opening fails with 8002 for a port that does
/// not exist and 8005 for one that is in use or not accessible. A device that vanishes while
/// open (an adapter unplugged) leaves the port logically open and is reopened by itself when
/// it comes back.
class SerialControl : public QObject
{
    Q_OBJECT

public:
    static constexpr int kEventReceive = 2;
    static constexpr int kEventRxOverflow = 1008;

    explicit SerialControl(QObject *parent = nullptr);
    ~SerialControl() override;

    [[nodiscard]] Int16 CommPort() const { return m_commPort; }
    void setCommPort(Int16 port);

    [[nodiscard]] bool PortOpen() const { return m_open; }
    /// Raises 8002, 8005 or another 80xx number when the port cannot be opened.
    void setPortOpen(bool open);

    [[nodiscard]] int InBufferSize() const { return m_inBufferSize; }
    void setInBufferSize(int size);
    [[nodiscard]] int InBufferCount() const { return int(m_inBuffer.size()); }

    [[nodiscard]] int RThreshold() const { return m_rThreshold; }
    void setRThreshold(int threshold) { m_rThreshold = threshold; }

    /// Binary mode only: Input yields the held bytes as an array.
    [[nodiscard]] int InputMode() const { return 1; }
    /// Takes every held byte.
    [[nodiscard]] QByteArray Input();

    [[nodiscard]] int CommEvent() const { return m_commEvent; }

    /// The device this control opens for its CommPort.
    [[nodiscard]] QString devicePath() const;

signals:
    void OnComm();

private:
    void onReadyRead();
    void onError();
    void tryReopen();
    void raise(int event);
    bool openDevice(const QString &path, int *errorNumber);

    QSerialPort *m_port;
    QTimer m_reopenTimer;
    QString m_openPath;
    QByteArray m_inBuffer;
    Int16 m_commPort = 1;
    bool m_open = false;
    int m_inBufferSize = 1024;
    int m_rThreshold = 0;
    int m_commEvent = 0;
};
