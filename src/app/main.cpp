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
#include <QDir>
#include <QIcon>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {
// How long the window waits for a command line that is writing to finish.
constexpr int kLockWaitMs = 5000;
} // namespace

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    QApplication::setOrganizationName(QString::fromLatin1(kestrel::kPublisher));
    QApplication::setApplicationName(QString::fromLatin1(kestrel::kProgramKey));
    QApplication::setApplicationVersion(QStringLiteral(KESTREL_VERSION));
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/kestrel-manager.svg")));
    kestrel::InstallTranslations(kestrel::LanguageChoice());

    QStringList args = app.arguments().mid(1);
    QString dataDir;
    const qsizetype dd = args.indexOf(QStringLiteral("--data-dir"));
    if (dd >= 0) {
        if (dd + 1 >= args.size()) {
            std::fprintf(stderr, "kestrel-manager: --data-dir needs a folder\n");
            return 1;
        }
        dataDir = args[dd + 1];
        args.remove(dd, 2);
    }
    if (!args.isEmpty()) {
        std::fprintf(stderr, "usage: kestrel-manager [--data-dir DIR]\n");
        return 1;
    }

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
