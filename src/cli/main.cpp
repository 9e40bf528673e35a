// SPDX-License-Identifier: GPL-3.0-or-later
// kestrelctl: the command line over the same libraries as the window.
#include "cli.h"

#include <QGuiApplication>
#include <cstring>
#include <memory>

namespace kestrel::cli {
namespace {

void usage() {
    err(QStringLiteral("usage: kestrelctl [--data-dir DIR] COMMAND ..."));
    for (const Command& c : commands())
        err(QStringLiteral("  kestrelctl ") + QString::fromLatin1(c.usage));
}

// The command named on the command line (skipping "--data-dir DIR"), before any application
// object exists: a command that draws needs a GUI application, the others must not.
bool commandDraws(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--data-dir") == 0) {
            ++i;
            continue;
        }
        for (const Command& c : commands())
            if (std::strcmp(argv[i], c.name) == 0)
                return c.draws;
        return false;
    }
    return false;
}

} // namespace
} // namespace kestrel::cli

int main(int argc, char** argv) {
    using namespace kestrel::cli;
    std::unique_ptr<QCoreApplication> application;
    if (commandDraws(argc, argv)) {
        // Fonts and paint devices without a display: the offscreen platform always suffices.
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application = std::make_unique<QGuiApplication>(argc, argv);
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    QCoreApplication& app = *application;
    QCoreApplication::setOrganizationName(QString::fromLatin1(kestrel::kPublisher));
    QCoreApplication::setApplicationName(QString::fromLatin1(kestrel::kProgramKey));

    QStringList args = app.arguments().mid(1);
    QString dataDir;
    const qsizetype dd = args.indexOf(QStringLiteral("--data-dir"));
    if (dd >= 0) {
        if (dd + 1 >= args.size()) {
            err(QStringLiteral("kestrelctl: --data-dir needs a folder"));
            return Usage;
        }
        dataDir = args[dd + 1];
        args.remove(dd, 2);
    }
    if (args.isEmpty() || args.first() == QStringLiteral("--help")) {
        usage();
        return args.isEmpty() ? Usage : Ok;
    }
    const QString name = args.takeFirst();
    for (const Command& c : commands()) {
        if (name != QString::fromLatin1(c.name))
            continue;
        Env env(dataDir);
        try {
            return c.run(env, args);
        } catch (const UsageError& e) {
            err(QStringLiteral("kestrelctl ") + name + QStringLiteral(": ") +
                QString::fromUtf8(e.what()));
            err(QStringLiteral("usage: kestrelctl ") + QString::fromLatin1(c.usage));
            return Usage;
        } catch (const std::exception& e) {
            err(QStringLiteral("kestrelctl ") + name + QStringLiteral(": ") +
                QString::fromUtf8(e.what()));
            return Failure;
        }
    }
    err(QStringLiteral("kestrelctl: unknown command ") + name);
    usage();
    return Usage;
}
