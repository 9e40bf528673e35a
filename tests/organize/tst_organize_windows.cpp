// SPDX-License-Identifier: GPL-3.0-or-later
// The organize windows and the CSV import window driven offscreen: rows dragged as real
// QMimeData payloads and dropped through the lists' drop handling, tabs, buttons and files.
#include "organize/frmbankedit.h"
#include "organize/frmchnledit.h"
#include "organize/frmcsvimport.h"
#include "organize/xfrlistview.h"

#include "core/files.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QDropEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabBar>
#include <QTest>
#include <QUrl>

using namespace kestrel;
using kestrel::test::writeFile;

namespace {

struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    Fixture() {
        Load_Profiles(ctx);
        MakeBanksDir(ctx);
        for (int b = 1; b <= BankCount; ++b) {
            BankRec& bank = ctx.cur().Banks[b];
            bank.FileName = QString(QLatin1Char(char('A' + b - 1)));
            for (int c = 1; c <= ChansPerBank; ++c) {
                bank.Chans[c] = ChannelRec{};
                bank.Chans[c].Freq = (100 + b) * 1e6 + c * 12500;
                bank.Chans[c].Desc = bank.FileName + QString::number(c);
            }
            Save_BankInfo(ctx, ctx.CurProfile, b, ctx.bankPath(bank.FileName));
        }
        ctx.cur().Changed = false;
    }
};

// Selects the given rows (from 0) and returns what dragging them carries.
QMimeData* dragRows(XfrListView* view, const QList<int>& rows) {
    view->clearSelection();
    for (int r : rows)
        view->topLevelItem(r)->setSelected(true);
    QModelIndexList indexes;
    for (int r : rows)
        indexes.append(view->model()->index(r, 0));
    return view->model()->mimeData(indexes);
}

// Drops the data onto a row the way a drag ending there does (enter, move, drop); true when the
// list took it.
bool dropOn(XfrListView* view, int row, QMimeData* data) {
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

QStringList column(const QTreeWidget* view, int col) {
    QStringList out;
    for (int r = 0; r < view->topLevelItemCount(); ++r)
        out.append(view->topLevelItem(r)->text(col));
    return out;
}

QStringList labelsOf(const QString& letter, const QList<int>& numbers) {
    QStringList out;
    for (int n : numbers)
        out.append(n ? letter + QString::number(n) : QString());
    return out;
}

QList<int> range(int from, int to) {
    QList<int> r;
    for (int i = from; i <= to; ++i)
        r.append(i);
    return r;
}

void chooseEntry(QListWidget* list, int entry) {
    list->scrollToItem(list->item(entry), QAbstractItemView::PositionAtTop);
}

} // namespace

class TestOrganizeWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bankEditDragAndSave();
    void bankEditRefusesOtherDrops_data();
    void bankEditRefusesOtherDrops();
    void bankEditSort();

    void chnlEditMoveBetweenBanks();
    void chnlEditSameBankOnBothSides();
    void chnlEditTabQuestion();

    void csvImportBank();
    void csvImportSearch();
    void csvTooManyColumns();
    void csvWindowPosition();
};

void TestOrganizeWindows::bankEditDragAndSave() {
    Fixture f;
    FrmBankEdit w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.windowTitle(), QStringLiteral("Organize Banks"));
    XfrListView* list = w.SrcBanks();
    QCOMPARE(column(list, 0),
             (QStringList{"01", "02", "03", "04", "05", "06", "07", "08", "09", "10"}));
    QVERIFY(!w.SaveBtn()->isEnabled());

    std::unique_ptr<QMimeData> data(dragRows(list, {4, 5}));
    QCOMPARE(data->text(), QStringLiteral("XFR,05,06"));
    QVERIFY(dropOn(list, 1, data.get()));
    QCOMPARE(column(list, 1).join(QString()), QStringLiteral("AEFBCDGHIJ"));
    QVERIFY(w.SaveBtn()->isEnabled());
    QCOMPARE(f.ctx.cur().Banks[2].FileName, QStringLiteral("B")); // not applied yet

    QSignalSpy applied(&w, &FrmBankEdit::banksApplied);
    QTest::mouseClick(w.SaveBtn(), Qt::LeftButton);
    QCOMPARE(applied.count(), 1);
    QVERIFY(!w.SaveBtn()->isEnabled());
    QCOMPARE(f.ctx.cur().Banks[2].FileName, QStringLiteral("E"));
    QCOMPARE(f.ctx.cur().Banks[2].Chans[7].Desc, QStringLiteral("E7"));
    QCOMPARE(f.ctx.cur().Banks[4].Chans[1].Desc, QStringLiteral("B1"));
    QCOMPARE(f.ctx.errors.reportCount(), 0);
}

void TestOrganizeWindows::bankEditRefusesOtherDrops_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("row");
    QTest::newRow("plain text") << "Bank list from a mail" << 2;
    QTest::newRow("another prefix") << "XFER,05,06" << 2;
    QTest::newRow("onto a dragged row") << "XFR,05,06" << 5;
    QTest::newRow("empty text") << "" << 2;
    QTest::newRow("no text at all") << "" << -1;
}

void TestOrganizeWindows::bankEditRefusesOtherDrops() {
    QFETCH(QString, text);
    QFETCH(int, row);
    Fixture f;
    FrmBankEdit w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    bool accepted = false;
    if (row < 0) {
        QMimeData urls;
        urls.setUrls({QUrl::fromLocalFile(f.dir.filePath(QStringLiteral("x.BKE")))});
        accepted = dropOn(w.SrcBanks(), 2, &urls);
    } else {
        accepted = dropText(w.SrcBanks(), row, text);
    }
    QVERIFY(!accepted);
    QCOMPARE(column(w.SrcBanks(), 1).join(QString()), QStringLiteral("ABCDEFGHIJ"));
    QVERIFY(!w.SaveBtn()->isEnabled());
}

void TestOrganizeWindows::bankEditSort() {
    Fixture f;
    const QString names = QStringLiteral("dCbaBADcEe");
    for (int b = 1; b <= BankCount; ++b)
        f.ctx.cur().Banks[b].FileName = names.mid(b - 1, 1);
    FrmBankEdit w(f.ctx);
    w.show();
    QTest::mouseClick(w.SrcSortByDescBtn(), Qt::LeftButton);
    QCOMPARE(column(w.SrcBanks(), 1).join(QString()), QStringLiteral("ABCDEabcde"));
    QCOMPARE(column(w.SrcBanks(), 0).first(), QStringLiteral("01"));
    QVERIFY(w.SaveBtn()->isEnabled());
}

void TestOrganizeWindows::chnlEditMoveBetweenBanks() {
    Fixture f;
    FrmChnlEdit w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.windowTitle(), QStringLiteral("Organize Channels"));
    QCOMPARE(w.SrcBankSelTab()->count(), 10);
    QCOMPARE(w.SrcBankSelTab()->tabText(4), QStringLiteral("E"));
    QVERIFY(!w.SaveBtn()->isEnabled());

    w.SrcBankSelTab()->setCurrentIndex(1);
    w.DestBankSelTab()->setCurrentIndex(4);
    QCOMPARE(column(w.SrcChannels(), 0).first(), QStringLiteral("21"));
    QCOMPARE(column(w.DestChannels(), 0).last(), QStringLiteral("100"));

    std::unique_ptr<QMimeData> data(dragRows(w.SrcChannels(), {2, 3, 4}));
    QCOMPARE(data->text(), QStringLiteral("XFR,23,24,25"));
    QVERIFY(dropOn(w.DestChannels(), 4, data.get()));
    QCOMPARE(column(w.DestChannels(), 2),
             labelsOf("E", range(1, 4)) + labelsOf("B", {3, 4, 5}) + labelsOf("E", range(5, 17)));
    QCOMPARE(column(w.SrcChannels(), 2),
             labelsOf("B", QList<int>{1, 2} + range(6, 20)) + labelsOf("B", {0, 0, 0}));
    QCOMPARE(column(w.SrcChannels(), 1).last(), QStringLiteral("000.000000"));
    QVERIFY(w.SrcChannels()->selectedItems().isEmpty());
    QVERIFY(w.SaveBtn()->isEnabled());
    QCOMPARE(f.ctx.cur().Banks[5].Chans[5].Desc, QStringLiteral("E5"));

    QSignalSpy saved(&w, &FrmChnlEdit::channelsSaved);
    QTest::mouseClick(w.SaveBtn(), Qt::LeftButton);
    QCOMPARE(saved.count(), 1);
    QCOMPARE(f.ctx.cur().Banks[5].Chans[5].Desc, QStringLiteral("B3"));
    QCOMPARE(f.ctx.cur().Banks[2].Chans[18], ChannelRec{});
    QVERIFY(f.ctx.cur().Banks[2].Changed && f.ctx.cur().Banks[5].Changed);
}

void TestOrganizeWindows::chnlEditSameBankOnBothSides() {
    Fixture f;
    FrmChnlEdit w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    w.SrcBankSelTab()->setCurrentIndex(3);
    w.DestBankSelTab()->setCurrentIndex(3);
    std::unique_ptr<QMimeData> data(dragRows(w.SrcChannels(), {1, 2}));
    QCOMPARE(data->text(), QStringLiteral("XFR,62,63"));
    // Onto one of the dragged rows: refused on either list.
    QVERIFY(!dropOn(w.DestChannels(), 2, data.get()));
    QVERIFY(!dropOn(w.SrcChannels(), 1, data.get()));
    QVERIFY(dropOn(w.DestChannels(), 5, data.get()));
    const QStringList expected = labelsOf("D", QList<int>{1, 4, 5, 6, 2, 3} + range(7, 20));
    QCOMPARE(column(w.SrcChannels(), 2), expected);
    QCOMPARE(column(w.DestChannels(), 2), expected);
    // And within the source list: row 20 up to the top.
    QVERIFY(dropText(w.SrcChannels(), 0, QStringLiteral("XFR,80")));
    QCOMPARE(column(w.SrcChannels(), 2).first(), QStringLiteral("D20"));
    QTest::mouseClick(w.SaveBtn(), Qt::LeftButton);
    QCOMPARE(f.ctx.cur().Banks[4].Chans[1].Desc, QStringLiteral("D20"));
    QCOMPARE(column(w.DestChannels(), 2), column(w.SrcChannels(), 2));
}

void TestOrganizeWindows::chnlEditTabQuestion() {
    Fixture f;
    FrmChnlEdit w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    w.SrcBankSelTab()->setCurrentIndex(1);
    QVERIFY(f.prompts.messages().isEmpty());
    QTest::mouseClick(w.SrcSortByDescBtn(), Qt::LeftButton);
    const QStringList sorted = column(w.SrcChannels(), 2);
    QCOMPARE(sorted.mid(0, 3), (QStringList{"B1", "B10", "B11"}));

    QSignalSpy saved(&w, &FrmChnlEdit::channelsSaved);
    f.prompts.queueAnswer(Answer::Cancel);
    w.SrcBankSelTab()->setCurrentIndex(6);
    QCOMPARE(f.prompts.messages().size(), 1);
    QCOMPARE(f.prompts.messages()[0].text,
             QStringLiteral("Do You Want to Save the Current Bank First?"));
    QCOMPARE(w.SrcBankSelTab()->currentIndex(), 1);
    QCOMPARE(column(w.SrcChannels(), 2), sorted);
    QVERIFY(w.SaveBtn()->isEnabled());

    f.prompts.queueAnswer(Answer::Yes);
    w.SrcBankSelTab()->setCurrentIndex(6);
    QCOMPARE(f.prompts.messages().size(), 2);
    QCOMPARE(w.SrcBankSelTab()->currentIndex(), 6);
    QCOMPARE(column(w.SrcChannels(), 2), labelsOf("G", range(1, 20)));
    QCOMPARE(f.ctx.cur().Banks[2].Chans[2].Desc, QStringLiteral("B10"));
    QCOMPARE(saved.count(), 1);
    QVERIFY(!w.SaveBtn()->isEnabled());

    // No unsaved changes now: no question.
    w.SrcBankSelTab()->setCurrentIndex(2);
    QCOMPARE(f.prompts.messages().size(), 2);

    // No: the sorted bank 3 is dropped, nothing reaches the profile.
    QTest::mouseClick(w.SrcSortByDescBtn(), Qt::LeftButton);
    f.prompts.queueAnswer(Answer::No);
    w.SrcBankSelTab()->setCurrentIndex(0);
    QCOMPARE(f.prompts.messages().size(), 3);
    QCOMPARE(w.SrcBankSelTab()->currentIndex(), 0);
    QCOMPARE(f.ctx.cur().Banks[3].Chans[2].Desc, QStringLiteral("C2"));
    QCOMPARE(saved.count(), 1);
    QVERIFY(!w.SaveBtn()->isEnabled());
}

void TestOrganizeWindows::csvImportBank() {
    Fixture f;
    f.ctx.CurBank = 3;
    const QString path = f.dir.filePath(QStringLiteral("air.csv"));
    writeFile(path, "\xEF\xBB\xBF"
                    "Freq,Name,Delay,\r\n"
                    "118.100000,Tower,True\r\n"
                    "121.500000,Guard,False\r\n"
                    "146.52,Short,True\r\n");
    FrmCsvImport w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.mode(), 0);
    QVERIFY(!w.BankBtn(1)->isEnabled() && !w.BankBtn(2)->isEnabled());

    f.prompts.queueFile(path);
    QTest::mouseClick(w.BankBtn(0), Qt::LeftButton);
    QCOMPARE(f.prompts.dialogs().size(), 1);
    QCOMPARE(f.prompts.dialogs()[0].title, QStringLiteral("Import Bank from CSV"));
    QCOMPARE(f.prompts.dialogs()[0].pattern, QStringLiteral("*.csv"));
    QCOMPARE(f.prompts.dialogs()[0].defaultExt, QStringLiteral("csv"));
    QCOMPARE(f.prompts.dialogs()[0].startDir, f.ctx.appDir());
    QCOMPARE(w.CboList1(0)->count(), 4);
    QCOMPARE(w.CboList1(0)->item(0)->text(), QStringLiteral("> Default <"));
    QCOMPARE(w.CboList1(4)->item(3)->text(), QStringLiteral("Column 3"));
    QCOMPARE(w.Text1(0)->text(), QStringLiteral("Freq"));
    QCOMPARE(w.Text1(3)->text(), QString());
    QVERIFY(w.BankBtn(1)->isEnabled() && w.BankBtn(2)->isEnabled());

    QTest::mouseClick(w.BankBtn(1), Qt::LeftButton);
    QCOMPARE(w.Text1(1)->text(), QStringLiteral("Tower"));

    chooseEntry(w.CboList1(0), 2); // Description: Column 2
    chooseEntry(w.CboList1(1), 1); // Frequency: Column 1
    chooseEntry(w.CboList1(2), 3); // Delay: Column 3
    QCOMPARE(w.choice(0, 0), 2);
    QCOMPARE(w.choice(0, 1), 1);
    QCOMPARE(w.choice(0, 3), 0);

    QSignalSpy imported(&w, &FrmCsvImport::bankImported);
    QTest::mouseClick(w.BankBtn(2), Qt::LeftButton);
    QCOMPARE(imported.count(), 1);
    QVERIFY(!w.BankBtn(1)->isEnabled());
    QCOMPARE(f.prompts.messages().last().text,
             QStringLiteral("OverWrite *ALL* Data in the Current Bank?"));
    const BankRec& bank = f.ctx.cur().Banks[3];
    QCOMPARE(bank.Chans[1].Desc, QStringLiteral("Tower"));
    QCOMPARE(bank.Chans[1].Freq, 118100000.0);
    QVERIFY(bank.Chans[1].Delay);
    QCOMPARE(bank.Chans[2].Desc, QStringLiteral("Guard"));
    QVERIFY(!bank.Chans[2].Delay);
    QCOMPARE(bank.Chans[3].Freq, 25000000.0);
    QCOMPARE(bank.Chans[4].Desc, QStringLiteral("C4"));
    QVERIFY(bank.Changed);
    QCOMPARE(f.ctx.errors.reportCount(), 0);
}

void TestOrganizeWindows::csvImportSearch() {
    Fixture f;
    const QString path = f.dir.filePath(QStringLiteral("limits.csv"));
    writeFile(path, "Name,Low,High\nAir,118.000000,137.000000\nHam,144.000000,148.000000\n");
    FrmCsvImport w(f.ctx);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    w.TypeTab()->setCurrentIndex(1);
    QCOMPARE(w.mode(), 1);
    f.prompts.queueFile(path);
    QTest::mouseClick(w.SearchBtn(0), Qt::LeftButton);
    QCOMPARE(f.prompts.dialogs().last().title, QStringLiteral("Import Search Bank from CSV"));
    QCOMPARE(w.Text2(2)->text(), QStringLiteral("High"));
    QCOMPARE(w.CboList1(0)->count(), 0); // the bank frame's lists stay empty
    chooseEntry(w.CboList2(0), 1);
    chooseEntry(w.CboList2(1), 2);
    chooseEntry(w.CboList2(2), 3);
    QTest::mouseClick(w.SearchBtn(1), Qt::LeftButton);
    QCOMPARE(w.Text2(0)->text(), QStringLiteral("Air"));
    QSignalSpy imported(&w, &FrmCsvImport::searchImported);
    QTest::mouseClick(w.SearchBtn(2), Qt::LeftButton);
    QCOMPARE(imported.count(), 1);
    QVERIFY(f.prompts.messages().isEmpty());
    QCOMPARE(f.ctx.cur().Searches[2].Desc, QStringLiteral("Ham"));
    QCOMPARE(f.ctx.cur().Searches[2].Upper, 148000000.0);
    QCOMPARE(f.ctx.cur().Searches[3].Desc, QStringLiteral("Search #3"));
    QVERIFY(QFile::exists(f.ctx.banksDir() + QStringLiteral("/SeachBankTmp.SKE")));
    // The file is closed after the import: "Show Next Line" now fails through the trap.
    QTest::mouseClick(w.SearchBtn(1), Qt::LeftButton);
    QCOMPARE(f.ctx.errors.reportCount(), 1);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("FrmCsvImport -> SearchBtn"));
}

void TestOrganizeWindows::csvTooManyColumns() {
    Fixture f;
    const QString path = f.dir.filePath(QStringLiteral("wide.csv"));
    writeFile(path, "1,2,3,4,5,6,7,8,9,10,11,12\na,b\n");
    FrmCsvImport w(f.ctx);
    w.show();
    f.prompts.queueFile(path);
    QTest::mouseClick(w.BankBtn(0), Qt::LeftButton);
    QCOMPARE(f.ctx.errors.reportCount(), 1);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("FrmCsvImport -> BankBtn"));
    QCOMPARE(w.CboList1(0)->count(), 10); // "> Default <" and Column 1..9 before the failure
    QVERIFY(!w.BankBtn(1)->isEnabled());
    QVERIFY(!w.BankBtn(2)->isEnabled());

    // Ten fields, the last empty: nine columns, but one field more than there are boxes.
    writeFile(path, "1,2,3,4,5,6,7,8,9,\n");
    f.prompts.queueFile(path);
    QTest::mouseClick(w.BankBtn(0), Qt::LeftButton);
    QCOMPARE(f.ctx.errors.reportCount(), 2);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("CSV -> ShowLine"));
    QCOMPARE(w.Text1(8)->text(), QStringLiteral("9"));
    QVERIFY(w.BankBtn(2)->isEnabled());

    // A cancelled dialog changes nothing.
    QTest::mouseClick(w.BankBtn(0), Qt::LeftButton);
    QCOMPARE(f.ctx.errors.reportCount(), 2);
}

void TestOrganizeWindows::csvWindowPosition() {
    Fixture f;
    f.ctx.settings.pos(WindowId::CSV) = {1500, 3000};
    FrmCsvImport w(f.ctx);
    QSignalSpy closed(&w, &FrmCsvImport::closed);
    w.show();
    QVERIFY(QTest::qWaitForWindowExposed(&w));
    QCOMPARE(w.pos(), QPoint(200, 100));
    w.move(300, 150);
    w.close();
    QCOMPARE(closed.count(), 1);
    QCOMPARE(f.ctx.settings.pos(WindowId::CSV), (WindowPos{2250, 4500}));
}

QTEST_MAIN(TestOrganizeWindows)
#include "tst_organize_windows.moc"
