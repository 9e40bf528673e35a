// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the main window's three panels, with the factory profile, and the database location,
// XML tree, verify, import, Compare and failure-message windows to PNG files for review. Used by
// tools/screenshots; works on a throw-away data folder.
#include "core/files.h"
#include "core/profiles.h"
#include "import/frmimportrr.h"
#include "import/frmverifyrrchan.h"
#include "import/searchtree.h"
#include "link/frmcomset.h"
#include "link/kestrelcomm.h"
#include "link/scannersim.h"
#include "mainwin/mainform.h"
#include "webservice/rrclient.h"
#include "webservice/server/rrlocalserver.h"
#include "webservice/ui/frmdbaseloc.h"
#include "webservice/ui/frmviewxml.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEventLoop>
#include <QLineEdit>
#include <QMessageBox>
#include <QRadioButton>
#include <QTabBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <cstdio>

namespace {

using Shoot = std::function<bool(QWidget&, const QString&)>;

// The Compare list of the demo system's first talk-group category, and the one message a refused
// login gives, in the box the desktop shows it in.
bool shootCompareAndFailure(kestrel::AppContext& ctx, kestrel::ScriptedPrompts& prompts,
                            QWidget* parent, const Shoot& shoot) {
    kestrel::RRLocalServer server;
    if (server.listen() == 0)
        return false;
    ctx.registry = {QStringLiteral("demo"), QStringLiteral("demo"), {}};
    ctx.component<kestrel::RRClient>().setBaseUrlOverride(server.baseUrl());
    bool ok = false;
    {
        kestrel::FrmImportRR window(ctx, parent);
        window.LogInBtn_Click();
        window.setListText(window.CboCountry(), QStringLiteral("Demoland"));
        window.setListText(window.CboState(), QStringLiteral("North Province"));
        window.setListText(window.CboCounty(), QStringLiteral("Ashford"));
        window.TypeOpt(0)->setChecked(true);
        window.TypeOpt_Click(0);
        window.setListText(window.CboSystem(), QStringLiteral("Demoland Regional Radio"));
        if (QTreeWidgetItem* category = window.node(QStringLiteral("c2s1")))
            category->setCheckState(0, Qt::Checked);
        window.CompareBtn_Click();
        if (kestrel::FrmTalkgroupList* list = window.compareWindow())
            ok = shoot(*list, QStringLiteral("compare-list"));
    }
    kestrel::FrmImportRR window(ctx, parent);
    window.UPassTxt()->setText(QStringLiteral("wrong"));
    prompts.clear();
    window.LogInBtn_Click();
    if (prompts.messages().size() != 1)
        return false;
    const kestrel::ScriptedPrompts::Message& m = prompts.messages().first();
    QMessageBox box(QMessageBox::Warning, m.title, m.text, QMessageBox::Ok, parent);
    return shoot(box, QStringLiteral("failure-message")) && ok;
}

} // namespace

int main(int argc, char** argv) {
    // A throw-away login: never into the desktop's secret store.
    qputenv("KESTREL_SECRET_STORE", "none");
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
    // A scanner on a pseudo-terminal, so that an upload runs and the port window has a device.
    kestrel::ScannerSimulator::Options simOptions;
    simOptions.cable = 3;
    simOptions.wireScale = 0;
    kestrel::ScannerSimulator sim(simOptions);
    const bool simulated = sim.start();
    if (simulated) {
        ctx.settings.CommPort = 1;
        ctx.settings.KestrelCable = 3;
        ctx.settings.PortOverrides.insert(1, sim.devicePath());
    }
    kestrel::MainForm form(ctx);
    auto* link = form.findChild<kestrel::KestrelComm*>();
    link->setTimeScale(0.01);
    {
        QEventLoop setUp;
        QObject::connect(&form, &kestrel::MainForm::linkSetUpDone, &setUp, &QEventLoop::quit);
        form.show();
        setUp.exec();
    }
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
    form.menuItem(kestrel::MenuId::ShowScanBanks)->trigger();

    if (simulated) {
        // The status bar's progress a fifth of the way through an upload of every bank.
        const auto at =
            QObject::connect(link, &kestrel::KestrelComm::uploadProgress, &form, [&](int n) {
                if (n != 40)
                    return;
                QApplication::processEvents();
                const QString path =
                    outDir + QStringLiteral("/upload-progress") + suffix + QStringLiteral(".png");
                ok = form.grab().save(path) && ok;
                std::printf("%s\n", qPrintable(path));
                link->cancelUpload();
            });
        form.menuItem(kestrel::MenuId::UploadAllBanks)->trigger();
        QObject::disconnect(at);
    }

    const auto shootWindow = [&](QWidget& w, const QString& name) {
        w.show();
        QApplication::processEvents();
        const QString path = outDir + QLatin1Char('/') + name + suffix + QStringLiteral(".png");
        const bool saved = w.grab().save(path);
        std::printf("%s\n", qPrintable(path));
        w.close();
        return saved;
    };
    {
        kestrel::FrmComSet window(ctx, *link, &form);
        ok = shootWindow(window, QStringLiteral("com-port")) && ok;
    }
    {
        kestrel::FrmDBaseLoc window(ctx, &form);
        ok = shootWindow(window, QStringLiteral("database-location")) && ok;
    }
    {
        kestrel::FrmViewXml window(ctx);
        window.FillXML(QStringLiteral(
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?><SOAP-ENV:Envelope "
            "xmlns:SOAP-ENV=\"http://schemas.xmlsoap.org/soap/envelope/\"><SOAP-ENV:Body>"
            "<getCountyInfoResponse><return><ctid>1</ctid><countyName>Dane</countyName>"
            "<!-- county record --></return></getCountyInfoResponse></SOAP-ENV:Body>"
            "</SOAP-ENV:Envelope>"));
        window.TV1()->expandAll();
        ok = shootWindow(window, QStringLiteral("xml-tree")) && ok;
    }
    {
        kestrel::BankRec& bank = ctx.cur().Banks[1];
        const char* const descs[] = {"Fire-County Fire-Dispatch", "Fire-County Fire-Tac 2",
                                     "Law-Sheriff-Dispatch- North",
                                     "Law-Sheriff-Car to Car and Mobile Data Terminals (shared "
                                     "with the neighbouring county)"};
        bank.ImportCount = 4;
        for (int i = 1; i <= 4; ++i) {
            bank.Chans[size_t(i)].Freq = 154.1e6 + i * 15000;
            bank.Chans[size_t(i)].Desc = QString::fromLatin1(descs[i - 1]);
        }
        kestrel::FrmVerifyRRChan window(ctx, &form);
        ok = shootWindow(window, QStringLiteral("verify-channels")) && ok;
    }
    {
        // The import window against the local service with its demo data, in each tree kind.
        kestrel::RRLocalServer server;
        if (server.listen() == 0)
            return 2;
        ctx.registry = {QStringLiteral("demo"), QStringLiteral("demo"), QStringLiteral("12345")};
        ctx.component<kestrel::RRClient>().setBaseUrlOverride(server.baseUrl());
        kestrel::FrmImportRR window(ctx, &form);
        window.show();
        ok = shootWindow(window, QStringLiteral("import-empty")) && ok;
        window.show();
        window.LogInBtn_Click();
        // The demo country is not the United States, so the zip code does not walk the lists.
        window.setListText(window.CboCountry(), QStringLiteral("Demoland"));
        window.setListText(window.CboState(), QStringLiteral("North Province"));
        window.setListText(window.CboCounty(), QStringLiteral("Ashford"));
        window.TV1()->expandAll();
        ok = shootWindow(window, QStringLiteral("import-conventional")) && ok;
        window.show();
        window.TypeOpt(2)->setChecked(true);
        window.TypeOpt_Click(2);
        window.setListText(window.CboSystem(), QStringLiteral("Ashford Fire District"));
        window.TV1()->expandAll();
        ok = shootWindow(window, QStringLiteral("import-agency")) && ok;
        window.show();
        window.TypeOpt(0)->setChecked(true);
        window.TypeOpt_Click(0);
        window.setListText(window.CboSystem(), QStringLiteral("Demoland Regional Radio"));
        window.TV1()->expandAll();
        ok = shootWindow(window, QStringLiteral("import-trunked")) && ok;

        // The advanced search window, each search's result tree and the feeds list.
        window.show();
        window.menuItem(QStringLiteral("SearchFreqsMenuItem"))->trigger();
        if (kestrel::FrmSearchRR* search = window.searchWindow())
            ok = shootWindow(*search, QStringLiteral("search-options")) && ok;
        auto& settings = ctx.component<kestrel::SearchSettings>();
        settings.SearchScope = 1;
        settings.AreaName = QStringLiteral("Ashford");
        settings.tagId = 1;
        settings.SearchRange = 3;
        const std::pair<QString, std::function<void()>> searches[] = {
            {QStringLiteral("search-freqs"), [&] { window.StartFreqSearch({}, {}); }},
            {QStringLiteral("search-tags"), [&] { window.StartFreqsByTag(); }},
            {QStringLiteral("search-callsigns"),
             [&] {
                 window.StartFreqsByCallSign(QStringLiteral("44.52"), QStringLiteral("-70.11"));
             }},
            {QStringLiteral("search-callsign-details"),
             [&] { window.GetCallSignDetails(QStringLiteral("KDL123")); }},
            {QStringLiteral("search-sysid"),
             [&] { window.GetSysIdDetails(QStringLiteral("1A2B")); }},
        };
        for (const auto& [name, run] : searches) {
            window.show();
            run();
            window.TV1()->expandAll();
            ok = shootWindow(window, name) && ok;
        }
        window.show();
        window.menuItem(QStringLiteral("ShowAudioFeedsMenuItem"))->trigger();
        if (kestrel::FrmFeeds* feeds = window.feedsWindow())
            ok = shootWindow(*feeds, QStringLiteral("audio-feeds")) && ok;
    }
    ok = shootCompareAndFailure(ctx, prompts, &form, shootWindow) && ok;
    return ok ? 0 : 2;
}
