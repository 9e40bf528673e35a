// SPDX-License-Identifier: GPL-3.0-or-later
// The print preview window driven offscreen: paging and its bounds, the scroll bars, and
// printing a page range chosen in the printer dialog. Then printing from the main window: the
// channel list's "Print" button and "&Print Current Bank" on a bank tab and on the search tab open
// the preview with the list on screen and its title; the menu item is checked while it is open.
#include "printtest.h"
#include "testsupport.h"

#include "core/appcontext.h"
#include "core/files.h"
#include "core/profiles.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "print/frmprntprev.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPdfWriter>
#include <QPrinter>
#include <QPushButton>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace kestrel;
using namespace Qt::StringLiterals;

namespace {

struct Preview {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Ok};
    AppContext ctx{dir.path(), &prompts};
    FrmPrntPrev window{ctx};

    explicit Preview(int rows, qint16 maxRows = 0) {
        window.setList_View(test::numberedTable(rows));
        window.setDescription(u"Preview Test"_s);
        if (maxRows > 0)
            window.setMaxRows(maxRows);
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
    void paging_data() {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("maxRows");
        QTest::addColumn<int>("pages");
        QTest::newRow("empty list") << 0 << 50 << 1;
        QTest::newRow("all channels") << 200 << 50 << 4;
        QTest::newRow("59 rows by default") << 59 << 0 << 2;
    }
    void paging() {
        QFETCH(int, rows);
        QFETCH(int, maxRows);
        QFETCH(int, pages);
        Preview p(rows, qint16(maxRows));
        auto label = [&](int page) { return u"%1 of %2"_s.arg(page).arg(pages); };
        QCOMPARE(p.pageLabel(), label(1));
        // Before the first page and past the last nothing changes and nothing is redrawn.
        const qint64 first = p.pictureKey();
        p.click("PageDir_Btn0");
        QCOMPARE(p.pageLabel(), label(1));
        QCOMPARE(p.pictureKey(), first);
        QList<QImage> seen{p.window.pageImage()};
        for (int page = 2; page <= pages; ++page) {
            p.click("PageDir_Btn1");
            QCOMPARE(p.pageLabel(), label(page));
            QCOMPARE(p.window.lastDrawnPage(), page);
            QVERIFY(p.window.pageImage() != seen.last());
            seen.append(p.window.pageImage());
        }
        const qint64 last = p.pictureKey();
        p.click("PageDir_Btn1");
        QCOMPARE(p.pageLabel(), label(pages));
        QCOMPARE(p.pictureKey(), last);
        for (int page = pages - 1; page >= 1; --page) {
            p.click("PageDir_Btn0");
            QCOMPARE(p.pageLabel(), label(page));
            // The page carries the time of printing, so a redraw may differ in its clock.
            QCOMPARE(p.window.lastDrawnPage(), page);
            QCOMPARE(p.window.pageImage().size(), seen[page - 1].size());
        }
        QCOMPARE(p.ctx.errors.reportCount(), 0);
    }

    void scrollBarsMoveThePicture() {
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
        h->setValue(35);
        QCOMPARE(picture->pos(), QPoint(-35, -120));
        v->triggerAction(QAbstractSlider::SliderToMaximum);
        QCOMPARE(picture->geometry().bottom(), area->height() - 1); // the sheet's foot in view
        // A window larger than the sheet needs no scrolling.
        p.window.resize(picture->width() + 200, picture->height() + 200);
        QTRY_VERIFY(!v->isEnabled());
        QVERIFY(!h->isEnabled());
        QCOMPARE(picture->pos(), QPoint(0, 0));
    }

    void printsChosenRange() {
        Preview p(200, 50);
        const QString pdf = p.dir.filePath(u"printed.pdf"_s);
        QString offered;
        p.window.setPrinterChooser([&](QPrinter& printer, int minPage, int maxPage) {
            offered = u"%1-%2"_s.arg(minPage).arg(maxPage);
            printer.setOutputFileName(pdf);
            printer.setPrintRange(QPrinter::PageRange);
            printer.setFromTo(2, 3);
            return true;
        });
        p.click("PrintPicBtn");
        QCOMPARE(offered, u"1-4"_s);
        const QStringList sheets = test::pdfPages(pdf);
        QCOMPARE(sheets.size(), 2);
        QVERIFY(sheets[0].contains(u"Page: 2 of 4"_s));
        QVERIFY(sheets[0].contains(u"Preview Test"_s));
        QVERIFY(sheets[1].contains(u"Page: 3 of 4"_s));
        QVERIFY(sheets[1].contains(u"Row 150"_s));
        QCOMPARE(p.child<QLabel>("PrintLbl")->text(), u"Printing Page: 3"_s);
        QCOMPARE(p.pageLabel(), u"1 of 4"_s); // the preview keeps its own page
        QVERIFY(p.prompts.messages().isEmpty());
    }

    void preview_data() {
        QTest::addColumn<int>("tab"); // -1: the "Print" button under all channels
        QTest::addColumn<int>("items");
        QTest::addColumn<int>("pages");
        QTest::addColumn<QString>("onLastPage");
        QTest::newRow("all channels") << -1 << 200 << 4 << u"200\\s+\\S+\\s+Edited"_s;
        QTest::newRow("bank 7") << 6 << 20 << 1 << u"\\n\\s*140\\s"_s;
        QTest::newRow("search ranges") << 10 << 10 << 1 << u"Lower Frequency"_s;
    }
    void preview() {
        QFETCH(int, tab);
        QFETCH(int, items);
        QFETCH(int, pages);
        QFETCH(QString, onLastPage);
        QTemporaryDir dir;
        ScriptedPrompts prompts(Answer::Yes);
        AppContext ctx(dir.path(), &prompts);
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        MainForm form(ctx);
        form.findChild<KestrelComm*>()->setTimeScale(0.01); // the link's set-up is not tested
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        // An edit made on the bank panel shows in the printed list.
        ctx.cur().Banks[10].Chans[20].Desc = u"Edited Last"_s;
        QAction* item = form.menuItem(u"PrintBankMenuItem"_s);
        QString title = u"All Channels For Main"_s;
        if (tab >= 0) {
            form.BankTab()->setCurrentIndex(tab);
            title = tab == 10 ? ctx.cur().SrchName : ctx.cur().Banks[tab + 1].FileName;
            QVERIFY(!title.isEmpty() && item->isEnabled() && !item->isChecked());
        }

        // Once the modal preview is up, read what it shows, print its last page and close it.
        QString seen, lastPage;
        bool checked = false;
        QTimer::singleShot(0, this, [&] {
            auto* preview = qobject_cast<FrmPrntPrev*>(QApplication::activeModalWidget());
            if (preview == nullptr)
                return;
            seen = u"%1|%2|%3|%4"_s.arg(preview->description())
                       .arg(preview->itemCount())
                       .arg(preview->pageCount())
                       .arg(preview->maxRows());
            checked = item->isChecked();
            const QString pdf = dir.filePath(u"last.pdf"_s);
            {
                QPdfWriter writer(pdf);
                preview->PrintPages(writer, preview->pageCount(), preview->pageCount());
            }
            lastPage = test::pdfPages(pdf).value(0);
            preview->reject();
        });
        if (tab < 0) {
            form.menuItem(u"ShowAllChanMenuItem"_s)->trigger();
            QVERIFY(form.PtintChansBtn()->isVisible() && form.PtintChansBtn()->isEnabled());
            QTest::mouseClick(form.PtintChansBtn(), Qt::LeftButton);
        } else {
            item->trigger();
            QVERIFY(checked);
        }
        QCOMPARE(seen, u"%1|%2|%3|50"_s.arg(title).arg(items).arg(pages));
        QVERIFY(!item->isChecked());
        QVERIFY(lastPage.contains(title));
        QVERIFY(lastPage.contains(u"Page: %1 of %1"_s.arg(pages)));
        QVERIFY2(lastPage.contains(QRegularExpression(onLastPage)), qPrintable(lastPage));
    }
};

QTEST_MAIN(TestFrmPrntPrev)
#include "test_frmprntprev.moc"
