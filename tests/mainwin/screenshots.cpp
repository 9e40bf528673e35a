// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the main window's three panels, with the factory profile, to PNG files for review.
// Used by tools/screenshots; works on a throw-away data folder.
#include "core/files.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QTabBar>
#include <QTemporaryDir>
#include <cstdio>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: kestrel-screenshots OUTDIR [SUFFIX]\n");
        return 1;
    }
    const QString outDir = QString::fromLocal8Bit(argv[1]);
    const QString suffix = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    QDir().mkpath(outDir);
    QTemporaryDir data;
    if (!data.isValid())
        return 2;

    kestrel::ScriptedPrompts prompts;
    kestrel::AppContext ctx(data.path(), &prompts);
    kestrel::MakeBanksDir(ctx);
    kestrel::Load_Profiles(ctx);
    kestrel::MainForm form(ctx);
    form.show();
    form.resize(920, 680); // the size it opens with on a desktop screen

    const auto shoot = [&](const char* item, const QString& name) {
        form.menuItem(QString::fromLatin1(item))->trigger();
        QApplication::processEvents();
        const QString path = outDir + QLatin1Char('/') + name + suffix + QStringLiteral(".png");
        if (!form.grab().save(path)) {
            std::fprintf(stderr, "kestrel-screenshots: cannot write %s\n", qPrintable(path));
            return false;
        }
        std::printf("%s\n", qPrintable(path));
        return true;
    };
    bool ok = shoot("ShowScanBanksMenu", QStringLiteral("scan-banks"));
    form.BankTab()->setCurrentIndex(kestrel::SearchTab - 1);
    ok = shoot("ShowScanBanksMenu", QStringLiteral("search-limits")) && ok;
    form.BankTab()->setCurrentIndex(0);
    ok = shoot("ShowAllChanMenuItem", QStringLiteral("all-channels")) && ok;
    ok = shoot("ShowServiceMenuItem", QStringLiteral("service-freqs")) && ok;
    return ok ? 0 : 2;
}
