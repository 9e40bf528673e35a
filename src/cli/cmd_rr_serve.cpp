// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl rr-serve: the frequency database's web service on this machine, answering from the
// built-in demo data or a data folder, so that the web import can be tried without an account.
// Prints the address it listens on, then runs until interrupted.
#include "cli.h"

#include "webservice/server/rrlocalserver.h"

#include <QCoreApplication>
#include <cstdio>

namespace kestrel::cli {

namespace {

int run(Env&, const Args& args) {
    // --listen HOST:PORT, HOST or :PORT; loopback and port 9000 unless given.
    QHostAddress address(QHostAddress::LocalHost);
    quint16 port = kRRServeDefaultPort;
    if (args.has(QStringLiteral("listen"))) {
        const QString listen = args.value(QStringLiteral("listen"));
        const qsizetype colon = listen.lastIndexOf(u':');
        QString host = colon >= 0 ? listen.left(colon) : listen;
        if (host.startsWith(u'[') && host.endsWith(u']'))
            host = host.mid(1, host.size() - 2);
        if (colon >= 0) {
            bool ok = false;
            const uint p = listen.mid(colon + 1).toUInt(&ok);
            if (!ok || p > 65535)
                throw UsageError(
                    qPrintable(QStringLiteral("not a port: ") + listen.mid(colon + 1)));
            port = quint16(p);
        }
        if (!host.isEmpty() && !address.setAddress(host))
            throw UsageError(qPrintable(QStringLiteral("not an IP address: ") + host));
    }

    RRDataSet data;
    if (args.has(QStringLiteral("data"))) {
        QString why;
        if (!data.load(args.value(QStringLiteral("data")), &why)) {
            err(QStringLiteral("kestrelctl rr-serve: ") + why);
            return Failure;
        }
    } else {
        data = RRDataSet::demo();
    }

    RRLocalServer server(std::move(data));
    if (server.listen(address, port) == 0) {
        err(QStringLiteral("kestrelctl rr-serve: cannot listen on %1 port %2")
                .arg(address.toString())
                .arg(port));
        return Failure;
    }
    if (!address.isLoopback())
        err(QStringLiteral("kestrelctl rr-serve: listening beyond this machine; logins travel "
                           "unencrypted"));
    out(QStringLiteral("Listening on ") + server.baseUrl());
    if (!args.has(QStringLiteral("data")))
        out(QStringLiteral("Demo data; log in as \"demo\" with the password \"demo\""));
    std::fflush(stdout);
    return QCoreApplication::exec();
}

const CommandRegistration
    reg({"rr-serve",
         nullptr,
         "Serve the frequency database's web service from demo or own data until interrupted",
         {{"listen", "HOST:PORT",
           "Listen there (default 127.0.0.1:9000; port 0 picks a free one, printed)"},
          {"data", "PATH", "Answer from a JSON file or a folder of them instead of the demo"}},
         {},
         run});

} // namespace
} // namespace kestrel::cli
