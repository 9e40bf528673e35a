// SPDX-License-Identifier: GPL-3.0-or-later
// The serial port as the link uses it: a small interface, its QSerialPort implementation, the
// probe that tells whether a port can be opened, and the COM-number-to-device table.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QObject>
#include <QString>
#include <memory>

class QSerialPort;

namespace kestrel {

// Why a port could not be opened (or Ok).
enum class PortFailure { Ok, Missing, Busy, NoPermission, Other };

// One open serial line at 9600 baud, 8 data bits, no parity, one stop bit.
class LinkPort : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    virtual bool open(const QString& device) = 0;
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    virtual qint64 write(const QByteArray& bytes) = 0;
    virtual qint64 bytesAvailable() const = 0;
    virtual QByteArray readAll() = 0;
    virtual void setDtr(bool on) = 0;
    virtual PortFailure failure() const = 0;
    virtual QString errorString() const = 0;

Q_SIGNALS:
    void readyRead();
    // The device went away under an open port (cable pulled, adapter unplugged). The port is
    // closed by the time this is emitted.
    void lost();
};

class SerialLinkPort : public LinkPort {
    Q_OBJECT
public:
    explicit SerialLinkPort(QObject* parent = nullptr);
    ~SerialLinkPort() override;

    bool open(const QString& device) override;
    void close() override;
    bool isOpen() const override;
    qint64 write(const QByteArray& bytes) override;
    qint64 bytesAvailable() const override;
    QByteArray readAll() override;
    void setDtr(bool on) override;
    PortFailure failure() const override { return m_failure; }
    QString errorString() const override { return m_error; }

private:
    QSerialPort* m_port;
    PortFailure m_failure = PortFailure::Ok;
    QString m_error;
};

// What the system says about a port that could be opened exclusively right now.
struct PortState {
    PortFailure failure = PortFailure::Missing;
    qint32 baudRate = 0;
    quint8 byteSize = 0;
    char parity = 'n';
    quint32 flags = 0; // the line's control-flag word
    bool ok() const { return failure == PortFailure::Ok; }
};

// Opens a port for exclusive use, reads its line state and closes it again at once.
class PortProbe {
public:
    virtual ~PortProbe() = default;
    virtual PortState probe(const QString& device) = 0;
};

class SystemPortProbe : public PortProbe {
public:
    PortState probe(const QString& device) override;
};

// COM port numbers to device paths. On Windows a number is the port "COMn"; elsewhere a table
// with defaults (ttyS0-3, ttyUSB0-3, ttyACM0-3 on Linux; the cu.* devices in name order on
// macOS) that the [Ports] section of the settings overrides.
class PortMap {
public:
    PortMap() = default;
    explicit PortMap(QMap<int, QString> overrides) : m_overrides(std::move(overrides)) {}

    // The device of COM n; empty when the number maps to nothing.
    QString device(int comNumber) const;
    void setOverride(int comNumber, const QString& device);
    const QMap<int, QString>& overrides() const { return m_overrides; }

    static QString defaultDevice(int comNumber);

private:
    QMap<int, QString> m_overrides;
};

// A serial device the system knows of, for the port window's device list.
struct SerialDevice {
    QString path;  // "/dev/ttyUSB0", or its stable name "/dev/serial/by-id/usb-FTDI_..."
    QString label; // path, then maker and product when the system names them
};
// The serial devices present now (USB adapters, on-board ports), each also under its stable
// by-id name when it has one; sorted, stable names first.
QList<SerialDevice> FindSerialDevices();

// The extra line of the "In Use!" message when the port exists but we may not open it, naming
// the group that owns the device; empty for every other failure.
QString PermissionHint(const QString& device, PortFailure failure);

} // namespace kestrel
