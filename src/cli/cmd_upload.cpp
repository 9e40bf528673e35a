// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl upload: the menu's upload from the command line, at the same pace, with a progress
// bar. Exit 3 when the scanner does not answer.
#include "cli.h"

#include "link/frames.h"
#include "link/kestrelcomm.h"

#include <QRegularExpression>

#include <cstdio>

namespace kestrel::cli {

namespace {

constexpr int kTimedOut = 3;

void drawBar(int done, int total, const QString& what) {
    constexpr int width = 30;
    const int filled = total > 0 ? done * width / total : width;
    const QString bar = QStringLiteral("\r[") + QString(filled, QLatin1Char('#')) +
                        QString(width - filled, QLatin1Char(' ')) + QStringLiteral("] ") + what;
    const QByteArray bytes = bar.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

int run(Env& env, const Args& args) {
    const Target target = parseTarget(args, true);
    const QString port = args.value(QStringLiteral("port"));
    if (port.isEmpty())
        throw UsageError("give the port with --port COMn or --port PATH");
    static const QRegularExpression comRe(QStringLiteral("^COM(\\d{1,3})$"),
                                          QRegularExpression::CaseInsensitiveOption);
    const auto com = comRe.match(port);
    if (com.hasMatch() && (com.captured(1).toInt() < 1 || com.captured(1).toInt() > 255))
        throw UsageError("--port COMn takes a number from 1 to 255");
    int cable = 0;
    if (args.has(QStringLiteral("cable")))
        cable = args.intValue(QStringLiteral("cable"), 2, 3);

    AppContext& ctx = env.load();
    env.selectProfile(args);
    KestrelComm link(ctx);
    link.setCableType(cable ? cable : ctx.settings.KestrelCable);
    if (com.hasMatch())
        link.setCommPort(qint16(com.captured(1).toInt()));
    else
        link.setDevice(port);

    int timeouts = 0;
    QObject::connect(&link, &KestrelComm::RxTimeOut, [&] { ++timeouts; });
    const int total = UploadRecordCount(target.kind);
    int done = 0;
    QObject::connect(&link, &KestrelComm::SendingChnl, [&](quint8 n) {
        drawBar(done++, total, QStringLiteral("Sending Chan: ") + QString::number(n));
    });
    QObject::connect(&link, &KestrelComm::SendingSrch, [&](quint8 n) {
        drawBar(done++, total, QStringLiteral("Sending Srch: ") + QString::number(n));
    });

    link.upload(target.kind, target.bank);
    if (link.lastUpload().status == UploadResult::Status::Finished)
        drawBar(total, total, QStringLiteral("Done"));
    std::fputs("\n", stderr);
    if (timeouts > 0) {
        err(QStringLiteral("Scanner Timed Out while Receiving!"));
        err(QStringLiteral("Please Check Connections to Scanner and Try Again"));
    }
    // The same line the window's status bar ends an upload with.
    out(UploadSummary(link.lastUpload()));
    if (timeouts > 0)
        return kTimedOut;
    return env.finish();
}

const CommandRegistration
    reg({"upload",
         nullptr,
         "Send a bank, the search ranges or every bank to the scanner",
         targetOptions(true) +
             QList<Option>{{"port", "COMn|PATH", "The serial port: COM1-COM255 or a device path"},
                           {"cable", "2|3", "The cable type (default: the saved setting)"}},
         {},
         run,
         false,
         {{kTimedOut, "the scanner did not answer"}}});

} // namespace
} // namespace kestrel::cli
