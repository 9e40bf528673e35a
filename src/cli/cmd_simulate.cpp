// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl simulate: a scanner on a pseudo-terminal, for trying uploads without one. Prints
// the terminal's device, then every frame the scanner takes and the memory it holds after each
// upload. Runs until interrupted.
#include "cli.h"

#include "link/scannersim.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <sys/socket.h>
#include <unistd.h>

namespace kestrel::cli {

namespace {

// The signal handler may only write to a descriptor; the event loop reads the other end.
int g_signalPipe[2] = {-1, -1};

void onSignal(int) {
    const char c = 1;
    [[maybe_unused]] const ssize_t n = ::write(g_signalPipe[1], &c, 1);
}

int run(Env&, const Args& args) {
    ScannerSimulator::Options opt;
    if (args.has(QStringLiteral("cable")))
        opt.cable = args.intValue(QStringLiteral("cable"), 2, 3);
    if (args.has(QStringLiteral("stop-after")))
        opt.stopAfter = args.intValue(QStringLiteral("stop-after"), 0, 1'000'000);
    opt.split = args.has(QStringLiteral("split"));
    const QString linkPath = args.value(QStringLiteral("link"));
    if (!linkPath.isEmpty()) {
        const QFileInfo info(linkPath);
        if (info.exists() && !info.isSymLink())
            throw UsageError(qPrintable(linkPath + QStringLiteral(" exists and is not a link")));
    }

    ScannerSimulator sim(opt);
    if (!sim.start()) {
        err(QStringLiteral("kestrelctl simulate: no pseudo-terminal: ") + sim.errorString());
        return Failure;
    }
    if (!linkPath.isEmpty()) {
        QFile::remove(linkPath);
        if (!QFile::link(sim.devicePath(), linkPath)) {
            err(QStringLiteral("kestrelctl simulate: cannot make the link ") + linkPath);
            return Failure;
        }
    }
    auto print = [](const QString& line) {
        out(line);
        std::fflush(stdout);
    };
    print(sim.devicePath());
    QObject::connect(&sim, &ScannerSimulator::line, print);

    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) != 0) {
        err(QStringLiteral("kestrelctl simulate: cannot watch for signals"));
        return Failure;
    }
    QSocketNotifier notifier(g_signalPipe[0], QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
    std::signal(SIGINT, onSignal);
    std::signal(SIGTERM, onSignal);
    std::signal(SIGHUP, onSignal);

    QCoreApplication::exec();

    sim.stop();
    if (!linkPath.isEmpty() && QFileInfo(linkPath).isSymLink())
        QFile::remove(linkPath);
    return Ok;
}

const CommandRegistration
    reg({"simulate",
         nullptr,
         "Act as a scanner on a pseudo-terminal until interrupted",
         {{"cable", "2|3", "The cable type to answer as"},
          {"link", "PATH", "Also reach the terminal through a symbolic link at PATH"},
          {"stop-after", "N", "Stop answering after N frames"},
          {"split", nullptr, "Send each answer in several pieces"}},
         {},
         run});

} // namespace
} // namespace kestrel::cli
