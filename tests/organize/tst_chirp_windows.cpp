// SPDX-License-Identifier: GPL-3.0-or-later
// CHIRP files through the windows, offscreen: the CSV Import window recognises one and imports
// it into the shown bank or, with its check box, by Location; the CSV export writes one when that
// kind of file is chosen.
#include "organize/chirpcsv.h"
#include "organize/csvexport.h"
#include "organize/frmcsvimport.h"

#include "letterbanks.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "testsupport.h"

#include <QAction>
#include <QCheckBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestChirpWindows : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void importWindow();
    void exportChoice();
};

namespace {
struct Gui : LetterBanks {
    MainForm form{ctx};
    Gui() {
        form.findChild<KestrelComm*>()->setTimeScale(0.01);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        form.BankTab()->setCurrentIndex(2); // bank 3
    }
    QString shown(int row) { return form.ChnlsLv()->item(row, 2)->text(); }
};
} // namespace

void TestChirpWindows::importWindow() {
    Gui f;
    f.form.menuItem(u"CsvImportMenuItem"_s)->trigger();
    auto* w = f.form.findChild<FrmCsvImport*>();
    QVERIFY(w);
    QVERIFY(!w->LocationChk()->isEnabled());
    const QString radio = dataPath(u"chirp/radio.csv"_s);

    f.prompts.queueFile(radio);
    QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
    QVERIFY(w->isChirp());
    QVERIFY(w->LocationChk()->isEnabled() && !w->CboList1(0)->isEnabled());
    QCOMPARE(w->Text1(2)->text(), u"Frequency"_s);
    QTest::mouseClick(w->BankBtn(1), Qt::LeftButton);
    QCOMPARE(w->Text1(1)->text(), u"Tower"_s);
    QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
    QCOMPARE(f.prompts.messages().value(1).text,
             u"20 imported, 1 skipped (out of band), 4 left over (bank full)"_s);
    QCOMPARE(f.shown(0), u"Tower"_s);
    QCOMPARE(f.shown(2), u"Fire, East"_s);
    QCOMPARE(f.ctx.cur().Banks[1].Chans[1].Desc, u"A1"_s);

    // By Location: row 0 into channel 1, whatever bank is shown.
    f.prompts.queueFile(radio);
    QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
    QTest::mouseClick(w->LocationChk(), Qt::LeftButton);
    QTest::mouseClick(w->BankBtn(2), Qt::LeftButton);
    QCOMPARE(f.prompts.messages().value(3).text,
             u"24 imported, 1 skipped (out of band), 0 left over (bank full)"_s);
    QCOMPARE(f.ctx.cur().Banks[1].Chans[1].Desc, u"Tower"_s);
    QCOMPARE(f.ctx.cur().Banks[1].Chans[6].Desc, u"A6"_s); // the out-of-band row's channel
    QCOMPARE(f.ctx.cur().Banks[2].Chans[5].Desc, u"Tail"_s);

    // An ordinary file afterwards has its columns chosen again.
    const QString plain = f.dir.filePath(u"plain.csv"_s);
    writeFile(plain, "Name,Freq\nA,146.52\n");
    f.prompts.queueFile(plain);
    QTest::mouseClick(w->BankBtn(0), Qt::LeftButton);
    QVERIFY(!w->isChirp() && !w->LocationChk()->isEnabled() && w->CboList1(0)->isEnabled());
    QCOMPARE(f.ctx.errors.reportCount(), 0);
}

void TestChirpWindows::exportChoice() {
    Gui f;
    const QString path = f.dir.filePath(u"out.csv"_s);
    QAction* item = f.form.menuItem(u"CsvExportMenuItem"_s);
    f.prompts.queueFile(path);
    f.prompts.queueFilter(QString::fromLatin1(kChirpExportFilter));
    item->trigger();
    QVERIFY(f.prompts.dialogs().value(0).pattern.contains(QLatin1String(kChirpExportFilter)));
    QCOMPARE(readFile(path), ChirpCsv(f.ctx.cur().Banks[3], 3));
    QVERIFY(readFile(path).contains("\n40,C1,"));

    f.prompts.queueFile(path); // the first kind, unless another is chosen
    item->trigger();
    QCOMPARE(readFile(path), BankCsv(f.ctx.cur().Banks[3]));
    QCOMPARE(f.ctx.errors.reportCount(), 0);
}

QTEST_MAIN(TestChirpWindows)
#include "tst_chirp_windows.moc"
