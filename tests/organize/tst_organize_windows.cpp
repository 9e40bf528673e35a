// SPDX-License-Identifier: GPL-3.0-or-later
// The organize windows opened from the main window's menus and driven offscreen: rows dragged as
// real QMimeData payloads through the lists' drop handling, the CSV import window, and the main
// window following every change.
#include "organize/frmbankedit.h"
#include "organize/frmchnledit.h"
#include "organize/frmcsvimport.h"
#include "organize/xfrlistview.h"

#include "letterbanks.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>
#include <QUrl>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

struct Gui : LetterBanks {
    MainForm form{ctx};
    Gui() {
        // The link's set-up after the first paint is not what these tests are about.
        form.findChild<KestrelComm*>()->setTimeScale(0.01);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
    }
    QAction* item(const char* name) { return form.menuItem(QString::fromLatin1(name)); }
    // Opens a tool from its menu item; it is checked while the window is open.
    template <typename Window> Window* open(const char* name) {
        item(name)->trigger();
        item(name)->trigger(); // raises the open window, no second one
        const auto found = form.findChildren<Window*>();
        if (found.size() != 1 || !item(name)->isChecked() ||
            !QTest::qWaitForWindowExposed(found[0]))
            return nullptr;
        return found[0];
    }
    QString shown(int row, int col = 2) { return form.ChnlsLv()->item(row, col)->text(); }
};

// Drops the data onto a row the way a drag ending there does; true when the list took it.
bool dropOn(XfrListView* view, int row, const QMimeData* data) {
    const QPoint at = view->visualItemRect(view->topLevelItem(row)).center();
    const Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction;
    QDragEnterEvent enter(at, actions, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &enter);
    QDragMoveEvent move(at, actions, data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view->viewport(), &move);
    QDropEvent drop(at, actions, data, Qt::LeftButton, Qt::NoModifier);
    drop.setAccepted(false);
    QCoreApplication::sendEvent(view->viewport(), &drop);
    return drop.isAccepted();
}

bool dropText(XfrListView* view, int row, const QString& text) {
    QMimeData data;
    data.setText(text);
    return dropOn(view, row, &data);
}

QString column(const QTreeWidget* view, int col) {
    QStringList out;
    for (int r = 0; r < view->topLevelItemCount(); ++r)
        out.append(view->topLevelItem(r)->text(col));
    return out.join(u' ');
}

} // namespace

class TestOrganizeWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void organizeBanks() {
        Gui f;
        FrmBankEdit* w = f.open<FrmBankEdit>("OrganizeBanksMenuItem");
        QVERIFY(w);
        QCOMPARE(column(w->SrcBanks(), 0), u"01 02 03 04 05 06 07 08 09 10"_s);
        // Text from other programs, files, and a drop onto a dragged row are all refused.
        QVERIFY(!dropText(w->SrcBanks(), 2, u"Bank list from a mail"_s));
        QVERIFY(!dropText(w->SrcBanks(), 2, u"XFER,05,06"_s));
        QVERIFY(!dropText(w->SrcBanks(), 5, u"XFR,05,06"_s));
        QMimeData urls;
        urls.setUrls({QUrl::fromLocalFile(f.dir.filePath(u"x.BKE"_s))});
        QVERIFY(!dropOn(w->SrcBanks(), 2, &urls));
        QCOMPARE(column(w->SrcBanks(), 1), u"A B C D E F G H I J"_s);
        QVERIFY(!w->SaveBtn()->isEnabled());

        QVERIFY(dropText(w->SrcBanks(), 0, u"XFR,03"_s));
        QCOMPARE(column(w->SrcBanks(), 1), u"C A B D E F G H I J"_s);
        QCOMPARE(f.form.BankTab()->tabText(0), u"A"_s); // not applied yet
        QTest::mouseClick(w->SaveBtn(), Qt::LeftButton);
        QVERIFY(!w->SaveBtn()->isEnabled());
        QCOMPARE(f.form.BankTab()->tabText(0), u"C"_s);
        QCOMPARE(f.form.BankTab()->tabText(1), u"A"_s);
        QCOMPARE(f.shown(0), u"C1"_s);
        w->close();
        QVERIFY(!f.item("OrganizeBanksMenuItem")->isChecked());
    }

    void organizeChannels() {
        Gui f;
        f.form.BankTab()->setCurrentIndex(4);
        FrmChnlEdit* w = f.open<FrmChnlEdit>("OrganizeChansMenuItem");
        QVERIFY(w);
        QCOMPARE(w->SrcBankSelTab()->tabText(4), u"E"_s);
        w->SrcBankSelTab()->setCurrentIndex(1);
        w->DestBankSelTab()->setCurrentIndex(4);
        QCOMPARE(column(w->SrcChannels(), 0).left(6), u"21 22 "_s);

        XfrListView* src = w->SrcChannels();
        for (int r : {2, 3, 4})
            src->topLevelItem(r)->setSelected(true);
        std::unique_ptr<QMimeData> data(src->model()->mimeData(
            {src->model()->index(2, 0), src->model()->index(3, 0), src->model()->index(4, 0)}));
        QCOMPARE(data->text(), u"XFR,23,24,25"_s);
        QVERIFY(!dropOn(src, 3, data.get())); // onto a dragged row
        QVERIFY(dropOn(w->DestChannels(), 4, data.get()));
        QCOMPARE(column(w->DestChannels(), 2), names("E1-4 B3-5 E5-17"));
        QCOMPARE(column(src, 2), names("B1-2 B6-20 _ _ _"));
        QCOMPARE(src->topLevelItem(19)->text(1), u"000.000000"_s);
        QVERIFY(src->selectedItems().isEmpty());
        QCOMPARE(f.shown(4), u"E5"_s); // not saved yet

        const ChannelRec moved = f.ctx.cur().Banks[2].Chans[3];
        QTest::mouseClick(w->SaveBtn(), Qt::LeftButton);
        QVERIFY(!w->SaveBtn()->isEnabled());
        QCOMPARE(f.ctx.cur().Banks[5].Chans[5], moved);
        QCOMPARE(f.ctx.cur().Banks[2].Chans[18], ChannelRec{});
        QVERIFY(f.ctx.cur().Banks[2].Changed && f.ctx.cur().Banks[5].Changed);
        QCOMPARE(f.shown(4), u"B3"_s);
        w->close();
        QVERIFY(!f.item("OrganizeChansMenuItem")->isChecked());
    }

    void csvImport() {
        Gui f;
        f.ctx.settings.pos(WindowId::CSV) = {600, 900};
        f.form.BankTab()->setCurrentIndex(2);
        const QString path = f.dir.filePath(u"air.csv"_s);
        writeFile(path, "\xEF\xBB\xBF"
                        "Freq,Name,Delay,\r\n118.100000,Tower,True\r\n121.500000,Guard,False\r\n");
        FrmCsvImport* w = f.open<FrmCsvImport>("CsvImportMenuItem");
        QVERIFY(w);
        QCOMPARE(w->pos(), QPoint(60, 40)); // twips
        QVERIFY(!w->BankBtn(1)->isEnabled() && !w->BankBtn(2)->isEnabled());

        f.prompts.queueFile(path);
        QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
        const FileDialogOptions& dialog = f.prompts.dialogs().value(0);
        QCOMPARE(dialog.title, u"Import Bank from CSV"_s);
        QCOMPARE(dialog.pattern, u"*.csv"_s);
        QCOMPARE(w->CboList1(0)->count(), 4);
        QCOMPARE(w->CboList1(0)->item(0)->text(), u"> Default <"_s);
        QCOMPARE(w->CboList1(4)->item(3)->text(), u"Column 3"_s);
        QCOMPARE(w->Text1(0)->text(), u"Freq"_s);         // the first line is shown
        QTest::mouseClick(w->BankBtn(1), Qt::LeftButton); // "Show Next Line"
        QCOMPARE(w->Text1(1)->text(), u"Tower"_s);

        // Description: Column 2, Frequency: Column 1, Delay: Column 3.
        for (auto [list, entry] : {std::pair{0, 2}, {1, 1}, {2, 3}})
            w->CboList1(list)->scrollToItem(w->CboList1(list)->item(entry),
                                            QAbstractItemView::PositionAtTop);
        QCOMPARE(w->choice(0, 0), 2);
        QCOMPARE(w->choice(0, 3), 0);
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(f.prompts.messages().value(0).text,
                 u"OverWrite *ALL* Data in the Current Bank?"_s);
        QCOMPARE(f.shown(0), u"Tower"_s);
        QCOMPARE(f.shown(0, 1), u"118.100000"_s);
        QVERIFY(f.ctx.cur().Banks[3].Chans[1].Delay);
        QCOMPARE(f.shown(1), u"Guard"_s);
        QCOMPARE(f.shown(2), u"C3"_s);
        QCOMPARE(f.ctx.errors.reportCount(), 0);

        w->move(100, 50);
        w->close();
        QVERIFY(!f.item("CsvImportMenuItem")->isChecked());
        QCOMPARE(f.ctx.settings.pos(WindowId::CSV), (WindowPos{750, 1500}));
    }
};

QTEST_MAIN(TestOrganizeWindows)
#include "tst_organize_windows.moc"
