// SPDX-License-Identifier: GPL-3.0-or-later
#include "scannersim.h"

#include <QSocketNotifier>
#include <QTimer>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

namespace kestrel {

ScannerSimulator::ScannerSimulator(Options options, QObject* parent)
    : QObject(parent), m_opt(options), m_model(options.cable) {
    m_model.setStopAfter(options.stopAfter);
}

ScannerSimulator::~ScannerSimulator() {
    stop();
}

bool ScannerSimulator::start() {
    if (m_master >= 0)
        return true;
    char name[256] = {};
    termios raw{};
    cfmakeraw(&raw);
    cfsetispeed(&raw, B9600);
    cfsetospeed(&raw, B9600);
    if (::openpty(&m_master, &m_slave, name, &raw, nullptr) != 0) {
        m_error = QString::fromLocal8Bit(std::strerror(errno));
        m_master = m_slave = -1;
        return false;
    }
    // The slave end stays open here as well: without it the master would report a hang-up
    // every time the program closes its port between uploads.
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    ::fcntl(m_master, F_SETFD, FD_CLOEXEC);
    ::fcntl(m_slave, F_SETFD, FD_CLOEXEC);
    m_path = QString::fromLocal8Bit(name);
    m_clock.start();
    m_notifier = new QSocketNotifier(m_master, QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &ScannerSimulator::onReadable);
    m_partialTimer = new QTimer(this);
    m_partialTimer->setSingleShot(true);
    connect(m_partialTimer, &QTimer::timeout, this, [this] {
        for (const ScannerModel::Outcome& o : m_model.timeout())
            show(o.display);
    });
    return true;
}

void ScannerSimulator::stop() {
    if (m_master < 0)
        return;
    delete m_notifier;
    m_notifier = nullptr;
    ::close(m_master);
    ::close(m_slave);
    m_master = m_slave = -1;
}

qint64 ScannerSimulator::byteNs(qsizetype count) const {
    return qint64(double(count) * kByteSeconds * m_opt.wireScale * 1e9);
}

void ScannerSimulator::onReadable() {
    char buf[512];
    const ssize_t n = ::read(m_master, buf, sizeof buf);
    if (n <= 0)
        return;
    const QByteArray bytes(buf, qsizetype(n));
    // The bytes are all here at once; on a real line the last of them arrives only after
    // each has had its time on the wire.
    const qint64 now = m_clock.nsecsElapsed();
    m_inFreeNs = qMax(now, m_inFreeNs) + byteNs(bytes.size());
    const qint64 wait = m_inFreeNs - now;
    if (wait <= 0) {
        process(bytes);
        return;
    }
    QTimer::singleShot(int((wait + 500'000) / 1'000'000), Qt::PreciseTimer, this,
                       [this, bytes] { process(bytes); });
}

void ScannerSimulator::process(const QByteArray& bytes) {
    if (m_master < 0)
        return;
    const QList<ScannerModel::Outcome> outcomes = m_model.receive(bytes);
    for (const ScannerModel::Outcome& o : outcomes) {
        show(o.display);
        if (!o.answer.isEmpty()) {
            const qint64 now = m_clock.nsecsElapsed();
            if (m_opt.split) {
                // Pieces of a few bytes, each leaving when the line has carried it, so the
                // reader sees the answer trickle in.
                constexpr int piece = 5;
                for (qsizetype at = 0; at < o.answer.size(); at += piece) {
                    const QByteArray part = o.answer.mid(at, piece);
                    m_outFreeNs =
                        qMax(now, m_outFreeNs) + qMax<qint64>(byteNs(part.size()), 2'000'000);
                    sendAt(m_outFreeNs, part);
                }
            } else {
                m_outFreeNs = qMax(now, m_outFreeNs) + byteNs(o.answer.size());
                sendAt(m_outFreeNs, o.answer);
            }
        }
        Q_EMIT frameHandled(m_model.framesReceived());
        if (m_opt.vanishAfter >= 0 && m_model.framesReceived() >= m_opt.vanishAfter) {
            stop();
            return;
        }
    }
    if (m_model.partial())
        m_partialTimer->start(m_opt.partialTimeoutMs);
    else
        m_partialTimer->stop();
}

void ScannerSimulator::sendAt(qint64 dueNs, const QByteArray& bytes) {
    const qint64 wait = dueNs - m_clock.nsecsElapsed();
    if (wait <= 0) {
        writeNow(bytes);
        return;
    }
    QTimer::singleShot(int((wait + 500'000) / 1'000'000), Qt::PreciseTimer, this,
                       [this, bytes] { writeNow(bytes); });
}

void ScannerSimulator::writeNow(const QByteArray& bytes) {
    if (m_master < 0)
        return;
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(m_master, bytes.constData() + done, size_t(bytes.size() - done));
        if (n <= 0)
            return; // the program is not reading; a scanner would not wait either
        done += n;
    }
}

void ScannerSimulator::show(const QStringList& lines) {
    for (const QString& l : lines) {
        m_lines << l;
        Q_EMIT line(l);
    }
}

} // namespace kestrel
