// SPDX-License-Identifier: GPL-3.0-or-later
// Printing from the main window: the channel list's "Print" button and "&Print Current Bank" on
// a bank tab and on the search tab open the preview with the list on screen and its title; the
// menu item is checked while the preview is open.
#include "printtest.h"
#include "testsupport.h"

#include "core/files.h"
#include "core/profiles.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "print/frmprntprev.h"

#include <QAction>
#include <QApplication>
#include <QPdfWriter>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace kestrel;
using namespace Qt::StringLiterals;

class TestMainFormPrint : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
            QCOMPARE(int(ctx.CurBank), tab + 1);
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

QTEST_MAIN(TestMainFormPrint)
#include "test_mainform_print.moc"
