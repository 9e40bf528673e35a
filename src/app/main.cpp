// SPDX-License-Identifier: GPL-3.0-or-later
// kestrel-manager: start-up. Prepares the memory image and shows the main window.
#include "core/appcontext.h"
#include "core/datalock.h"
#include "core/filereport.h"
#include "core/files.h"
#include "core/profiles.h"
#include "i18n/language.h"
#include "mainwin/mainform.h"
#include "ui/guiprompts.h"
#include "ui/windowplace.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QIcon>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {
// How long the window waits for a command line that is writing to finish.
constexpr int kLockWaitMs = 5000;
} // namespace

namespace {
constexpr char kUsage[] = "Usage: kestrel-manager [options]\n"
                          "Prepares the scanner's memory and shows the main window.\n"
                          "\n"
                          "Options:\n"
                          "  -h, --help        Show this help and end.\n"
                          "  -v, --version     Show the version and end.\n"
                          "  --data-dir DIR    Keep profiles, banks and settings in DIR.\n";

// The command line is read before any window system is touched, so --help and --version work
// with no display (over ssh, in a package check). Returns an exit status, or -1 to go on.
int ReadCommandLine(int argc, char** argv, QString& dataDir) {
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    QCommandLineParser parser;
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QString());
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")}, QString());
    const QCommandLineOption dir(QStringLiteral("data-dir"), QString(), QStringLiteral("DIR"));
    parser.addOption(help);
    parser.addOption(version);
    parser.addOption(dir);
    if (!parser.parse(args)) {
        std::fprintf(stderr, "kestrel-manager: %s\n%s", qPrintable(parser.errorText()), kUsage);
        return 1;
    }
    if (!parser.positionalArguments().isEmpty()) {
        std::fprintf(stderr, "kestrel-manager: unexpected argument '%s'\n%s",
                     qPrintable(parser.positionalArguments().constFirst()), kUsage);
        return 1;
    }
    if (parser.isSet(help)) {
        std::fputs(kUsage, stdout);
        return 0;
    }
    if (parser.isSet(version)) {
        std::printf("kestrel-manager %s\n", KESTREL_VERSION);
        return 0;
    }
    dataDir = parser.value(dir);
    if (parser.isSet(dir) && dataDir.isEmpty()) {
        std::fprintf(stderr, "kestrel-manager: --data-dir needs a folder\n");
        return 1;
    }
    return -1;
}
} // namespace

int main(int argc, char** argv) {
    QString dataDir;
    if (const int status = ReadCommandLine(argc, argv, dataDir); status >= 0)
        return status;

    QApplication app(argc, argv);
    QApplication::setOrganizationName(QString::fromLatin1(kestrel::kPublisher));
    QApplication::setApplicationName(QString::fromLatin1(kestrel::kProgramKey));
    QApplication::setApplicationVersion(QStringLiteral(KESTREL_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/kestrel-manager.svg")));
    kestrel::InstallTranslations(kestrel::LanguageChoice());

    kestrel::GuiPrompts prompts;
    kestrel::AppContext ctx(kestrel::ResolveAppDir(dataDir), &prompts);
    ctx.screenTwips = kestrel::desktopTwips();
    kestrel::DetectNumberFormat(ctx);
    // One writer at a time: the window holds the data folder while it runs.
    QDir().mkpath(ctx.appDir());
    kestrel::DataLock lock(ctx.appDir());
    if (!lock.acquire(kLockWaitMs)) {
        prompts.message(QCoreApplication::translate("main", "Kestrel Manager cannot start: %1.")
                            .arg(kestrel::InUseText(ctx.appDir(), lock.holder())),
                        QStringLiteral("Kestrel Manager"), kestrel::Icon::Critical,
                        kestrel::Buttons::Ok);
        return 2;
    }
    kestrel::MakeBanksDir(ctx);
    kestrel::RemoveStaleSaves(ctx);
    ctx.registry = kestrel::LoadRegistryValues();
    kestrel::Load_Profiles(ctx);

    kestrel::MainForm form(ctx);
    // Start-up timing (tools/startup-time): the variable holds the launch time in nanoseconds
    // since the epoch; at the first paint the program prints the seconds since then and ends at
    // once, before the link set-up queued behind that paint. A probe run has nothing to save.
    if (const QByteArray launched = qgetenv("KESTREL_STARTUP_PROBE"); !launched.isEmpty()) {
        QObject::connect(&form, &kestrel::MainForm::firstPainted, [launched] {
            const qint64 ns = std::chrono::duration_cast<std::chrono::nanoseconds>(
                                  std::chrono::system_clock::now().time_since_epoch())
                                  .count() -
                              launched.toLongLong();
            std::printf("first paint after %.3f s\n", double(ns) / 1e9);
            std::fflush(stdout);
            std::_Exit(0);
        });
    }
    form.show();
    kestrel::ReportLoadProblems(ctx);
    return app.exec();
}
