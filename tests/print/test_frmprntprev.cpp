// SPDX-License-Identifier: GPL-3.0-or-later
// The print preview window driven offscreen: paging, the page picture, the scroll bars, printing
// a page range, cancelling and failing, and the remembered window position.
#include "pdftext.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "print/frmprntprev.h"

#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

using namespace kestrel;

namespace {

const QDateTime kWhen(QDate(2026, 11, 22), QTime(14, 30, 0));

PrintTable rowsTable(int count) {
    PrintTable t;
    t.columns = ChannelColumns();
    for (int n = 1; n <= count; ++n)
        t.addRow({Num3(n), QStringLiteral("155.175000"), QStringLiteral("Unit ") + Num3(n),
                  QStringLiteral("True"), QStringLiteral("False"), QStringLiteral("False")});
    return t;
}

struct Preview {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Ok};
    AppContext ctx{dir.path(), &prompts};
    FrmPrntPrev window{ctx};

    explicit Preview(int rows, qint16 maxRows = 0) {
        window.setList_View(rowsTable(rows));
        window.setDescription(QStringLiteral("Preview Test"));
        if (maxRows > 0)
            window.setMaxRows(maxRows);
        window.setClock([] { return kWhen; });
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    template <typename T> T* child(const char* name) {
        return window.findChild<T*>(QString::fromLatin1(name));
    }
    QString pageLabel() { return child<QLabel>("PageLbl")->text(); }
    qint64 pictureKey() { return child<QLabel>("picTarget")->pixmap().cacheKey(); }
    void click(const char* button) {
        QTest::mouseClick(child<QPushButton>(button), Qt::LeftButton);
    }
};

} // namespace

class TestFrmPrntPrev : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pageCount_data();
    void pageCount();
    void singlePageStaysAndDoesNotRedraw();
    void pagingThroughAllChannels();
    void scrollBarsMoveThePicture();
    void printsChosenRange();
    void cancelledDialogPrintsNothing();
    void printerChoiceErrorIsShown();
    void printFailureIsShown();
    void windowPositionRemembered();
};

void TestFrmPrntPrev::pageCount_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("maxRows");
    QTest::addColumn<QString>("label");
    QTest::newRow("bank at 50") << 20 << 50 << QStringLiteral("1 of 1");
    QTest::newRow("all channels at 50") << 200 << 50 << QStringLiteral("1 of 4");
    QTest::newRow("empty list") << 0 << 50 << QStringLiteral("1 of 1");
    QTest::newRow("58 rows by default") << 58 << 0 << QStringLiteral("1 of 1");
    QTest::newRow("59 rows by default") << 59 << 0 << QStringLiteral("1 of 2");
}

void TestFrmPrntPrev::pageCount() {
    QFETCH(int, rows);
    QFETCH(int, maxRows);
    QFETCH(QString, label);
    Preview p(rows, qint16(maxRows));
    QCOMPARE(p.pageLabel(), label);
    QCOMPARE(p.window.currentPage(), 1);
    QCOMPARE(p.window.lastDrawnPage(), 1);
    QCOMPARE(p.ctx.errors.reportCount(), 0);
}

void TestFrmPrntPrev::singlePageStaysAndDoesNotRedraw() {
    Preview p(20, 50);
    const qint64 before = p.pictureKey();
    p.click("PageDir_Btn0");
    p.click("PageDir_Btn1");
    QCOMPARE(p.pageLabel(), QStringLiteral("1 of 1"));
    QCOMPARE(p.window.currentPage(), 1);
    QCOMPARE(p.pictureKey(), before);
}

void TestFrmPrntPrev::pagingThroughAllChannels() {
    Preview p(200, 50);
    QList<QImage> seen{p.window.pageImage()};
    for (int page = 2; page <= 4; ++page) {
        p.click("PageDir_Btn1");
        QCOMPARE(p.pageLabel(), QStringLiteral("%1 of 4").arg(page));
        QCOMPARE(p.window.lastDrawnPage(), page);
        seen.append(p.window.pageImage());
    }
    // Past the last page nothing changes and nothing is redrawn.
    const qint64 last = p.pictureKey();
    p.click("PageDir_Btn1");
    QCOMPARE(p.pageLabel(), QStringLiteral("4 of 4"));
    QCOMPARE(p.pictureKey(), last);
    for (int i = 1; i < seen.size(); ++i)
        QVERIFY(seen[i] != seen[i - 1]);

    for (int page = 3; page >= 1; --page) {
        p.click("PageDir_Btn0");
        QCOMPARE(p.pageLabel(), QStringLiteral("%1 of 4").arg(page));
        QCOMPARE(p.window.pageImage(), seen[page - 1]);
    }
    const qint64 first = p.pictureKey();
    p.click("PageDir_Btn0");
    QCOMPARE(p.pageLabel(), QStringLiteral("1 of 4"));
    QCOMPARE(p.pictureKey(), first);
}

void TestFrmPrntPrev::scrollBarsMoveThePicture() {
    Preview p(60, 50);
    auto* h = p.child<QScrollBar>("hscScroll");
    auto* v = p.child<QScrollBar>("vscScroll");
    auto* area = p.child<QWidget>("picScroll");
    auto* picture = p.child<QLabel>("picTarget");

    p.window.resize(500, 400);
    QTRY_COMPARE(v->maximum(), picture->height() - area->height());
    QCOMPARE(h->maximum(), picture->width() - area->width());
    QVERIFY(v->isEnabled() && h->isEnabled());

    v->setValue(120);
    h->setValue(v->maximum() > 0 ? 35 : 0);
    QCOMPARE(picture->pos(), QPoint(-35, -120));
    v->triggerAction(QAbstractSlider::SliderToMaximum);
    QCOMPARE(picture->geometry().bottom(), area->height() - 1); // the sheet's foot in view
    h->triggerAction(QAbstractSlider::SliderToMinimum);
    QCOMPARE(picture->x(), 0);

    // A window larger than the sheet needs no scrolling.
    p.window.resize(picture->width() + 200, picture->height() + 200);
    QTRY_VERIFY(!v->isEnabled());
    QVERIFY(!h->isEnabled());
    QCOMPARE(picture->pos(), QPoint(0, 0));
    QCOMPARE(p.ctx.errors.reportCount(), 0);
}

void TestFrmPrntPrev::printsChosenRange() {
    Preview p(200, 50);
    const QString pdf = p.dir.filePath(QStringLiteral("printed.pdf"));
    int offeredMin = 0, offeredMax = 0;
    p.window.setPrinterChooser([&](QPrinter& printer, int minPage, int maxPage) {
        offeredMin = minPage;
        offeredMax = maxPage;
        printer.setOutputFileName(pdf);
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
        return true;
    });
    p.click("PrintPicBtn");
    QCOMPARE(offeredMin, 1);
    QCOMPARE(offeredMax, 4);
    const QStringList sheets = test::pdfPages(pdf);
    QCOMPARE(sheets.size(), 2);
    QVERIFY(sheets[0].contains(QStringLiteral("Page: 2 of 4")));
    QVERIFY(sheets[1].contains(QStringLiteral("Page: 3 of 4")));
    QVERIFY(sheets[0].contains(QStringLiteral("Preview Test")));
    QVERIFY(sheets[1].contains(QStringLiteral("Unit 150")));
    QCOMPARE(p.child<QLabel>("PrintLbl")->text(), QStringLiteral("Printing Page: 3"));
    // The preview keeps showing its own page.
    QCOMPARE(p.pageLabel(), QStringLiteral("1 of 4"));
    QVERIFY(p.prompts.messages().isEmpty());

    // All pages when the user leaves the range alone.
    const QString all = p.dir.filePath(QStringLiteral("all.pdf"));
    p.window.setPrinterChooser([&](QPrinter& printer, int, int) {
        printer.setOutputFileName(all);
        return true;
    });
    p.click("PrintPicBtn");
    QCOMPARE(test::pdfPages(all).size(), 4);
}

void TestFrmPrntPrev::cancelledDialogPrintsNothing() {
    Preview p(200, 50);
    int offeredFrom = 0, offeredTo = 0, min = 0, max = 0;
    bool seen = false;
    QTimer::singleShot(0, this, [&] {
        auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        seen = true;
        min = dialog->minPage();
        max = dialog->maxPage();
        offeredFrom = dialog->fromPage();
        offeredTo = dialog->toPage();
        dialog->printer()->setOutputFileName(p.dir.filePath(QStringLiteral("never.pdf")));
        dialog->reject();
    });
    p.click("PrintPicBtn");
    QVERIFY(seen);
    QCOMPARE(min, 1);
    QCOMPARE(max, 4);
    QCOMPARE(offeredFrom, 1);
    QCOMPARE(offeredTo, 4);
    QVERIFY(!QFileInfo::exists(p.dir.filePath(QStringLiteral("never.pdf"))));
    QVERIFY(p.child<QLabel>("PrintLbl")->text().isEmpty());
    QVERIFY(p.prompts.messages().isEmpty());
}

void TestFrmPrntPrev::printerChoiceErrorIsShown() {
    Preview p(20, 50);
    p.window.setPrinterChooser([](QPrinter&, int, int) -> bool {
        throw KestrelError(482, QStringLiteral("Printer error"));
    });
    p.click("PrintPicBtn");
    QCOMPARE(p.prompts.messages().size(), 1);
    QCOMPARE(p.prompts.messages()[0].text, QStringLiteral("PrintPic Error [482] Printer error"));
    QCOMPARE(p.prompts.messages()[0].icon, Icon::Critical);
    QVERIFY(p.child<QLabel>("PrintLbl")->text().isEmpty());
}

void TestFrmPrntPrev::printFailureIsShown() {
    Preview p(20, 50);
    const QString pdf = p.dir.filePath(QStringLiteral("no/such/folder/out.pdf"));
    p.window.setPrinterChooser([&](QPrinter& printer, int, int) {
        printer.setOutputFileName(pdf);
        return true;
    });
    p.click("PrintPicBtn");
    QCOMPARE(p.prompts.messages().size(), 1);
    QVERIFY(p.prompts.messages()[0].text.startsWith(QStringLiteral("PrintPages Error [")));
    QCOMPARE(p.prompts.messages()[0].icon, Icon::Critical);
    QVERIFY(!QFileInfo::exists(pdf));
}

void TestFrmPrntPrev::windowPositionRemembered() {
    QTemporaryDir dir;
    AppContext ctx(dir.path());
    ctx.settings.pos(WindowId::PP) = WindowPos{1500, 3000}; // twips
    {
        FrmPrntPrev window(ctx);
        window.setList_View(rowsTable(5));
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        QCOMPARE(window.pos(), QPoint(200, 100));
        window.move(300, 150);
        QTRY_COMPARE(window.pos(), QPoint(300, 150));
        window.reject();
    }
    QCOMPARE(ctx.settings.pos(WindowId::PP), (WindowPos{2250, 4500}));
}

QTEST_MAIN(TestFrmPrntPrev)
#include "test_frmprntprev.moc"
