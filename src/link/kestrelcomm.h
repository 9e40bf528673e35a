// SPDX-License-Identifier: GPL-3.0-or-later
// KestrelComm: the one component that talks to the scanner. Opens the port, sends the frames of
// an upload one at a time, waits for the answers as the cable requires, paces the transfer and
// reports progress and traffic through signals. Every wait runs the event loop and sleeps on a
// timer or on the port's ready-read; none spins.
#pragma once

#include "debuglog.h"
#include "linkport.h"

#include "core/records.h"

#include <QByteArray>
#include <QList>
#include <QObject>
#include <memory>

namespace kestrel {

class AppContext;
class KestrelError;

// How an upload ended, for the status line of the window and of kestrelctl.
struct UploadResult {
    enum class Status { Finished, Cancelled, TimedOut, NoPort, Failed };
    Status status = Status::Finished;
    int sent = 0;  // records the scanner has taken
    int total = 0; // records the upload was to send
    bool search = false;
};
// "Upload finished: 200 channels", "Upload cancelled: 12 of 200 channels sent", ...
QString UploadSummary(const UploadResult& result);

class KestrelComm : public QObject {
    Q_OBJECT
    Q_PROPERTY(qint32 CommStatus READ CommStatus NOTIFY CommStatusChanged)
    Q_PROPERTY(qint16 CommPort READ CommPort WRITE setCommPort NOTIFY CommPortChanged)
    Q_PROPERTY(bool ComPortOpen READ ComPortOpen WRITE setComPortOpen)
    Q_PROPERTY(bool InDebug READ InDebug WRITE setInDebug NOTIFY InDebugChanged)
    Q_PROPERTY(qint32 CableType READ CableType WRITE setCableType NOTIFY CableTypeChanged)
    Q_PROPERTY(bool PowerOn READ PowerOn)

public:
    // port and probe default to the real serial port and the system probe.
    explicit KestrelComm(AppContext& ctx, QObject* parent = nullptr,
                         std::unique_ptr<LinkPort> port = {},
                         std::unique_ptr<PortProbe> probe = {});
    ~KestrelComm() override;

    qint32 CommStatus() const { return m_commStatus; }
    qint16 CommPort() const { return m_commPort; }
    void setCommPort(qint16 port);
    bool ComPortOpen();
    void setComPortOpen(bool open);
    bool InDebug() const { return m_inDebug; }
    void setInDebug(bool on);
    qint32 CableType() const { return m_cableType; }
    void setCableType(qint32 type);
    bool PowerOn() const { return m_powerOn; }

    bool COMAvailable(qint16 port);
    void Initialize();
    // An upload of a part of the current profile: UploadFrames of it, then send(). The three
    // menu commands are its three parts.
    void upload(ProfilePart part, int bank = 0);
    void SendAllChannels();
    void SendBank(quint8 bank);
    void SendSearch();
    // Sends the frames of an upload (UploadFrames: start, one per record, stop) one at a time,
    // each after the answer to the one before. part and bank say what the records are, for the
    // progress signals and the pace.
    void send(const QList<QByteArray>& frames, ProfilePart part, int bank = 0);

    // True while one of the three uploads runs; a second one is refused until it returns.
    bool busy() const { return m_busy; }
    // Ends the running upload once the frame on its way has been answered, and closes the
    // port; the scanner keeps what it has taken so far.
    void cancelUpload();
    // How the last upload ended.
    const UploadResult& lastUpload() const { return m_result; }

    // Device paths of the COM numbers; an explicit device, when set, wins over CommPort.
    void setPortMap(const PortMap& map) { m_portMap = map; }
    const PortMap& portMap() const { return m_portMap; }
    void setDevice(const QString& path) { m_device = path; }
    QString currentDevice() const;

    // Multiplies every pause and answer deadline; 1 is real time. Tests shorten the waits.
    void setTimeScale(double scale) { m_timeScale = scale > 0 ? scale : 1.0; }
    double timeScale() const { return m_timeScale; }

    DebugLog& debugLog() { return m_log; }
    QByteArray lastFrame() const { return m_lastFrame; }
    // Line state found by the last successful port check.
    const PortState& portState() const { return m_state; }

Q_SIGNALS:
    void DebugInfo(quint8 list, const QString& text);
    void Error(const QString& text);
    void RxTimeOut();
    void RawDataDump(const QString& text);
    void SendingChnl(quint8 channel);
    void SendingSrch(quint8 range);
    // The n-th record of an upload of `total` is on its way.
    void uploadProgress(int n, int total);
    // An upload has ended, however (lastUpload() says how).
    void uploadEnded();

    void CommStatusChanged();
    void CommPortChanged();
    void InDebugChanged();
    void CableTypeChanged();

private:
    bool beginUpload(ProfilePart part);
    void endUpload(UploadResult::Status status);
    void uploadFailed(ProfilePart part, const KestrelError& e);
    bool GetPortInfo(const QString& device);
    void Delay(double seconds);
    bool Get_ResponseTo(const QByteArray& frame);
    void portOpen();
    void portClose();
    void trace(quint8 list, const QString& line);
    // Sleeps until the port has something to read, is lost, or the time is up; false when the
    // application is quitting and no event loop can run any more.
    bool waitForPort(qint64 ms);

    AppContext& m_ctx;
    std::unique_ptr<LinkPort> m_port;
    std::unique_ptr<PortProbe> m_probe;
    PortMap m_portMap;
    QString m_device;
    DebugLog m_log;
    PortState m_state;
    QByteArray m_lastFrame;
    double m_timeScale = 1.0;
    qint32 m_commStatus = 0;
    qint16 m_commPort = 2;
    qint32 m_cableType = 3;
    bool m_inDebug = false;
    bool m_powerOn = false;
    bool m_busy = false;
    bool m_cancel = false;
    UploadResult m_result;
    bool m_portLost = false;
};

} // namespace kestrel
