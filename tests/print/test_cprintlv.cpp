// SPDX-License-Identifier: GPL-3.0-or-later
// The list printer: pagination and the rows drawn on each page, the tables made from the records
// and from a list on screen, and kestrelctl print.
#include "printtest.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/profiles.h"
#include "print/printpage.h"
#include "print/viewtable.h"

#include <QHeaderView>
#include <QPainter>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

const QDateTime kWhen(QDate(2026, 11, 22), QTime(9, 5, 7));

// Draws `page` on a white sheet and counts the grey table lines met going down just inside the
// table's left border: the caption row has one above and below, each row adds one below it.
int tableLinesDrawn(cPrintLV& list, int page) {
    const QSize twips = PageSizeTwips();
    QImage img(twips.width() / 15, twips.height() / 15, QImage::Format_RGB32);
    img.setDotsPerMeterX(3780);
    img.setDotsPerMeterY(3780);
    img.fill(Qt::white);
    QPainter painter(&img);
    DrawPage(painter, list, qint16(page), u"Title"_s, kWhen);
    painter.end();
    int runs = 0;
    bool inLine = false;
    for (int y = 0; y < img.height(); ++y) {
        const bool line = img.pixelColor(cPrintLV::kLeftTwips / 15 + 1, y) == QColor(128, 128, 128);
        runs += line && !inLine;
        inLine = line;
    }
    return runs;
}

} // namespace

class TestCPrintLV : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // The paper follows the user's country.
    void localePaper_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("paper");
        QTest::newRow("US") << u"en_US"_s << int(QPageSize::Letter);
        QTest::newRow("Canada") << u"fr_CA"_s << int(QPageSize::Letter);
        QTest::newRow("Britain") << u"en_GB"_s << int(QPageSize::A4);
        QTest::newRow("C") << u"C"_s << int(QPageSize::A4);
    }
    void localePaper() {
        QFETCH(QString, locale);
        QFETCH(int, paper);
        QCOMPARE(int(LocalePaper(QLocale(locale)).id()), paper);
    }

    void pagination_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QList<int>>("pageSizes");
        QTest::newRow("empty list") << 0 << 50 << QList<int>{0};
        QTest::newRow("exact multiple") << 100 << 50 << QList<int>{50, 50};
        QTest::newRow("one over") << 101 << 50 << QList<int>{50, 50, 1};
        QTest::newRow("default rows") << 200 << int(kDefaultMaxRows) << QList<int>{58, 58, 58, 26};
    }

    void pagination() {
        QFETCH(int, count);
        QFETCH(int, rows);
        QFETCH(QList<int>, pageSizes);
        ErrorReporter errors;
        cPrintLV list(errors);
        list.ListViewName(test::numberedTable(count));
        list.Set_Pages(count, qint16(rows));
        QCOMPARE(int(list.pageCount()), pageSizes.size());
        int first = 1;
        for (int p = 1; p <= pageSizes.size(); ++p) {
            list.Set_Page(qint16(p));
            QCOMPARE(list.firstItem(), first);
            QCOMPARE(list.lastItem() - list.firstItem() + 1, pageSizes[p - 1]);
            QCOMPARE(list.nextItem(), list.lastItem() + 1);
            QCOMPARE(tableLinesDrawn(list, p), pageSizes[p - 1] + 2);
            first += pageSizes[p - 1];
        }
        QCOMPARE(first - 1, count);
        QCOMPARE(errors.reportCount(), 0);
    }

    void tablesFromRecords() {
        QTemporaryDir dir;
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        ProfileRec& prof = ctx.Profiles[0];
        prof.Banks[3].Chans[5] = ChannelRec{146'520'000, u"Calling, simplex"_s, true, true, false};
        prof.Searches[7] = SearchRec{144'000'000, 148'000'000, u"Two metres"_s};
        auto texts = [](const PrintRow& row) {
            QStringList out;
            for (const PrintCell& cell : row)
                out << cell.text;
            return out.join(QLatin1Char('|'));
        };
        const QString channel = u"045|146.520000|Calling, simplex|True|False|True"_s;
        QCOMPARE(texts(BankTable(prof, 3).rows[4]), channel);
        QCOMPARE(texts(AllChannelsTable(prof).rows[44]), channel);
        QCOMPARE(texts(SearchTable(prof).rows[6]), u"07|144.000000|148.000000|Two metres"_s);
    }

    // What a list on screen hands to the printer: the visible columns in the order shown, their
    // widths and alignment, and each cell's text, colour and boldness.
    void tableFromView() {
        QStandardItemModel model(2, 4);
        model.setHorizontalHeaderLabels({u"Range"_s, u"Lower"_s, u"Upper"_s, u"Hidden"_s});
        model.setHeaderData(2, Qt::Horizontal, int(Qt::AlignHCenter), Qt::TextAlignmentRole);
        for (int r = 0; r < 2; ++r)
            for (int c = 0; c < 4; ++c)
                model.setItem(r, c, new QStandardItem(u"%1/%2"_s.arg(r).arg(c)));
        model.item(0, 1)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        model.item(1, 0)->setForeground(QColor(200, 0, 0));
        QFont bold = model.item(1, 0)->font();
        bold.setBold(true);
        model.item(1, 0)->setFont(bold);
        QTableView view;
        view.setModel(&model);
        view.setColumnHidden(3, true);
        view.horizontalHeader()->moveSection(2, 0); // the user dragged "Upper" to the front
        view.setColumnWidth(2, 77);
        const PrintTable t = TableFromView(view);
        QCOMPARE(t.columns.size(), 3);
        QCOMPARE(t.columns[0].caption + t.columns[1].caption, u"UpperRange"_s);
        QCOMPARE(t.columns[0].width, 77);
        // The header centres every caption by default; the cells decide then.
        QCOMPARE(t.columns[0].align, Qt::AlignHCenter);
        QCOMPARE(t.columns[1].align, Qt::AlignLeft);
        QCOMPARE(t.columns[2].align, Qt::AlignRight);
        QCOMPARE(t.rows.size(), 2);
        QCOMPARE(t.rows[1].size(), 3);
        QCOMPARE(t.rows[1][0].text + t.rows[1][1].text, u"1/21/0"_s);
        QVERIFY(t.rows[1][1].color == QColor(200, 0, 0) && t.rows[1][1].bold);
        QVERIFY(t.rows[0][1].color == QColor(Qt::black) && !t.rows[0][1].bold);
    }

    // kestrelctl print run as a process: a page range of the channel list that only reads the
    // data folder.
    void cliPrint() {
        QTemporaryDir dir;
        const QString data = dir.filePath(u"data"_s), pdf = dir.filePath(u"list.pdf"_s);
        test::ProcessResult r =
            test::runKestrelctlIn(data, {"set", "--bank", "10", "--slot", "20",
                                         "162.550000,Weather Radio,False,False,False"});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const auto before = test::snapshotTree(data);
        r = test::runKestrelctlIn(data, {"print", "--all", "--pages", "3-4", "-o", pdf});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QStringList pages = test::pdfPages(pdf);
        QCOMPARE(pages.size(), 2);
        QVERIFY(pages[0].contains(u"Page: 3 of 4"_s) && !pages[0].contains(u"Weather"_s));
        QVERIFY(pages[1].contains(u"Page: 4 of 4"_s));
        QVERIFY(pages[1].contains(u"All Channels For Main"_s));
        QVERIFY(
            pages[1].contains(QRegularExpression(u"\\b200\\s+162\\.550000\\s+Weather Radio"_s)));
        QCOMPARE(test::snapshotTree(data), before);
    }
};

QTEST_MAIN(TestCPrintLV)
#include "test_cprintlv.moc"
