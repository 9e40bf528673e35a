// SPDX-License-Identifier: GPL-3.0-or-later
// A scanner on the far end of a pseudo-terminal: the program opens the terminal's device as if
// it were the serial port, and the simulator answers the way the scanner on the given cable
// would, at the pace of a 9600 baud line.
#pragma once

#include "scannermodel.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>

class QSocketNotifier;
class QTimer;

namespace kestrel {

class ScannerSimulator : public QObject {
    Q_OBJECT
public:
    struct Options {
        int cable = 3;
        int stopAfter = -1;          // stop answering after this many frames (negative: never)
        int vanishAfter = -1;        // close the terminal after this many frames (negative: never)
        bool split = false;          // send each answer in several pieces
        double wireScale = 1.0;      // 1: bytes take their 9600 baud time on the line; 0: instant
        int partialTimeoutMs = 1000; // a frame left unfinished this long is dropped ("T-Err")
    };

    explicit ScannerSimulator(Options options, QObject* parent = nullptr);
    ~ScannerSimulator() override;

    // Opens the pseudo-terminal; false with errorString() when the system refuses.
    bool start();
    // Closes the terminal: to the program on the other end the port disappears.
    void stop();
    bool running() const { return m_master >= 0; }
    QString devicePath() const { return m_path; }
    QString errorString() const { return m_error; }

    const ScannerModel& model() const { return m_model; }
    // Every line shown so far.
    const QStringList& lines() const { return m_lines; }

    // Line time of one byte at 9600 baud, 10 bits a byte.
    static constexpr double kByteSeconds = 10.0 / 9600.0;

Q_SIGNALS:
    void line(const QString& text);
    void frameHandled(int framesReceived);

private:
    void onReadable();
    void process(const QByteArray& bytes);
    void sendAt(qint64 dueNs, const QByteArray& bytes);
    void writeNow(const QByteArray& bytes);
    void show(const QStringList& lines);
    qint64 byteNs(qsizetype count) const;

    Options m_opt;
    ScannerModel m_model;
    int m_master = -1;
    int m_slave = -1;
    QString m_path;
    QString m_error;
    QSocketNotifier* m_notifier = nullptr;
    QTimer* m_partialTimer = nullptr;
    QElapsedTimer m_clock;
    qint64 m_inFreeNs = 0;  // when the inbound line has delivered everything sent so far
    qint64 m_outFreeNs = 0; // when the outbound line is free again
    QStringList m_lines;
};

} // namespace kestrel
