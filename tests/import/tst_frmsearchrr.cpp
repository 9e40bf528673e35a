// SPDX-License-Identifier: GPL-3.0-or-later
// The advanced search window and the feeds window against the local frequency-database service
// on a free loopback port: the five searches and their trees, empty results, the key filters,
// the request a call-sign search sends, ticking and importing results, and the feeds list. A
// result without a mode stopping the import is in the rr import command's tests.
#include "import/searchtree.h"
#include "importworld.h"
#include "testsupport.h"

#include <QGroupBox>

using namespace kestrel;
using namespace kestrel::test;

class TstFrmSearchRR : public QObject, ImportWorld {
    Q_OBJECT

    // The demo data; Sheriff Tac 1 has no tags.
    static RRDataSet data() {
        RRDataSet d = RRDataSet::demo();
        for (RRFreqEntry& f : d.freqs)
            if (f.freq.fid == 40002)
                f.freq.tags.clear();
        return d;
    }
    // Logged in with the zip code's county shown (its conventional tree built).
    void logIn(const RRDataSet& d = data(), int dbaseIndex = 0) {
        open(d, QStringLiteral("demo"), QStringLiteral("12345"), dbaseIndex);
        m_win->LogInBtn_Click();
        QVERIFY(m_win->loggedIn());
        toCounty(QStringLiteral("Ashford"));
    }
    FrmSearchRR* openSearch() {
        m_win->menuItem(QStringLiteral("SearchFreqsMenuItem"))->trigger();
        return m_win->searchWindow();
    }

private Q_SLOTS:
    void initTestCase() { qputenv("KESTREL_SECRET_STORE", "none"); }
    void cleanup() { closeWorld(); }

    // Each search from its frame, its tree against the reviewed text (search-trees.txt, a
    // "# row" line heading each); a search without results says so and leaves the tree empty.
    void searches_data() {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("input"); // typed into the frame's first box
        QTest::addColumn<int>("option");    // the scope or tag option; the tag's row
        QTest::addColumn<QStringList>("tree");
        QMap<QString, QStringList> trees;
        QString name;
        for (const QString& line :
             QString::fromUtf8(readFile(dataPath(QStringLiteral("search-trees.txt"))))
                 .split(u'\n', Qt::SkipEmptyParts)) {
            if (line.startsWith(u"# "))
                name = line.mid(2);
            else
                trees[name] << line;
        }
        const auto row = [&](const char* tag, int index, const char* input, int option) {
            QTest::newRow(tag) << index << input << option << trees.value(tag);
        };
        row("frequency in the county", 0, "154.815", 1);
        row("frequency without a mode", 0, "154.43", 1);
        row("frequency without tags", 0, "155.475", 0);
        row("frequency, none", 0, "999", 0);
        row("tag in the county", 1, "", 1);
        row("tag, none", 1, "", 8);
        row("call signs around the zip code", 2, "", 0);
        row("call sign typed in lower case", 3, "kdl123", 0);
        row("call sign, none", 3, "zz9", 0);
        row("system id", 4, "1a2b", 0);
        row("system id, none", 4, "ffff", 0);
    }
    void searches() {
        QFETCH(int, index);
        QFETCH(QString, input);
        QFETCH(int, option);
        QFETCH(QStringList, tree);
        logIn();
        FrmSearchRR* s = openSearch();
        QVERIFY(s);
        QVERIFY(m_win->menuItem(QStringLiteral("SearchFreqsMenuItem"))->isChecked());
        if (index == 0) {
            s->SrchFrqOpt(option)->click();
            QTest::keyClicks(s->FreqTxt(), input);
        } else if (index == 1) {
            s->CboTags()->setCurrentIndex(option);
            s->CboTags_Click();
        } else if (index == 3) {
            QTest::keyClicks(s->CallSignTxt(), input);
        } else if (index == 4) {
            QTest::keyClicks(s->SysIdTxt(), input);
        }
        s->StartSearchBtn(index)->click();
        QTRY_VERIFY(!m_win->searchWindow());
        QVERIFY(!m_win->menuItem(QStringLiteral("SearchFreqsMenuItem"))->isChecked());
        if (tree.isEmpty()) {
            QCOMPARE(messages(), QStringList{"No Results Found in Search!!!"});
            QCOMPARE(m_win->TV1()->topLevelItemCount(), 0);
            return;
        }
        QCOMPARE(messages(), QStringList{});
        QCOMPARE(treeLines(), tree);
    }

    void keyFilters_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("kept");
        for (const auto& [tag, box, typed, kept] :
             {std::array<const char*, 4>{"frequency", "FreqTxt", "15a4.8-1 5", "154.815"},
              {"tone", "ToneTxt", "PL 156.7", "156.7"},
              {"latitude", "LatTxt", "+44.5x", "+44.5"},
              {"longitude", "LonTxt", "-70,1", "-701"},
              {"call sign", "CallSignTxt", "kd-l 1.23", "KDL123"},
              {"system id", "SysIdTxt", "1a_2b", "1A2B"}})
            QTest::newRow(tag) << box << typed << kept;
    }
    void keyFilters() {
        QFETCH(QString, box);
        QFETCH(QString, typed);
        QFETCH(QString, kept);
        logIn();
        auto* edit = openSearch()->findChild<QLineEdit*>(box);
        QVERIFY(edit);
        edit->clear();
        QTest::keyClicks(edit, typed);
        QCOMPARE(edit->text(), kept);
    }

    // Range 3 in kilometres around 0, 0 when the boxes are empty, as the service received it;
    // a local address opens the call-sign frames too, a description without one closes its frame.
    void callSignRequest() {
        logIn();
        FrmSearchRR* s = openSearch();
        QVERIFY(s->Frame(2)->isEnabled() && s->StartSearchBtn(3)->isEnabled());
        QCOMPARE(s->LatTxt()->text(), QString("44.52"));
        s->LatTxt()->clear();
        s->LonTxt()->clear();
        s->DistOpt(2)->click();
        s->RangeOpt(2)->click();
        s->StartSearchBtn(2)->click();
        const QByteArray body = m_server->lastRequest();
        QVERIFY2(body.contains("fccGetProxCallsigns"), body.constData());
        for (const char* part : {">3</range>", ">k</unit>", ">0</lat>", ">0</lon>"})
            QVERIFY2(body.contains(part), part);

        m_win->close();
        logIn(data(), 1);
        m_ctx->component<RRClient>().Wsdl.Operations.removeIf(
            [](const WsdlOperation& o) { return o.name == u"fccGetCallsign"; });
        s = openSearch();
        QVERIFY(s->Frame(2)->isEnabled() && s->StartSearchBtn(2)->isEnabled());
        QVERIFY(!s->Frame(3)->isEnabled() && !s->StartSearchBtn(3)->isEnabled());
        QVERIFY(s->Frame(4)->isEnabled());
    }

    // Conventional ticks made before a search do not count: the ticked results are imported.
    void searchResultsWinOverConventionalTicks() {
        logIn();
        m_win->node("c1s1d1")->setCheckState(0, Qt::Checked);
        QCOMPARE(m_win->FreqSelCnt(), 1);
        FrmSearchRR* s = openSearch();
        s->SrchFrqOpt(1)->click();
        QTest::keyClicks(s->ToneTxt(), "107.2");
        s->StartSearchBtn(0)->click();
        QCOMPARE(m_win->treeTag(), QString("SearchFreqs"));
        QCOMPARE(m_win->node("c1")->childCount(), 2);
        QVERIFY(!m_win->ImportBtn(1)->isEnabled());
        m_win->node("c1")->setCheckState(0, Qt::Checked);
        QCOMPARE(m_win->SearchSelCnt(), 2);
        m_win->node("c1s1")->setCheckState(0, Qt::Unchecked);
        QCOMPARE(m_win->FrqChanLbl()->text(), QString("1"));
        QCOMPARE(m_win->node("c1")->checkState(0), Qt::Checked);
        m_prompts.queueAnswer(Answer::Yes);
        m_win->ImportBtn(1)->click();
        const BankRec& bank = m_ctx->cur().Banks[2];
        QCOMPARE(bank.ImportName, QString("SearchFreqs"));
        QCOMPARE(bank.ImportCount, 1);
        QCOMPARE(bank.Chans[1].Desc, QString("ASO Court-Sheriff Court Security"));
        QCOMPARE(bank.Chans[1].Freq, 453400000.0);
        QVERIFY(m_win->verifyWindow());
    }

    void feeds_data() {
        QTest::addColumn<int>("count");
        QTest::newRow("none") << 0;
        QTest::newRow("two, in service order") << 2;
    }
    void feeds() {
        QFETCH(int, count);
        RRDataSet d = data();
        std::swap(d.feeds[0], d.feeds[1]); // not in id order
        d.feeds = d.feeds.mid(0, count);
        logIn(d);
        QAction* item = m_win->menuItem(QStringLiteral("ShowAudioFeedsMenuItem"));
        QCOMPARE(item->isEnabled(), count > 0);
        if (count == 0)
            return;
        item->trigger();
        FrmFeeds* f = m_win->feedsWindow();
        QVERIFY(f && item->isChecked());
        QTreeWidget* lv = f->Lv1();
        QCOMPARE(lv->topLevelItemCount(), count);
        for (int i = 0; i < count; ++i) {
            const TypFeed& feed = d.feeds[i].feed;
            QTreeWidgetItem* row = lv->topLevelItem(i);
            QCOMPARE((QStringList{row->text(0), row->text(1), row->text(2), row->text(3),
                                  row->text(4), row->text(5)}),
                     (QStringList{QString::number(feed.feedId), feed.descr, feed.hostname,
                                  feed.port, feed.mount, feed.password}));
        }
        f->move(40, 50);
        f->close();
        QVERIFY(!item->isChecked());
        item->trigger();
        QTRY_VERIFY(m_win->feedsWindow());
        QCOMPARE(m_win->feedsWindow()->pos(), QPoint(40, 50));
    }
};

QTEST_MAIN(TstFrmSearchRR)
#include "tst_frmsearchrr.moc"
