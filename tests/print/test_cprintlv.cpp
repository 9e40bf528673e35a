// SPDX-License-Identifier: GPL-3.0-or-later
// The list printer and the page layout: pagination, rows drawn per page, the page's texts and
// where they stand, clipping, and the tables made from the records.
#include "pdftext.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "print/printpage.h"

#include <QBuffer>
#include <QPainter>
#include <QSaveFile>
#include <QTest>

using namespace kestrel;

namespace {

const QDateTime kWhen(QDate(2026, 11, 22), QTime(9, 5, 7));
const QColor kLine(128, 128, 128);

PrintTable numberedTable(int count) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int n = 1; n <= count; ++n)
        t.addRow({Num3(n), QStringLiteral("146.520000"), QStringLiteral("Row ") + Num3(n),
                  QStringLiteral("False"), QStringLiteral("False"), QStringLiteral("False")});
    return t;
}

QImage blankPage() {
    const QSize twips = PageSizeTwips();
    QImage img(twips.width() / 15, twips.height() / 15, QImage::Format_RGB32);
    img.setDotsPerMeterX(3780);
    img.setDotsPerMeterY(3780);
    img.fill(Qt::white);
    return img;
}

// Horizontal table lines met going down just inside the table's left border.
int horizontalLines(const QImage& img) {
    const int x = cPrintLV::kLeftTwips / 15 + 1;
    int runs = 0;
    bool inLine = false;
    for (int y = 0; y < img.height(); ++y) {
        const bool line = img.pixelColor(x, y) == kLine;
        if (line && !inLine)
            ++runs;
        inLine = line;
    }
    return runs;
}

QString writePdf(const QString& dir, const PrintTable& table, const QString& title, qint16 rows,
                 qint16 from, qint16 to, ErrorReporter& errors) {
    const QString path = dir + QStringLiteral("/out.pdf");
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    WritePdf(file, errors, table, title, rows, from, to, kWhen);
    file.commit();
    return path;
}

} // namespace

class TestCPrintLV : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pagination_data();
    void pagination();
    void zeroRowsPerPageIsReported();
    void rowsDrawnPerPage_data();
    void rowsDrawnPerPage();
    void titleIsBlue();
    void cellColourAndBoldness();
    void pageTextsAndPositions();
    void allChannelsToPdf();
    void longDescriptionEndsInEllipsis();
    void wideListFitsTheSheet();
    void tablesFromRecords();
};

void TestCPrintLV::pagination_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QList<int>>("pageSizes");
    QTest::newRow("empty list") << 0 << 50 << QList<int>{0};
    QTest::newRow("shorter than a page") << 45 << 50 << QList<int>{45};
    QTest::newRow("exactly one page") << 58 << 58 << QList<int>{58};
    QTest::newRow("one over") << 59 << 58 << QList<int>{58, 1};
    QTest::newRow("remainder on last page") << 120 << 50 << QList<int>{50, 50, 20};
    QTest::newRow("all channels") << 200 << 50 << QList<int>{50, 50, 50, 50};
    QTest::newRow("one row per page") << 3 << 1 << QList<int>{1, 1, 1};
}

void TestCPrintLV::pagination() {
    QFETCH(int, count);
    QFETCH(int, rows);
    QFETCH(QList<int>, pageSizes);
    ErrorReporter errors;
    cPrintLV list(errors);
    list.ListViewName(numberedTable(count));
    list.Set_Pages(count, qint16(rows));
    QCOMPARE(list.pageCount(), pageSizes.size());
    QCOMPARE(list.firstItem(), 1); // Set_Pages goes back to the first page
    int expectedFirst = 1;
    for (int p = 1; p <= pageSizes.size(); ++p) {
        list.Set_Page(qint16(p));
        QCOMPARE(list.firstItem(), expectedFirst);
        QCOMPARE(list.lastItem() - list.firstItem() + 1, pageSizes[p - 1]);
        QCOMPARE(list.nextItem(), list.lastItem() + 1);
        expectedFirst += pageSizes[p - 1];
    }
    QCOMPARE(expectedFirst - 1, count);
    QCOMPARE(errors.reportCount(), 0);
}

void TestCPrintLV::zeroRowsPerPageIsReported() {
    QTemporaryDir dir;
    ErrorReporter errors(dir.path());
    cPrintLV list(errors);
    list.ListViewName(numberedTable(5));
    list.Set_Pages(5, 0);
    QCOMPARE(errors.reportCount(), 1);
    QCOMPARE(errors.currentLabel(), QStringLiteral("cPrintLV -> Set_Pages"));
    QVERIFY(QString::fromUtf8(test::readFile(errors.logPath()))
                .contains(QStringLiteral("cPrintLV -> Set_Pages")));
}

void TestCPrintLV::rowsDrawnPerPage_data() {
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("drawn");
    QTest::newRow("empty list: header only") << 0 << 50 << 1 << 0;
    QTest::newRow("bank of 20") << 20 << 50 << 1 << 20;
    QTest::newRow("full page") << 120 << 50 << 2 << 50;
    QTest::newRow("last page holds the rest") << 120 << 50 << 3 << 20;
    QTest::newRow("default rows per page") << 200 << 58 << 4 << 26;
}

void TestCPrintLV::rowsDrawnPerPage() {
    QFETCH(int, count);
    QFETCH(int, rows);
    QFETCH(int, page);
    QFETCH(int, drawn);
    ErrorReporter errors;
    cPrintLV list(errors);
    list.ListViewName(numberedTable(count));
    list.Set_Pages(count, qint16(rows));
    QImage img = blankPage();
    QPainter painter(&img);
    DrawPage(painter, list, qint16(page), QStringLiteral("Title"), kWhen);
    painter.end();
    // The caption row has a line above and below; each row adds the line below it.
    QCOMPARE(horizontalLines(img), drawn + 2);
    QCOMPARE(errors.reportCount(), 0);
}

void TestCPrintLV::titleIsBlue() {
    ErrorReporter errors;
    cPrintLV list(errors);
    list.ListViewName(numberedTable(3));
    list.Set_Pages(3, 50);
    QImage img = blankPage();
    QPainter painter(&img);
    DrawPage(painter, list, 1, QStringLiteral("WWWWWWWW"), kWhen);
    painter.end();
    // The title's line: from y 80 twips to above the table.
    int blue = 0;
    for (int y = 80 / 15; y < cPrintLV::kTopTwips / 15; ++y)
        for (int x = 360 / 15; x < 5200 / 15; ++x) {
            const QColor c = img.pixelColor(x, y);
            blue += c.blue() > 200 && c.red() < 80 && c.green() < 80;
        }
    QVERIFY2(blue > 20, qPrintable(QString::number(blue)));
}

void TestCPrintLV::cellColourAndBoldness() {
    auto redPixels = [](bool coloured) {
        PrintTable t = numberedTable(1);
        if (coloured) {
            t.rows[0][2].color = QColor(255, 0, 0);
            t.rows[0][2].bold = true;
        }
        ErrorReporter errors;
        cPrintLV list(errors);
        list.ListViewName(t);
        list.Set_Pages(1, 50);
        QImage img = blankPage();
        QPainter painter(&img);
        DrawPage(painter, list, 1, QString(), kWhen);
        painter.end();
        int red = 0;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QColor c = img.pixelColor(x, y);
                red += c.red() > 200 && c.green() < 80 && c.blue() < 80;
            }
        return red;
    };
    QCOMPARE(redPixels(false), 0);
    QVERIFY(redPixels(true) > 10);
}

void TestCPrintLV::pageTextsAndPositions() {
    QTemporaryDir dir;
    ErrorReporter errors;
    const QString path =
        writePdf(dir.path(), numberedTable(120), QStringLiteral("Marine Band"), 50, 1, 3, errors);
    const QStringList pages = test::pdfPages(path);
    QCOMPARE(pages.size(), 3);
    for (int p = 1; p <= 3; ++p) {
        const QString& text = pages[p - 1];
        QVERIFY(text.contains(QStringLiteral("Marine Band")));
        QVERIFY(text.contains(QStringLiteral("Date: 11-22-2026")));
        QVERIFY(text.contains(TimeText(kWhen.time())));
        QVERIFY(text.contains(QStringLiteral("Page: %1 of 3").arg(p)));
        QVERIFY(text.contains(QStringLiteral("Description")));
        // The page's first and last rows, and nothing from its neighbours.
        const int first = (p - 1) * 50 + 1;
        const int last = qMin(p * 50, 120);
        QVERIFY(text.contains(QStringLiteral("Row ") + Num3(first)));
        QVERIFY(text.contains(QStringLiteral("Row ") + Num3(last)));
        QVERIFY(!text.contains(QStringLiteral("Row ") + Num3(last + 1)));
        if (first > 1)
            QVERIFY(!text.contains(QStringLiteral("Row ") + Num3(first - 1)));
    }

    // Positions in points (twips / 20) from the sheet's corner; the page has quarter-inch
    // margins (18 points).
    const QList<test::PdfWord> words = test::pdfWords(path);
    auto find = [&](const QString& text) {
        for (const test::PdfWord& w : words)
            if (w.page == 1 && w.text == text)
                return w;
        return test::PdfWord{};
    };
    const struct {
        const char* word;
        double x;
        double y;
    } expected[] = {
        {"Marine", 360, 80}, {"Date:", 5200, 100}, {"Time:", 6900, 100}, {"Page:", 9800, 100}};
    for (const auto& e : expected) {
        const test::PdfWord w = find(QString::fromLatin1(e.word));
        QVERIFY2(w.page == 1, e.word);
        QVERIFY2(qAbs(w.box.left() - (18 + e.x / 20)) < 1.5, e.word);
        // The top of a word's box sits a little above its capitals.
        QVERIFY2(qAbs(w.box.top() - (18 + e.y / 20)) < 4, e.word);
    }
    // Captions begin at the table's top, rows below them.
    const test::PdfWord caption = find(QStringLiteral("Frequency"));
    QVERIFY(caption.page == 1);
    QVERIFY(qAbs(caption.box.top() - (18 + cPrintLV::kTopTwips / 20.0)) < 4);
    QVERIFY(find(QStringLiteral("001")).box.top() > caption.box.bottom());
}

void TestCPrintLV::allChannelsToPdf() {
    QTemporaryDir dir;
    AppContext ctx(dir.path());
    Load_Profiles(ctx);
    ctx.Profiles[0].Banks[10].Chans[20].Desc = QStringLiteral("Last Slot");
    ctx.Profiles[0].Banks[10].Chans[20].Freq = 162'550'000;
    const QString path = writePdf(dir.path(), AllChannelsTable(ctx.Profiles[0]),
                                  QStringLiteral("All Channels For ") + ctx.Profiles[0].Name,
                                  kListMaxRows, 1, 4, ctx.errors);
    const QStringList pages = test::pdfPages(path);
    QCOMPARE(pages.size(), 4);
    const QString& last = pages[3];
    QVERIFY(last.contains(QStringLiteral("Page: 4 of 4")));
    QVERIFY(last.contains(QStringLiteral("All Channels For Main")));
    static const QRegularExpression row200(
        QStringLiteral("\\b200\\s+162\\.550000\\s+Last Slot\\s+"));
    QVERIFY(row200.match(last).hasMatch());
    QVERIFY(!pages[0].contains(QStringLiteral("Last Slot")));
    QCOMPARE(ctx.errors.reportCount(), 0);
}

void TestCPrintLV::longDescriptionEndsInEllipsis() {
    QTemporaryDir dir;
    ErrorReporter errors;
    PrintTable t = numberedTable(2);
    t.rows[0][2].text =
        QStringLiteral("Very long description ").repeated(8) + QStringLiteral("END");
    const QString path = writePdf(dir.path(), t, QStringLiteral("Clip"), 50, 1, 1, errors);
    const QString text = test::pdfText(path);
    QVERIFY(text.contains(QChar(0x2026)));
    QVERIFY(!text.contains(QStringLiteral("END")));

    // Nothing of the description reaches the next column ("Delay").
    double delayLeft = 18 + cPrintLV::kLeftTwips / 20.0;
    for (int c = 0; c < 3; ++c)
        delayLeft += ChannelColumns()[c].width * 0.75; // screen pixels are 3/4 point
    int words = 0;
    for (const test::PdfWord& w : test::pdfWords(path)) {
        if (w.text == QStringLiteral("Very") || w.text == QStringLiteral("long") ||
            w.text.contains(QChar(0x2026))) {
            ++words;
            QVERIFY2(w.box.right() <= delayLeft, qPrintable(w.text));
        }
    }
    QVERIFY(words >= 3);
}

void TestCPrintLV::wideListFitsTheSheet() {
    QTemporaryDir dir;
    ErrorReporter errors;
    PrintTable t = numberedTable(3);
    t.columns[2].width = 2400; // a description column stretched across a wide screen
    const QString path = writePdf(dir.path(), t, QStringLiteral("Wide"), 50, 1, 1, errors);
    // Letter is 612 points wide; the table keeps the title's 18-point indent on both sides of
    // the quarter-inch margins.
    bool sawLast = false;
    for (const test::PdfWord& w : test::pdfWords(path)) {
        QVERIFY2(w.box.right() <= 612 - 36 + 0.5, qPrintable(w.text));
        sawLast = sawLast || w.text == QStringLiteral("L/Out");
    }
    QVERIFY(sawLast);
    // Only the stretched column gives way: the flags and captions beside it stay whole.
    const QString text = test::pdfText(path);
    QVERIFY(text.contains(QStringLiteral("Row 003")));
    QVERIFY(text.contains(QStringLiteral("Priority")));
    QCOMPARE(text.count(QStringLiteral("False")), 9);
}

void TestCPrintLV::tablesFromRecords() {
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

    auto column = [](const PrintTable& t, const QString& caption) {
        for (qsizetype i = 0; i < t.columns.size(); ++i)
            if (t.columns[i].caption == caption)
                return int(i);
        return -1;
    };
    const PrintTable bank = BankTable(prof, 3);
    QCOMPARE(bank.rows.size(), 20);
    QCOMPARE(bank.rows.first().first().text, QStringLiteral("041"));
    QCOMPARE(bank.rows.last().first().text, QStringLiteral("060"));
    const PrintRow& row = bank.rows[4];
    QCOMPARE(row[0].text, QStringLiteral("045"));
    QCOMPARE(row[column(bank, QStringLiteral("Frequency"))].text, QStringLiteral("146.520000"));
    QCOMPARE(row[column(bank, QStringLiteral("Description"))].text,
             QStringLiteral("Calling, simplex"));
    QCOMPARE(row[column(bank, QStringLiteral("Delay"))].text, QStringLiteral("True"));
    QCOMPARE(row[column(bank, QStringLiteral("Priority"))].text, QStringLiteral("False"));
    QCOMPARE(row[column(bank, QStringLiteral("L/Out"))].text, QStringLiteral("True"));

    const PrintTable all = AllChannelsTable(prof);
    QCOMPARE(all.rows.size(), 200);
    QCOMPARE(all.rows[44][0].text, QStringLiteral("045"));
    QCOMPARE(all.rows[44][column(all, QStringLiteral("Description"))].text,
             QStringLiteral("Calling, simplex"));
    QCOMPARE(all.rows[199][0].text, QStringLiteral("200"));

    const PrintTable search = SearchTable(prof);
    QCOMPARE(search.rows.size(), 10);
    QCOMPARE(search.rows[0][0].text, QStringLiteral("01"));
    const PrintRow& range = search.rows[6];
    QCOMPARE(range[0].text, QStringLiteral("07"));
    QCOMPARE(range[column(search, QStringLiteral("Lower Frequency"))].text,
             QStringLiteral("144.000000"));
    QCOMPARE(range[column(search, QStringLiteral("Upper Frequency"))].text,
             QStringLiteral("148.000000"));
    QCOMPARE(range[column(search, QStringLiteral("Description"))].text,
             QStringLiteral("Two metres"));
}

QTEST_MAIN(TestCPrintLV)
#include "test_cprintlv.moc"
