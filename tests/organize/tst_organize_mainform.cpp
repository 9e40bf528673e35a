// SPDX-License-Identifier: GPL-3.0-or-later
// The organizing tools opened from the main window's menus: check marks, one window each, the
// main lists redrawn after a change, the CSV window's place kept, and "CSV &Export...".
#include "organize/csvexport.h"
#include "organize/frmbankedit.h"
#include "organize/frmchnledit.h"
#include "organize/frmcsvimport.h"
#include "organize/xfrlistview.h"

#include "core/files.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>

using namespace kestrel;
using kestrel::test::readFile;
using kestrel::test::writeFile;

namespace {

struct Fixture {
    QTemporaryDir dir;
    ScriptedPrompts prompts{Answer::Yes};
    AppContext ctx{dir.path(), &prompts};
    std::unique_ptr<MainForm> form;
    Fixture() {
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        form = std::make_unique<MainForm>(ctx);
        form->show();
        if (!QTest::qWaitForWindowExposed(form.get()))
            qWarning("main window not exposed");
    }
    QAction* item(const char* name) { return form->menuItem(QString::fromLatin1(name)); }
    template <typename Window> QList<Window*> windows() { return form->findChildren<Window*>(); }
    QString shownDesc(int row) { return form->ChnlsLv()->item(row, 2)->text(); }
};

// Drops a text onto a row of a list, as a drag ending there does.
void dropText(XfrListView* list, int row, const QString& text) {
    QMimeData data;
    data.setText(text);
    const QPoint at = list->visualItemRect(list->topLevelItem(row)).center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list->viewport(), &enter);
    QDropEvent drop(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(list->viewport(), &drop);
}

} // namespace

class TestOrganizeMainForm : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void itemsAreUsable();
    void csvImportWindow();
    void organizeBanksWindow();
    void organizeChannelsWindow();
    void csvExport_data();
    void csvExport();
};

void TestOrganizeMainForm::itemsAreUsable() {
    Fixture f;
    for (const char* name : {"CsvImportMenuItem", "CsvExportMenuItem", "OrganizeBanksMenuItem",
                             "OrganizeChansMenuItem"})
        QVERIFY2(f.item(name) && f.item(name)->isEnabled(), name);
    QCOMPARE(f.item("CsvExportMenuItem")->text(), QStringLiteral("CSV &Export..."));
    // Still usable on the search tab.
    f.form->BankTab()->setCurrentIndex(SearchTab - 1);
    QVERIFY(f.item("CsvImportMenuItem")->isEnabled());
    QVERIFY(f.item("CsvExportMenuItem")->isEnabled());
}

void TestOrganizeMainForm::csvImportWindow() {
    Fixture f;
    f.ctx.settings.pos(WindowId::CSV) = {600, 900};
    QAction* item = f.item("CsvImportMenuItem");
    item->trigger();
    QCOMPARE(f.windows<FrmCsvImport>().size(), 1);
    FrmCsvImport* w = f.windows<FrmCsvImport>().first();
    QVERIFY(QTest::qWaitForWindowExposed(w));
    QVERIFY(item->isChecked());
    QCOMPARE(w->pos(), QPoint(60, 40));
    item->trigger(); // the open window is raised, not doubled
    QCOMPARE(f.windows<FrmCsvImport>().size(), 1);
    QVERIFY(item->isChecked());

    const QString path = f.dir.filePath(QStringLiteral("tower.csv"));
    writeFile(path, "Name,Freq\nTower,118.100000\n");
    f.prompts.queueFile(path);
    QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
    w->CboList1(0)->scrollToItem(w->CboList1(0)->item(1), QAbstractItemView::PositionAtTop);
    w->CboList1(1)->scrollToItem(w->CboList1(1)->item(2), QAbstractItemView::PositionAtTop);
    QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
    QCOMPARE(f.shownDesc(0), QStringLiteral("Tower"));
    QCOMPARE(f.form->ChnlsLv()->item(0, 1)->text(), QStringLiteral("118.100000"));

    w->move(100, 50);
    w->close();
    QVERIFY(!item->isChecked());
    QCOMPARE(f.ctx.settings.pos(WindowId::CSV), (WindowPos{750, 1500}));
    QTRY_COMPARE(f.windows<FrmCsvImport>().size(), 0);
}

void TestOrganizeMainForm::organizeBanksWindow() {
    Fixture f;
    for (int b = 1; b <= BankCount; ++b) // the bank files the new order is loaded from
        Save_BankInfo(f.ctx, 0, b, f.ctx.bankPath(f.ctx.cur().Banks[b].FileName));
    QAction* item = f.item("OrganizeBanksMenuItem");
    item->trigger();
    QVERIFY(item->isChecked());
    QCOMPARE(f.windows<FrmBankEdit>().size(), 1);
    FrmBankEdit* w = f.windows<FrmBankEdit>().first();
    // Bank03 to the top: the bank tabs and the shown bank follow once saved.
    QVERIFY(QTest::qWaitForWindowExposed(w));
    dropText(w->SrcBanks(), 0, QStringLiteral("XFR,03"));
    QTest::mouseClick(w->SaveBtn(), Qt::LeftButton);
    QCOMPARE(f.form->BankTab()->tabText(0), QStringLiteral("Bank03"));
    QCOMPARE(f.form->BankTab()->tabText(1), QStringLiteral("Bank01"));
    QCOMPARE(f.shownDesc(0), QStringLiteral("Chan #041"));
    w->close();
    QVERIFY(!item->isChecked());
}

void TestOrganizeMainForm::organizeChannelsWindow() {
    Fixture f;
    QAction* item = f.item("OrganizeChansMenuItem");
    item->trigger();
    QVERIFY(item->isChecked());
    FrmChnlEdit* w = f.windows<FrmChnlEdit>().first();
    QVERIFY(QTest::qWaitForWindowExposed(w));
    dropText(w->SrcChannels(), 0, QStringLiteral("XFR,20"));
    QCOMPARE(f.shownDesc(0), QStringLiteral("Chan #001")); // not saved yet
    QTest::mouseClick(w->SaveBtn(), Qt::LeftButton);
    QCOMPARE(f.shownDesc(0), QStringLiteral("Chan #020"));
    QCOMPARE(f.shownDesc(1), QStringLiteral("Chan #001"));
    w->close();
    QVERIFY(!item->isChecked());
}

void TestOrganizeMainForm::csvExport_data() {
    QTest::addColumn<int>("tab");
    QTest::newRow("bank 4") << 3;
    QTest::newRow("search ranges") << SearchTab - 1;
}

void TestOrganizeMainForm::csvExport() {
    QFETCH(int, tab);
    Fixture f;
    f.form->BankTab()->setCurrentIndex(tab);
    const QString path = f.dir.filePath(QStringLiteral("out.csv"));
    f.prompts.queueFile(path);
    f.item("CsvExportMenuItem")->trigger();
    QCOMPARE(f.prompts.dialogs().size(), 1);
    const FileDialogSpec& dialog = f.prompts.dialogs().first();
    QCOMPARE(dialog.pattern, QStringLiteral("*.csv"));
    const bool search = tab == SearchTab - 1;
    QCOMPARE(dialog.presetName,
             search ? QStringLiteral("SrchBank00.csv") : QStringLiteral("Bank04.csv"));
    QCOMPARE(readFile(path), search ? SearchCsv(f.ctx.cur()) : BankCsv(f.ctx.cur().Banks[4]));
    QCOMPARE(f.ctx.errors.reportCount(), 0);

    // A cancelled dialog writes nothing; an unwritable place is reported.
    f.item("CsvExportMenuItem")->trigger();
    f.prompts.queueFile(f.dir.filePath(QStringLiteral("no/such/folder/x.csv")));
    f.item("CsvExportMenuItem")->trigger();
    QCOMPARE(f.ctx.errors.reportCount(), 1);
    QCOMPARE(f.ctx.errors.currentLabel(), QStringLiteral("MainForm -> CsvExportMenuItem"));
}

QTEST_MAIN(TestOrganizeMainForm)
#include "tst_organize_mainform.moc"
