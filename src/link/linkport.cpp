// SPDX-License-Identifier: GPL-3.0-or-later
#include "linkport.h"

#include <QDir>
#include <QFileInfo>
#include <QSerialPort>
#include <QSerialPortInfo>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace kestrel {

namespace {

PortFailure classify(QSerialPort::SerialPortError e) {
    switch (e) {
    case QSerialPort::NoError:
        return PortFailure::Ok;
    case QSerialPort::DeviceNotFoundError:
        return PortFailure::Missing;
    case QSerialPort::PermissionError:
        return PortFailure::Busy; // Qt reports a held lock or exclusive open this way
    default:
        return PortFailure::Other;
    }
}

#ifdef Q_OS_UNIX
// QSerialPort folds "no access rights" and "held by another program" into one error code; the
// remedy differs, so ask the file system which one it is.
PortFailure refinePermission(const QString& device, PortFailure f) {
    if (f != PortFailure::Busy)
        return f;
    const QByteArray path = QFile::encodeName(device);
    if (::access(path.constData(), R_OK | W_OK) != 0 && errno == EACCES)
        return PortFailure::NoPermission;
    return f;
}
#else
PortFailure refinePermission(const QString&, PortFailure f) {
    return f;
}
#endif

} // namespace

SerialLinkPort::SerialLinkPort(QObject* parent) : LinkPort(parent), m_port(new QSerialPort(this)) {
    connect(m_port, &QSerialPort::readyRead, this, &LinkPort::readyRead);
    connect(m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError e) {
        // A read or write failing on an open port means the device is gone; waiting for it to
        // come back would only burn time until the answer deadline.
        if (!m_port->isOpen())
            return;
        if (e == QSerialPort::ResourceError || e == QSerialPort::ReadError ||
            e == QSerialPort::WriteError) {
            m_failure = PortFailure::Other;
            m_error = m_port->errorString();
            m_port->close();
            Q_EMIT lost();
        }
    });
}

SerialLinkPort::~SerialLinkPort() = default;

bool SerialLinkPort::open(const QString& device) {
    m_failure = PortFailure::Ok;
    m_error.clear();
    if (m_port->isOpen())
        return true;
    m_port->setPortName(device);
    m_port->setBaudRate(QSerialPort::Baud9600);
    m_port->setDataBits(QSerialPort::Data8);
    m_port->setParity(QSerialPort::NoParity);
    m_port->setStopBits(QSerialPort::OneStop);
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    if (!m_port->open(QIODevice::ReadWrite)) {
        m_failure = refinePermission(device, classify(m_port->error()));
        if (m_failure == PortFailure::Ok)
            m_failure = PortFailure::Other;
        m_error = m_port->errorString();
        m_port->clearError();
        return false;
    }
    return true;
}

void SerialLinkPort::close() {
    if (m_port->isOpen())
        m_port->close();
}

bool SerialLinkPort::isOpen() const {
    return m_port->isOpen();
}

qint64 SerialLinkPort::write(const QByteArray& bytes) {
    const qint64 n = m_port->write(bytes);
    if (n == bytes.size())
        m_port->flush();
    return n;
}

qint64 SerialLinkPort::bytesAvailable() const {
    return m_port->bytesAvailable();
}

QByteArray SerialLinkPort::readAll() {
    return m_port->readAll();
}

void SerialLinkPort::setDtr(bool on) {
    // Pseudo-terminals and some adapters have no modem lines; the upload does not depend on
    // DTR, so a refusal is not an error.
    if (m_port->isOpen() && !m_port->setDataTerminalReady(on))
        m_port->clearError();
}

PortState SystemPortProbe::probe(const QString& device) {
    PortState state;
    if (device.isEmpty())
        return state;
    {
        QSerialPort port;
        port.setPortName(device);
        if (!port.open(QIODevice::ReadWrite)) {
            state.failure = refinePermission(device, classify(port.error()));
            if (state.failure == PortFailure::Ok)
                state.failure = PortFailure::Other;
            return state;
        }
        port.close();
    }
    state.failure = PortFailure::Ok;
#ifdef Q_OS_UNIX
    // Read the line as the system left it; the probe's own open above restored it on close.
    const int fd = ::open(QFile::encodeName(device).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    if (fd >= 0) {
        termios t{};
        if (::tcgetattr(fd, &t) == 0) {
            static const QMap<speed_t, qint32> speeds{
                {B50, 50},       {B75, 75},       {B110, 110},      {B300, 300},   {B600, 600},
                {B1200, 1200},   {B2400, 2400},   {B4800, 4800},    {B9600, 9600}, {B19200, 19200},
                {B38400, 38400}, {B57600, 57600}, {B115200, 115200}};
            state.baudRate = speeds.value(cfgetospeed(&t), 0);
            switch (t.c_cflag & CSIZE) {
            case CS5:
                state.byteSize = 5;
                break;
            case CS6:
                state.byteSize = 6;
                break;
            case CS7:
                state.byteSize = 7;
                break;
            default:
                state.byteSize = 8;
            }
            state.parity = (t.c_cflag & PARENB) ? ((t.c_cflag & PARODD) ? 'o' : 'e') : 'n';
            state.flags = quint32(t.c_cflag);
        }
        ::close(fd);
    }
#else
    state.baudRate = 9600;
    state.byteSize = 8;
#endif
    return state;
}

QString PortMap::defaultDevice(int n) {
#if defined(Q_OS_WIN)
    return n >= 1 ? QStringLiteral("COM") + QString::number(n) : QString();
#elif defined(Q_OS_MACOS)
    const QStringList devices =
        QDir(QStringLiteral("/dev")).entryList({QStringLiteral("cu.*")}, QDir::System, QDir::Name);
    return n >= 1 && n <= devices.size() ? QStringLiteral("/dev/") + devices[n - 1] : QString();
#else
    if (n >= 1 && n <= 4)
        return QStringLiteral("/dev/ttyS") + QString::number(n - 1);
    if (n >= 5 && n <= 8)
        return QStringLiteral("/dev/ttyUSB") + QString::number(n - 5);
    if (n >= 9 && n <= 12)
        return QStringLiteral("/dev/ttyACM") + QString::number(n - 9);
    return {};
#endif
}

QString PortMap::device(int n) const {
    const auto it = m_overrides.constFind(n);
    if (it != m_overrides.constEnd() && !it.value().isEmpty())
        return it.value();
    return defaultDevice(n);
}

void PortMap::setOverride(int n, const QString& device) {
    m_overrides.insert(n, device);
}

QList<SerialDevice> FindSerialDevices() {
    QList<SerialDevice> byId, plain;
    // Stable names point at the kernel's names; each is listed with what it points at.
    QMap<QString, QStringList> aliases;
    const QDir idDir(QStringLiteral("/dev/serial/by-id"));
    for (const QFileInfo& link : idDir.entryInfoList(QDir::System | QDir::Files, QDir::Name))
        aliases[link.canonicalFilePath()] << link.absoluteFilePath();
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        const QString path = info.systemLocation();
        QStringList about;
        if (!info.manufacturer().isEmpty())
            about << info.manufacturer();
        if (!info.description().isEmpty() && info.description() != info.manufacturer())
            about << info.description();
        const QString suffix = about.isEmpty()
                                   ? QString()
                                   : QStringLiteral(" (") + about.join(u' ') + QLatin1Char(')');
        for (const QString& alias : aliases.value(QFileInfo(path).canonicalFilePath()))
            byId.append({alias, alias + suffix});
        plain.append({path, path + suffix});
    }
    const auto byPath = [](const SerialDevice& a, const SerialDevice& b) {
        return a.path < b.path;
    };
    std::sort(plain.begin(), plain.end(), byPath);
    return byId + plain;
}

QString PermissionHint(const QString& device, PortFailure failure) {
    if (failure != PortFailure::NoPermission)
        return {};
    const QString group = QFileInfo(device).group();
    QString hint = QStringLiteral("No permission to open ") + device;
    if (!group.isEmpty())
        hint += QStringLiteral(": make your user a member of the group \"") + group +
                QStringLiteral("\" that owns it, then log in again.");
    else
        hint += QStringLiteral(": make your user a member of the group that owns it, then log "
                               "in again.");
    return hint;
}

} // namespace kestrel
