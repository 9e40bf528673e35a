// SPDX-License-Identifier: GPL-3.0-or-later
#include "kestrelcomm.h"

#include "frames.h"

#include "core/appcontext.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <cmath>

namespace kestrel {

namespace {

const QString kTitle = QStringLiteral("Kestrel Manager");

// The first four bytes of a frame as hex pairs, the rest as the characters they are.
QString traceText(const QByteArray& bytes, const QString& between) {
    return QString::fromLatin1(bytes.left(4).toHex().toUpper()) + between +
           QString::fromLatin1(bytes.mid(4));
}

// Error numbers and texts of a port that will not open, as the serial control reports them.
KestrelError openError(PortFailure f, const QString& detail) {
    switch (f) {
    case PortFailure::Missing:
        return KestrelError(8002, QStringLiteral("Invalid port number"));
    case PortFailure::Busy:
        return KestrelError(8005, QStringLiteral("Port already open"));
    case PortFailure::NoPermission:
        return KestrelError(70, QStringLiteral("Permission denied"));
    default:
        return KestrelError(8020, detail.isEmpty() ? QStringLiteral("Error reading comm device")
                                                   : detail);
    }
}

} // namespace

KestrelComm::KestrelComm(AppContext& ctx, QObject* parent, std::unique_ptr<LinkPort> port,
                         std::unique_ptr<PortProbe> probe)
    : QObject(parent), m_ctx(ctx), m_port(std::move(port)), m_probe(std::move(probe)),
      m_portMap(ctx.settings.PortOverrides) {
    if (!m_port)
        m_port = std::make_unique<SerialLinkPort>();
    if (!m_probe)
        m_probe = std::make_unique<SystemPortProbe>();
    connect(m_port.get(), &LinkPort::lost, this, [this] { m_portLost = true; });
    portClose();
}

KestrelComm::~KestrelComm() {
    Trap(m_ctx.errors, "KestrelComm -> Terminate", [&] { portClose(); });
}

void KestrelComm::setCommPort(qint16 port) {
    Trap(m_ctx.errors, "KestrelComm -> CommPort", [&] {
        if (port == m_commPort)
            return;
        m_commPort = port;
        Q_EMIT CommPortChanged();
    });
}

bool KestrelComm::ComPortOpen() {
    return Trap(m_ctx.errors, "KestrelComm -> ComPortOpen", [&] { return m_port->isOpen(); });
}

void KestrelComm::setComPortOpen(bool open) {
    Trap(m_ctx.errors, "KestrelComm -> ComPortOpen", [&] {
        if (open == m_port->isOpen())
            return;
        if (open)
            portOpen();
        else
            portClose();
    });
}

void KestrelComm::setInDebug(bool on) {
    Trap(m_ctx.errors, "KestrelComm -> InDebug", [&] {
        if (on == m_inDebug)
            return;
        m_inDebug = on;
        Q_EMIT InDebugChanged();
    });
}

void KestrelComm::setCableType(qint32 type) {
    Trap(m_ctx.errors, "KestrelComm -> CableType", [&] {
        if (type == m_cableType)
            return;
        m_cableType = type;
        Q_EMIT CableTypeChanged();
    });
}

QString KestrelComm::currentDevice() const {
    return m_device.isEmpty() ? m_portMap.device(m_commPort) : m_device;
}

bool KestrelComm::COMAvailable(qint16 port) {
    return Trap(m_ctx.errors, "KestrelComm -> COMAvailable", [&] {
        const QString device = m_portMap.device(port);
        return !device.isEmpty() && m_probe->probe(device).ok();
    });
}

bool KestrelComm::GetPortInfo(const QString& device) {
    return Trap(m_ctx.errors, "KestrelComm -> GetPortInfo", [&] {
        m_state = m_probe->probe(device);
        const qint32 status = m_state.ok() ? 1 : 0;
        m_commStatus = status;
        Q_EMIT CommStatusChanged();
        return m_state.ok();
    });
}

void KestrelComm::Initialize() {
    Trap(m_ctx.errors, "KestrelComm -> Initialize", [&](Stmt& s) {
        s.at(1);
        m_powerOn = m_port->isOpen();
        if (!m_powerOn) {
            s.at(3);
            const QString device = currentDevice();
            if (!GetPortInfo(device)) {
                QString text = QStringLiteral("COM") + QString::number(m_commPort) +
                               QStringLiteral(": In Use!\nPlease Select a Different COM Port...");
                const QString hint = PermissionHint(device, m_state.failure);
                if (!hint.isEmpty())
                    text += QLatin1Char('\n') + hint;
                m_ctx.prompts().message(text, kTitle, Icon::Critical, Buttons::Ok);
                return;
            }
        }
        s.at(4);
        if (m_inDebug) {
            const int parity = m_state.parity == 'o' ? 1 : m_state.parity == 'e' ? 2 : 0;
            Q_EMIT DebugInfo(0, QStringLiteral("Setttings=") + QString::number(m_state.baudRate) +
                                    QLatin1Char(',') + QString::number(parity) + QLatin1Char(',') +
                                    QString::number(m_state.byteSize) + QLatin1Char(',') +
                                    QString::number(m_state.flags, 16).toUpper());
        }
        s.at(5);
        if (m_state.baudRate < 110)
            m_state.baudRate = 9600;
        Delay(0.55);
        s.at(8);
        // Line settings and DTR only reach a port that is open; a closed one takes the fixed
        // 9600,n,8,1 of every upload when it is opened.
        m_port->setDtr(false);
        m_port->setDtr(true);
        Delay(0.75);
        s.at(10);
        if (m_inDebug)
            Q_EMIT DebugInfo(0, QStringLiteral("ComState Ok"));
    });
}

void KestrelComm::Delay(double seconds) {
    Trap(m_ctx.errors, "KestrelComm -> Delay", [&] {
        QElapsedTimer clock;
        clock.start();
        const qint64 totalNs = qint64(std::llround(seconds * m_timeScale * 1e9));
        QEventLoop loop;
        QTimer timer;
        timer.setSingleShot(true);
        timer.setTimerType(Qt::PreciseTimer);
        connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
        // The timer may fire early by a fraction of a millisecond; sleep again for the rest
        // rather than end the pause short.
        for (qint64 left = totalNs - clock.nsecsElapsed(); left > 0;
             left = totalNs - clock.nsecsElapsed()) {
            timer.start(int((left + 999'999) / 1'000'000));
            // The application is quitting: no loop will run again, so waiting would spin.
            if (loop.exec() < 0)
                break;
        }
    });
}

bool KestrelComm::waitForPort(qint64 ms) {
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(m_port.get(), &LinkPort::readyRead, &loop, &QEventLoop::quit);
    connect(m_port.get(), &LinkPort::lost, &loop, &QEventLoop::quit);
    timer.start(int(qMax<qint64>(ms, 1)));
    return loop.exec() >= 0;
}

void KestrelComm::trace(quint8 list, const QString& line) {
    m_log.writeLine(line);
    if (m_inDebug)
        Q_EMIT DebugInfo(list, line);
}

bool KestrelComm::Get_ResponseTo(const QByteArray& frame) {
    return Trap(m_ctx.errors, "KestrelComm -> Get_ResponseTo", [&](Stmt& s) {
        s.at(1);
        if (!m_port->isOpen())
            return false;
        s.at(2);
        trace(0, QStringLiteral(">> ") + traceText(frame, QString()));
        s.at(3);
        m_port->write(frame);
        s.at(4);
        QElapsedTimer clock;
        clock.start();
        qint64 deadlineMs = qint64(std::llround(12000 * m_timeScale));
        QByteArray answer;
        bool lost = false;
        s.at(5);
        if (m_cableType == 2) {
            // The two-wire cable cannot carry an answer back: what arrives is line noise or
            // our own echo.
            if (m_port->bytesAvailable() > 0)
                m_port->readAll();
            answer = frame;
            Delay(0.25);
            deadlineMs = clock.elapsed() + qint64(std::llround(10000 * m_timeScale));
        } else {
            for (;;) {
                if (!m_port->isOpen()) {
                    lost = true;
                    break;
                }
                if (m_port->bytesAvailable() > 0) {
                    answer += m_port->readAll();
                    continue;
                }
                if (answer.size() >= frame.size())
                    break;
                const qint64 left = deadlineMs - clock.elapsed();
                if (left <= 0)
                    break;
                if (!waitForPort(left)) {
                    deadlineMs = clock.elapsed(); // quitting: give up as if the time were over
                    break;
                }
            }
        }
        s.at(6);
        if (lost) {
            trace(1, QStringLiteral("<< Port Closed..."));
            return false;
        }
        if (clock.elapsed() >= deadlineMs && answer.size() < frame.size()) {
            trace(1, QStringLiteral("<< Rx TimedOut..."));
            return false;
        }
        s.at(7);
        trace(1, QStringLiteral("<< ") + traceText(answer, QStringLiteral(" ")));
        return true;
    });
}

void KestrelComm::portOpen() {
    try {
        m_portLost = false;
        if (m_port->isOpen())
            return;
        const QString device = currentDevice();
        if (device.isEmpty())
            throw openError(PortFailure::Missing, {});
        if (!m_port->open(device))
            throw openError(m_port->failure(), m_port->errorString());
        m_port->setDtr(true);
    } catch (const KestrelError& e) {
        QString text = QStringLiteral("PortOpen: ") + QString::number(e.number()) +
                       QLatin1Char('-') + e.description();
        const QString hint = PermissionHint(currentDevice(), m_port->failure());
        if (!hint.isEmpty())
            text += QLatin1Char('\n') + hint;
        m_ctx.prompts().message(text, kTitle, Icon::Critical, Buttons::Ok);
    }
}

void KestrelComm::portClose() {
    try {
        if (m_port->isOpen())
            m_port->close();
    } catch (const KestrelError& e) {
        m_ctx.prompts().message(QStringLiteral("PortClose: ") + QString::number(e.number()) +
                                    QLatin1Char('-') + e.description(),
                                kTitle, Icon::Critical, Buttons::Ok);
    }
}

void KestrelComm::SendAllChannels() {
    upload(ProfilePart::AllBanks, 0);
}

void KestrelComm::SendBank(quint8 bank) {
    upload(ProfilePart::Bank, bank);
}

void KestrelComm::SendSearch() {
    upload(ProfilePart::Search, 0);
}

void KestrelComm::upload(ProfilePart part, int bank) {
    if (m_busy)
        return;
    QList<QByteArray> frames;
    try {
        frames = UploadFrames(m_ctx.cur(), part, bank);
    } catch (const KestrelError& e) {
        // Nothing is sent of a profile that cannot be put into frames whole.
        beginUpload(part);
        uploadFailed(part, e);
        endUpload(UploadResult::Status::Failed);
        return;
    }
    send(frames, part, bank);
}

void KestrelComm::cancelUpload() {
    if (m_busy)
        m_cancel = true;
}

QString UploadSummary(const UploadResult& r) {
    const QString what = r.search ? QStringLiteral("search ranges") : QStringLiteral("channels");
    const QString counted = QStringLiteral("%1 of %2 %3 sent").arg(r.sent).arg(r.total).arg(what);
    switch (r.status) {
    case UploadResult::Status::Finished:
        return QStringLiteral("Upload finished: %1 %2").arg(r.total).arg(what);
    case UploadResult::Status::Cancelled:
        return QStringLiteral("Upload cancelled: ") + counted;
    case UploadResult::Status::TimedOut:
        return QStringLiteral("Upload failed: the scanner did not answer (") + counted +
               QLatin1Char(')');
    case UploadResult::Status::NoPort:
        return QStringLiteral("Upload failed: the port could not be opened");
    case UploadResult::Status::Failed:
        break;
    }
    return QStringLiteral("Upload failed (") + counted + QLatin1Char(')');
}

bool KestrelComm::beginUpload(ProfilePart part) {
    if (m_busy)
        return false;
    m_busy = true;
    m_cancel = false;
    m_result = {UploadResult::Status::Finished, 0, UploadRecordCount(part),
                part == ProfilePart::Search};
    return true;
}

void KestrelComm::endUpload(UploadResult::Status status) {
    m_result.status = status;
    m_busy = false;
    m_cancel = false;
    Q_EMIT uploadEnded();
}

void KestrelComm::uploadFailed(ProfilePart part, const KestrelError& e) {
    const char* name = part == ProfilePart::AllBanks ? "SendAll: "
                       : part == ProfilePart::Bank   ? "SendBank: "
                                                     : "SendSearch: ";
    m_ctx.prompts().message(QString::fromLatin1(name) + QString::number(e.number()) +
                                QLatin1Char('-') + e.description(),
                            kTitle, Icon::Critical, Buttons::Ok);
}

void KestrelComm::send(const QList<QByteArray>& frames, ProfilePart part, int bank) {
    if (!beginUpload(part))
        return;
    // Channels are numbered 1-200 across the banks; search ranges 1-10.
    const int firstNumber = part == ProfilePart::Bank ? ChannelNumber(bank, 1) : 1;
    const double pause = part == ProfilePart::Bank ? 0.5 : 0.25;
    try {
        if (frames.size() != m_result.total + 2)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        portOpen();
        const bool opened = m_port->isOpen();
        if (part == ProfilePart::Bank)
            m_lastFrame.clear();
        if (!Get_ResponseTo(frames.first())) {
            portClose();
            endUpload(opened ? UploadResult::Status::TimedOut : UploadResult::Status::NoPort);
            Q_EMIT RxTimeOut();
            return;
        }
        Delay(pause);
        for (int i = 0; i < m_result.total; ++i) {
            const quint8 number = quint8(firstNumber + i);
            if (part == ProfilePart::Search)
                Q_EMIT SendingSrch(number);
            else
                Q_EMIT SendingChnl(number);
            Q_EMIT uploadProgress(m_result.sent + 1, m_result.total);
            m_lastFrame = frames[i + 1];
            if (!Get_ResponseTo(m_lastFrame)) {
                portClose();
                endUpload(UploadResult::Status::TimedOut);
                Q_EMIT RxTimeOut();
                return;
            }
            ++m_result.sent;
            // A cancel waits for the answer to the frame on its way, never longer.
            if (m_cancel) {
                portClose();
                endUpload(UploadResult::Status::Cancelled);
                return;
            }
            Delay(pause);
        }
        const bool stopAnswered = Get_ResponseTo(frames.last());
        if (!stopAnswered)
            Q_EMIT RxTimeOut();
        Delay(pause);
        portClose();
        endUpload(stopAnswered ? UploadResult::Status::Finished : UploadResult::Status::TimedOut);
        return;
    } catch (const KestrelError& e) {
        uploadFailed(part, e);
    }
    portClose();
    endUpload(UploadResult::Status::Failed);
}

} // namespace kestrel
