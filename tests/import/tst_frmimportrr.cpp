// SPDX-License-Identifier: GPL-3.0-or-later
// The web import window against the local frequency-database service on a free loopback port:
// login and the zip-code shortcut, the list-type choice of a county, ticking and importing into
// the shown bank, the one-site rule, talk-group texts, band plans, closing, refused logins and a
// service that goes away.
#include "importworld.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QCheckBox>
#include <QClipboard>
#include <QGroupBox>
#include <QGuiApplication>
#include <QSignalSpy>

using namespace kestrel;
using namespace kestrel::test;

class TstFrmImportRR : public QObject, ImportWorld {
    Q_OBJECT

    // The demo data, its country renamed for the zip-code shortcut, and three more counties of
    // North Province: one with an agency only, one on the trunked system only, one with nothing.
    static RRDataSet data() {
        RRDataSet d = RRDataSet::demo();
        d.countries[0].countryName = QStringLiteral("United States");
        for (int i = 0; i < 3; ++i) {
            TypCountyInfo c;
            c.ctid = 1004 + i;
            c.stid = 101;
            c.countyName = QStringList{"Agencyonly", "Trunkonly", "Empty"}[i];
            d.counties.append(c);
        }
        RRAgencyEntry a = d.agencies[1];
        a.info.aid = 599;
        a.info.ctid = 1004;
        d.agencies.append(a);
        d.systems[0].details.sCounty.append(1005);
        return d;
    }

    void open(const QString& password = QStringLiteral("demo"), const QString& zip = {}) {
        ImportWorld::open(data(), password, zip);
    }
    void logIn(const QString& zip = {}) {
        open(QStringLiteral("demo"), zip);
        m_win->LogInBtn_Click();
        QVERIFY(m_win->loggedIn());
    }
    void toSystem(RRDataSet d = data()) {
        ImportWorld::open(d);
        m_win->LogInBtn_Click();
        toCounty(QStringLiteral("Trunkonly"));
        QVERIFY(m_win->setListText(m_win->CboSystem(), QStringLiteral("Demoland Regional Radio")));
        QCOMPARE(m_win->treeTag(), QString("CountyTrs"));
    }

private Q_SLOTS:
    void initTestCase() { qputenv("KESTREL_SECRET_STORE", "none"); }
    void cleanup() { closeWorld(); }

    void zipLoginBuildsFirstTree() {
        logIn(QStringLiteral("12345"));
        QCOMPARE(m_win->CboCountry()->currentText(), QString("United States"));
        m_win->ZipCodeTxt()->clear();
        QTest::keyClicks(m_win->ZipCodeTxt(), "12a3.-4"); // letters and signs are dropped
        QCOMPARE(m_win->ZipCodeTxt()->text(), QString("123.4"));
        QCOMPARE(m_win->CboState()->currentText(), QString("North Province"));
        QCOMPARE(m_win->CboCounty()->currentText(), QString("Ashford"));
        QCOMPARE(m_win->CityLbl()->text(), QString("Ashford"));
        QCOMPARE(m_win->FipsLbl()->text(), QString("99001"));
        QVERIFY(m_win->TypeOpt(1)->isChecked());
        QCOMPARE(m_win->treeTag(), QString("StateConv"));
        QCOMPARE(m_win->node("c1s1")->childCount(), 10);
        QCOMPARE(m_win->node("c1s1d1")->text(0),
                 QString(" 154.815000  FMN   Class: BM    CT: 156.7 PL  FCC:KDL123   Sheriff "
                         "Dispatch"));
        QCOMPARE(m_win->ExpiryLbl()->text(), QString("12-31-2030"));
        QVERIFY(!m_win->LogInBtn()->isEnabled());
    }

    void countyChoosesListType_data() {
        QTest::addColumn<QString>("county");
        QTest::addColumn<int>("option"); // -1: none
        QTest::addColumn<QString>("firstRow");
        QTest::addColumn<QString>("caption"); // of the list below the county
        QTest::newRow("agencies only") << "Agencyonly" << 2 << ">>> Select <<<"
                                       << "Agency:";
        QTest::newRow("trunked only") << "Trunkonly" << 0 << ">>> Select <<<"
                                      << "System:";
        QTest::newRow("nothing") << "Empty" << -1 << ">>>  Select  <<<"
                                 << "System:";
    }
    void countyChoosesListType() {
        QFETCH(QString, county);
        QFETCH(int, option);
        QFETCH(QString, firstRow);
        QFETCH(QString, caption);
        logIn();
        toCounty(county);
        QCOMPARE(m_win->findChild<QLabel*>("LblSystem")->text(), caption);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(m_win->TypeOpt(i)->isChecked(), i == option);
            QCOMPARE(m_win->TypeOpt(i)->isEnabled(), i == option);
        }
        QCOMPARE(m_win->CboSystem()->itemText(0), firstRow);
        QCOMPARE(m_win->TrunkFrame()->isVisibleTo(m_win.get()), option == 0);
        QCOMPARE(m_win->TV1()->topLevelItemCount(), 0);
    }

    // Three ticked frequencies into a full bank; Cancel changes nothing, No writes as Yes does.
    void importIntoFullBank_data() {
        QTest::addColumn<int>("answer");
        QTest::newRow("yes") << int(Answer::Yes);
        QTest::newRow("no") << int(Answer::No);
        QTest::newRow("cancel") << int(Answer::Cancel);
    }
    void importIntoFullBank() {
        QFETCH(int, answer);
        logIn(QStringLiteral("12345"));
        BankRec& bank = m_ctx->cur().Banks[2];
        for (int i = 1; i <= 20; ++i)
            bank.Chans[size_t(i)] = {160e6 + i * 1e4, QStringLiteral("Old %1").arg(i)};
        tick("c1s1d1");
        tick("c1s1d3");
        tick("c1s2d1");
        tick("c1s1d3", false);
        tick("c1s1d2");
        QCOMPARE(m_win->FreqSelCnt(), 3);
        QCOMPARE(m_win->FrqChanLbl()->text(), QString("3"));
        QVERIFY(m_win->ImportBtn(1)->isEnabled());
        m_prompts.queueAnswer(Answer(answer));
        m_win->ImportBtn(1)->click();
        if (Answer(answer) == Answer::Cancel) {
            QCOMPARE(bank.Chans[1].Desc, QString("Old 1"));
            QVERIFY(!m_win->verifyWindow());
            return;
        }
        QCOMPARE(bank.ImportCount, 3);
        QCOMPARE(bank.ImportName, QString("Ashford-Conventional"));
        QCOMPARE(bank.Chans[1].Desc, QString("Ashford County Services-Sheriff-Sheriff Dispatch"));
        QCOMPARE(bank.Chans[2].Desc, QString("Ashford County Services-Sheriff-Sheriff Tac 1"));
        QVERIFY(bank.Chans[3].Desc.startsWith("Ashford County Services-Fire / EMS-"));
        for (int i = 4; i <= 20; ++i)
            QCOMPARE(bank.Chans[size_t(i)].Desc, QStringLiteral("Old %1").arg(i));
        QVERIFY(m_win->verifyWindow());
        QCOMPARE(m_win->verifyWindow()->ChanLV()->topLevelItemCount(), 3);
    }

    // The verify window shows the mode and tone each imported frequency was given.
    void verifyShowsModeAndTone() {
        logIn(QStringLiteral("12345"));
        for (const char* key : {"c1s1d1", "c1s1d4", "c1s1d7"})
            tick(key);
        m_prompts.queueAnswer(Answer::Yes);
        m_win->ImportBtn(1)->click();
        QVERIFY(m_win->verifyWindow());
        QTreeWidget* lv = m_win->verifyWindow()->ChanLV();
        QStringList got;
        for (int i = 0; i < lv->topLevelItemCount(); ++i)
            got << lv->topLevelItem(i)->text(2) + u' ' + lv->topLevelItem(i)->text(3);
        QCOMPARE(got, (QStringList{"FM 156.7 PL", "FM CSQ", "FM DPL 023"}));
    }

    void oneSiteAtATime() {
        toSystem();
        tick("c1s1"); // the site and its four frequencies
        QCOMPARE(m_win->SiteChanSelCnt(), 4);
        tick("c1s1d1", false);
        tick("c1s1d4", false);
        QCOMPARE(m_win->SiteChnLbl()->text(), QString("2"));
        for (const char* refused : {"c1s2d1", "c1s2", "c1"}) {
            m_prompts.clear();
            tick(refused);
            QCOMPARE(messages(), QStringList{"You can only Import One Site at a time"});
            QTRY_COMPARE(m_win->node(refused)->checkState(0), Qt::Unchecked);
            QCOMPARE(m_win->SiteChanSelCnt(), 2);
        }
        tick("c2"); // every talk group
        QCOMPARE(m_win->GroupSelCnt(), m_win->node("c2")->text(0).section(' ', 1).toInt());
        QVERIFY(m_win->CompareBtn()->isEnabled());
        m_win->CompareBtn()->click();
        QCOMPARE(m_ctx->component<GroupIdList>().GroupIdCnt(), m_win->GroupSelCnt());
        m_prompts.queueAnswer(Answer::Yes);
        m_win->ImportBtn(0)->click();
        const BankRec& bank = m_ctx->cur().Banks[2];
        QCOMPARE(bank.ImportCount, 2);
        QCOMPARE(bank.ImportName, QString("Demoland Regional Radio"));
        QCOMPARE(bank.Chans[1].Desc, QString("LCN-2"));
        tick("c1s1", false); // the chosen site, then another site is free
        tick("c1s2");
        QCOMPARE(m_win->SiteChanSelCnt(), 3);
    }

    // Compare shows the ticked talk groups; Copy gives the selected rows (or all) as tab-separated
    // lines, Save as CSV writes them through the file dialog.
    void compareList() {
        toSystem();
        tick("c2s1");
        m_win->CompareBtn()->click();
        FrmTalkgroupList* w = m_win->compareWindow();
        QVERIFY(w && w->isVisible());
        const QString header = "Decimal ID\tDescription\tAlpha Tag\tTag\tMode\n";
        w->copyButton()->click();
        const QString all = QGuiApplication::clipboard()->text();
        QVERIFY2(all.startsWith(header), qPrintable(all));
        QCOMPARE(all.count(u'\n'), m_win->GroupSelCnt() + 1);
        w->list()->topLevelItem(1)->setSelected(true);
        w->copyButton()->click();
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 header + "1648\tAshford County-Sheriff Tac\tASO Tac\tLaw Tac\tD\n");
        const QString path = m_dir.filePath("tg.csv");
        m_prompts.queueFile(path);
        w->saveButton()->click();
        QCOMPARE(QString::fromUtf8(readFile(path)), QString(all).replace(u'\t', u','));
        m_win->close();
        QTRY_VERIFY(!m_win->compareWindow());
    }

    void talkgroupTexts() {
        RRDataSet d = data();
        d.systems[0].details.sFlavor = 1; // "Type I": ids are subfleets
        d.systems[0].talkgroups[5].tgAlpha.clear();
        toSystem(d);
        QCOMPARE(treeLines().filter(QStringLiteral("Highway")).value(0).section(u' ', 1),
                 QString("ID: 100-14  [ -Notknown- ]  Highway Crews (Type I)"));
        QCOMPARE(m_win->TrsLabel("Flavor")->text(), QString("Type I"));
    }

    void bandPlan() {
        toSystem();
        QCOMPARE(m_win->Lv1()->topLevelItemCount(), 1);
        QCOMPARE(m_win->Lv1()->topLevelItem(0)->text(1), QString("380"));
        RRDataSet d = data();
        d.systems[0].sites[1].bandplan = {{"852.0000", "12.5", "45"}};
        toSystem(d);
        const auto row = [&] {
            QTreeWidgetItem* r = m_win->Lv1()->topLevelItem(0);
            return QStringList{r->text(0), r->text(1), r->text(2)};
        };
        QCOMPARE(row(), (QStringList{"Click", "Site#", "To Fill"}));
        Q_EMIT m_win->TV1()->itemClicked(m_win->node("c1s2"), 0);
        QCOMPARE(row(), (QStringList{"852.0000", "45", "12.5"}));
        Q_EMIT m_win->TV1()->itemClicked(m_win->node("c1s1"), 0);
        QCOMPARE(row(), (QStringList{"851.0125", "380", "25"}));
    }

    void closeForgetsLogin() {
        logIn(QStringLiteral("12345"));
        m_win->RemberMeChk()->setChecked(false);
        m_win->close();
        QCOMPARE(m_ctx->registry.WebName, QString());
        QCOMPARE(m_ctx->registry.WebWord, QString());
        QCOMPARE(m_ctx->registry.ZipCode, QString("12345"));
    }

    // The public service and a local address log in alike; a refused password is one plain
    // sentence, the window stays logged out and asks for no code table.
    void logInAnyAddress_data() {
        QTest::addColumn<int>("dbaseIndex");
        QTest::addColumn<QString>("password");
        QTest::newRow("service, refused") << 0 << "wrong";
        QTest::newRow("local, refused") << 1 << "wrong";
        QTest::newRow("local, accepted") << 1 << "demo";
    }
    void logInAnyAddress() {
        QFETCH(int, dbaseIndex);
        QFETCH(QString, password);
        ImportWorld::open(data(), password, {}, dbaseIndex);
        QSignalSpy posted(m_server.get(), &RRLocalServer::requestPosted);
        m_win->LogInBtn_Click();
        const bool accepted = password == "demo";
        QCOMPARE(m_win->loggedIn(), accepted);
        QCOMPARE(m_win->LogInBtn()->isEnabled(), !accepted);
        QCOMPARE(m_win->ExpiryLbl()->text(), accepted ? QString("12-31-2030") : QString());
        QCOMPARE(m_win->CboCountry()->count() > 0, accepted);
        QCOMPARE(posted.size() > 1, accepted);
        QCOMPARE(messages(), accepted ? QStringList{}
                                      : QStringList{"The web service at " + m_server->baseUrl() +
                                                    " refused the user name or password; check "
                                                    "both and log in again."});
        QVERIFY(!QFile::exists(m_ctx->errors.logPath()));
    }

    // An unknown zip code, at login or typed: one sentence, the box emptied.
    void unknownZipCode() {
        logIn(QStringLiteral("99999"));
        m_win->ZipCodeTxt()->setText(QStringLiteral("88888"));
        QTest::keyClick(m_win->ZipCodeTxt(), Qt::Key_Return);
        QCOMPARE(messages(), (QStringList{"The web service knows no zip code 99999; check it.",
                                          "The web service knows no zip code 88888; check it."}));
        QVERIFY(m_win->ZipCodeTxt()->text().isEmpty());
    }

    // The service stops after one county was shown: choosing another tells it once and shows
    // nothing of the county before.
    void serviceGoesAway() {
        logIn();
        toCounty(QStringLiteral("Ashford"));
        QVERIFY(m_win->TV1()->topLevelItemCount() > 0);
        QVERIFY(m_win->FipsLbl()->text() != "000000");
        const QString address = m_server->baseUrl();
        m_server.reset();
        m_prompts.clear();
        QVERIFY(m_win->setListText(m_win->CboCounty(), QStringLiteral("Agencyonly")));
        QCOMPARE(messages().size(), 1);
        QVERIFY2(messages()[0].startsWith("The web service at " + address + " cannot be reached"),
                 qPrintable(messages()[0]));
        QCOMPARE(m_win->TV1()->topLevelItemCount(), 0);
        QCOMPARE(m_win->FipsLbl()->text(), QString("000000"));
        for (int i = 0; i < 3; ++i)
            QVERIFY(!m_win->TypeOpt(i)->isChecked());
    }

    // A service that fails every frequency query: one report, the subcategories stay empty.
    void frequencyQueriesFail() {
        logIn();
        m_server->setReplyHook([](const QByteArray& body) -> std::optional<RRLocalServer::Reply> {
            if (!body.contains("getSubcatFreqs"))
                return std::nullopt;
            return RRLocalServer::Reply{500, "text/plain", "broken", false};
        });
        const int before = m_ctx->errors.reportCount();
        toCounty(QStringLiteral("Ashford"));
        QCOMPARE(m_ctx->errors.reportCount(), before + 1);
        QCOMPARE(m_win->treeTag(), QString("StateConv"));
        QCOMPARE(m_win->node("c1")->childCount(), 3);
        for (const char* sub : {"c1s1", "c1s2", "c1s3"})
            QCOMPARE(m_win->node(sub)->childCount(), 0);
    }

    // "&Web Import" opens the window once, checked while it is open; closing marks profile 0.
    void mainWindowItem() {
        open();
        m_win.reset();
        MainForm form(*m_ctx);
        QAction* item = form.menuItem("WebImportMenuItem");
        QVERIFY(item->isEnabled());
        item->trigger();
        item->trigger();
        const auto windows = form.findChildren<FrmImportRR*>();
        QCOMPARE(windows.size(), 1);
        QVERIFY(item->isChecked() && windows[0]->isVisible());
        m_ctx->Profiles[0].Changed = false;
        windows[0]->close();
        QVERIFY(!item->isChecked());
        QVERIFY(m_ctx->Profiles[0].Changed);
    }

    void xmlFileCommands() {
        open();
        RRClient& client = m_ctx->component<RRClient>();
        QAction* view = m_win->menuItem("ViewMenuItem");
        client.LastEnvelope = "<a><b></a>";
        view->trigger();
        QCOMPARE(m_prompts.messages().last().title, QString("XML Parse Error"));
        QVERIFY(m_prompts.messages().last().text.startsWith(
            "Error occurred when parsing the XML file\n\nError Code: "));
        QVERIFY(!view->isChecked() && !m_win->xmlViewer());
        client.LastEnvelope = "<a>\n<b/>\n</a>";
        const QString path = m_dir.filePath("out.xml");
        m_prompts.queueFile(path);
        m_win->SaveXmlMenuItem_Click();
        QFile f(path);
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), QByteArray("<a>\r\n<b/>\r\n</a>"));
        m_prompts.queueFile(path);
        m_win->LoadXmlMenuItem_Click();
        QCOMPARE(client.LastEnvelope, QString("<a><b/></a>"));
        view->trigger();
        QVERIFY(m_win->xmlViewer() && m_win->xmlViewer()->isVisible());
    }
};

QTEST_MAIN(TstFrmImportRR)
#include "tst_frmimportrr.moc"
