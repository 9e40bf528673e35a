// SPDX-License-Identifier: GPL-3.0-or-later
// The list printer: pagination and the rows drawn on each page, the full channel list as a PDF,
// and the tables made from the records.
#include "printtest.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/profiles.h"
#include "print/printpage.h"

#include <QPainter>
#include <QSaveFile>
#include <QTest>

using namespace kestrel;

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
    DrawPage(painter, list, qint16(page), QStringLiteral("Title"), kWhen);
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
    void pagination_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("rows");
        QTest::addColumn<QList<int>>("pageSizes");
        QTest::newRow("empty list") << 0 << 50 << QList<int>{0};
        QTest::newRow("exact multiple") << 100 << 50 << QList<int>{50, 50};
        QTest::newRow("one over") << 101 << 50 << QList<int>{50, 50, 1};
        QTest::newRow("all channels") << 200 << 50 << QList<int>{50, 50, 50, 50};
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

    void allChannelsToPdf() {
        QTemporaryDir dir;
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        ctx.Profiles[0].Banks[10].Chans[20].Desc = QStringLiteral("Last Slot");
        ctx.Profiles[0].Banks[10].Chans[20].Freq = 162'550'000;
        const QString path = dir.filePath(QStringLiteral("out.pdf"));
        QSaveFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        WritePdf(file, ctx.errors, AllChannelsTable(ctx.Profiles[0]),
                 QStringLiteral("All Channels For Main"), kListMaxRows, 1, 4, kWhen);
        QVERIFY(file.commit());
        const QStringList pages = test::pdfPages(path);
        QCOMPARE(pages.size(), 4);
        QVERIFY(pages[3].contains(QStringLiteral("Page: 4 of 4")));
        QVERIFY(pages[3].contains(QStringLiteral("All Channels For Main")));
        QVERIFY(pages[3].contains(
            QRegularExpression(QStringLiteral("\\b200\\s+162\\.550000\\s+Last Slot"))));
        QVERIFY(!pages[0].contains(QStringLiteral("Last Slot")));
        QCOMPARE(ctx.errors.reportCount(), 0);
    }

    void tablesFromRecords() {
        QTemporaryDir dir;
        AppContext ctx(dir.path());
        Load_Profiles(ctx);
        ProfileRec& prof = ctx.Profiles[0];
        ChannelRec& ch = prof.Banks[3].Chans[5];
        ch.Freq = 146'520'000;
        ch.Desc = QStringLiteral("Calling, simplex");
        ch.Delay = true;
        ch.Priority = false;
        ch.Lockout = true;
        prof.Searches[7].Lower = 144'000'000;
        prof.Searches[7].Upper = 148'000'000;
        prof.Searches[7].Desc = QStringLiteral("Two metres");
        auto texts = [](const PrintRow& row) {
            QStringList out;
            for (const PrintCell& cell : row)
                out << cell.text;
            return out.join(QLatin1Char('|'));
        };
        const QString channel = QStringLiteral("045|146.520000|Calling, simplex|True|False|True");
        QCOMPARE(texts(BankTable(prof, 3).rows[4]), channel);
        QCOMPARE(texts(AllChannelsTable(prof).rows[44]), channel);
        QCOMPARE(texts(SearchTable(prof).rows[6]),
                 QStringLiteral("07|144.000000|148.000000|Two metres"));
    }
};

QTEST_MAIN(TestCPrintLV)
#include "test_cprintlv.moc"
