// SPDX-License-Identifier: GPL-3.0-or-later
// The organize windows opened from the main window's menus and driven offscreen: rows dragged as
// real QMimeData payloads through the lists' drop handling, the CSV import window, and the main
// window following every change. Then CHIRP's generic CSV in and out, through the windows, the
// library and kestrelctl: a 25-row file imported into the shown bank, the export of a bank against
// its golden file and read back by Location, bad rows importing nothing, the command line.
#include "organize/chirpcsv.h"
#include "organize/csvexport.h"
#include "organize/frmbankedit.h"
#include "organize/frmchnledit.h"
#include "organize/frmcsvimport.h"
#include "organize/xfrlistview.h"

#include "letterbanks.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QCheckBox>
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

// The expected bytes of a golden file; KESTREL_WRITE_GOLDEN=1 writes them anew (review the diff).
QByteArray golden(const QString& name, const QByteArray& made) {
    const QString path = dataPath(u"chirp/"_s + name);
    if (qEnvironmentVariableIsSet("KESTREL_WRITE_GOLDEN"))
        writeFile(path, made);
    return readFile(path);
}

QString report(int imported, int outOfBand, int leftOver) {
    return u"%1 imported, %2 skipped (out of band), %3 left over (bank full)"_s.arg(imported)
        .arg(outOfBand)
        .arg(leftOver);
}

const QString kRadio = dataPath(u"chirp/radio.csv"_s);

} // namespace

class TestOrganizeWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void organizeBanks() {
        Gui f;
        FrmBankEdit* w = f.open<FrmBankEdit>("OrganizeBanksMenuItem");
        QVERIFY(w);
        QCOMPARE(column(w->SrcBanks(), 0), u"01 02 03 04 05 06 07 08 09 10"_s);
        // Files from another program are refused (the payload rules have their own table).
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
        QCOMPARE(w->Text1(0)->text(), u"Freq"_s);         // the first line is shown
        QTest::mouseClick(w->BankBtn(1), Qt::LeftButton); // "Show Next Line"
        QCOMPARE(w->Text1(1)->text(), u"Tower"_s);

        // Description: Column 2, Frequency: Column 1, Delay: Column 3.
        for (auto [list, entry] : {std::pair{0, 2}, {1, 1}, {2, 3}})
            w->CboList1(list)->scrollToItem(w->CboList1(list)->item(entry),
                                            QAbstractItemView::PositionAtTop);
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(f.prompts.messages().value(0).text,
                 u"Overwrite *ALL* Data in the Current Bank?"_s);
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

    void windowsImportExportAndBack() {
        Gui d;
        MainForm& form = d.form;
        form.BankTab()->setCurrentIndex(2); // bank 3
        FrmCsvImport* w = d.open<FrmCsvImport>("CsvImportMenuItem");
        QVERIFY(w);
        const auto load = [&](const QString& path) {
            d.prompts.queueFile(path);
            QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
        };
        load(kRadio); // no columns to choose
        QVERIFY(w->isChirp() && w->LocationChk()->isEnabled() && !w->CboList1(0)->isEnabled());
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(d.prompts.messages().value(1).text, report(20, 1, 4));
        BankRec& bank = d.ctx.cur().Banks[3];
        QCOMPARE(BankCsv(bank), golden(u"radio-bank3.csv"_s, BankCsv(bank)));
        QCOMPARE(form.ChnlsLv()->item(2, 2)->text(),
                 u"Fire; East"_s); // the bank file splits at ","

        // Exported as CHIRP's kind of file, with two channels emptied: they are left out.
        bank.Chans[6].Freq = bank.Chans[11].Freq = 0;
        bank.Chans[9].Lockout = bank.Chans[9].Priority = true; // "S" wins
        const QString out = d.dir.filePath(u"out.csv"_s);
        d.prompts.queueFile(out);
        d.prompts.queueFilter(QString::fromLatin1(kChirpExportFilter));
        form.menuItem(u"CsvExportMenuItem"_s)->trigger();
        QCOMPARE(readFile(out), golden(u"bank3-export.csv"_s, readFile(out)));

        // Read back with the check box into an emptied bank: each channel in its place again.
        bank.Chans[9].Priority = false;
        BankRec expected = bank;
        bank.Chans.fill(ChannelRec{});
        expected.Chans[6] = expected.Chans[11] = ChannelRec{};
        load(out);
        QTest::mouseClick(w->LocationChk(), Qt::LeftButton);
        QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
        QCOMPARE(d.prompts.messages().value(3).text, report(18, 0, 0));
        QCOMPARE(bank.Chans, expected.Chans);

        // The first kind of file, unless another is chosen; an ordinary file has columns again.
        d.prompts.queueFile(out);
        form.menuItem(u"CsvExportMenuItem"_s)->trigger();
        QVERIFY(readFile(out).startsWith(CsvHeader(CsvMode::Bank).toUtf8()));
        load(out);
        QVERIFY(!w->isChirp() && !w->LocationChk()->isEnabled() && w->CboList1(0)->isEnabled());
        QCOMPARE(d.ctx.errors.reportCount(), 0);
    }

    void badRowImportsNothing_data() {
        QTest::addColumn<QByteArray>("rows");
        QTest::addColumn<QString>("why");
        QTest::newRow("frequency") << QByteArray("0,A,146.52\n1,B,abc\n")
                                   << "line 3: the frequency \"abc\" is not a number";
        QTest::newRow("location twice")
            << QByteArray("4,A,146.52\n4,B,146.52\n") << "line 3: Location 4 is given twice";
    }

    void badRowImportsNothing() {
        QFETCH(QByteArray, rows);
        QFETCH(QString, why);
        LetterBanks d;
        const ProfileRec before = d.ctx.cur();
        writeFile(d.dir.filePath(u"in.csv"_s), "Location,Name,Frequency\n" + rows);
        QVERIFY(!ImportChirp(d.ctx, d.ctx.CurProfile, d.ctx.CurBank, d.dir.filePath(u"in.csv"_s),
                             ChirpPlacement::ByLocation));
        for (int b = 1; b <= BankCount; ++b)
            QCOMPARE(d.ctx.cur().Banks[b].Chans, before.Banks[b].Chans);
        QVERIFY(!d.ctx.cur().Changed);
        QVERIFY2(d.prompts.messages().last().text.contains(why),
                 qPrintable(d.prompts.messages().last().text));
    }

    void commandLine() {
        QTemporaryDir dir;
        const auto run = [&](const QStringList& args) {
            return runKestrelctl(QStringList{u"--data-dir"_s, dir.path()} + args);
        };
        ProcessResult r = run({u"import-csv"_s, u"--bank-from-location"_s, kRadio});
        QCOMPARE(r.exitCode, 0);
        QVERIFY2(r.err.contains(report(24, 1, 0).toUtf8()), r.err.constData());
        // Saved across banks: Location 20 is channel 21, slot 1 of bank 2.
        r = run({u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--bank"_s, u"2"_s});
        QVERIFY(
            r.out.contains("\n20,Ham 6m,52.525000,,0.000000,,88.5,88.5,023,NN,FM,5.00,,,,,,\n"));

        const QMap<QString, QByteArray> saved = snapshotTree(dir.path());
        for (const QStringList& args :
             {QStringList{u"import-csv"_s, u"--bank-from-location"_s,
                          dataPath(u"bank-roundtrip.BKE"_s)},
              {u"import-csv"_s, u"--search"_s, kRadio},
              {u"export-csv"_s, u"--format"_s, u"chirp"_s, u"--search"_s}})
            QCOMPARE(run(args).exitCode, 1);
        QVERIFY(changedFiles(saved, snapshotTree(dir.path())).isEmpty());
    }
};

QTEST_MAIN(TestOrganizeWindows)
#include "tst_organize_windows.moc"
