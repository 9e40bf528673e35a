// SPDX-License-Identifier: GPL-3.0-or-later
// The verify window over a bank an import has filled: the 60-character rule, the description
// box's keys, dropping a pending edit, Update, Finish and Abort.
#include "core/appcontext.h"
#include "import/frmverifyrrchan.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

using namespace kestrel;

class TestFrmVerifyRRChan : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
    std::unique_ptr<AppContext> m_ctx;

    static constexpr int kBank = 3;

    BankRec& bank() { return m_ctx->Profiles[2].Banks[kBank]; }

    // An import of count channels into bank 3 of profile 2; slot longSlot gets a description
    // of longLen characters.
    void importInto(int count, int longSlot = 0, int longLen = 0) {
        m_ctx = std::make_unique<AppContext>(m_dir.path());
        m_ctx->CurProfile = 2;
        m_ctx->CurBank = kBank;
        for (int i = 1; i <= count; ++i) {
            ChannelRec& ch = bank().Chans[size_t(i)];
            ch.Freq = 150e6 + i * 12500;
            ch.Desc =
                i == longSlot ? QString(longLen, u'x') : QStringLiteral("Fire-Dispatch-%1").arg(i);
            ch.Imported = true;
        }
        bank().ImportCount = qint16(count);
    }

    static void clickRow(FrmVerifyRRChan& w, int row) {
        QTreeWidget* lv = w.ChanLV();
        QTreeWidgetItem* item = lv->topLevelItem(row);
        lv->scrollToItem(item);
        QTest::mouseClick(lv->viewport(), Qt::LeftButton, {}, lv->visualItemRect(item).center());
    }

    static void showActive(QWidget& w) {
        w.show();
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
    }

private Q_SLOTS:
    void lengthRule_data() {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("finish");
        QTest::newRow("60 passes") << 60 << true;
        QTest::newRow("61 holds Finish") << 61 << false;
    }
    void lengthRule() {
        QFETCH(int, length);
        QFETCH(bool, finish);
        importInto(20, 18, length);
        FrmVerifyRRChan w(*m_ctx);
        w.resize(500, 200);
        showActive(w);
        QTreeWidget* lv = w.ChanLV();
        QCOMPARE(lv->topLevelItemCount(), 20);
        QCOMPARE(lv->topLevelItem(17)->text(0), QStringLiteral("18"));
        QCOMPARE(lv->topLevelItem(0)->text(1), QStringLiteral("150.012500"));
        QCOMPARE(lv->currentItem(), lv->topLevelItem(0));
        QVERIFY(!w.ChanDescTxt()->isEnabled());
        QCOMPARE(w.FinishBtn()->isEnabled(), finish);
        const QRect row = lv->visualItemRect(lv->topLevelItem(17));
        QCOMPARE(lv->viewport()->rect().intersects(row), !finish);

        // Cutting the long one to 60 characters and updating lets the bank be accepted.
        clickRow(w, 17);
        QVERIFY(w.ChanDescTxt()->isEnabled());
        QTest::keyClick(w.ChanDescTxt(), Qt::Key_End);
        for (int i = 59; i < length; ++i)
            QTest::keyClick(w.ChanDescTxt(), Qt::Key_Backspace);
        QTest::keyClicks(w.ChanDescTxt(), "-");
        QVERIFY(w.UpdateDescBtn()->isEnabled());
        QTest::mouseClick(w.UpdateDescBtn(), Qt::LeftButton);
        QCOMPARE(bank().Chans[18].Desc.size(), 60);
        QCOMPARE(lv->topLevelItem(17)->text(4), bank().Chans[18].Desc);
        QVERIFY(!w.ChanDescTxt()->isEnabled() && !w.UpdateDescBtn()->isEnabled());
        QVERIFY(w.FinishBtn()->isEnabled());
        QVERIFY(!bank().Changed);
    }

    void descriptionKeys_data() {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("comma") << "Fire,EMS"
                               << "FireEMS";
        QTest::newRow("double quote") << "\"Main\""
                                      << "Main";
        QTest::newRow("accepted marks") << "#1+2-3~!"
                                        << "#1+2-3~!";
        QTest::newRow("blank and backspace") << "ab c\bd"
                                             << "ab d";
    }
    void descriptionKeys() {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        importInto(2);
        FrmVerifyRRChan w(*m_ctx);
        showActive(w);
        clickRow(w, 1);
        w.ChanDescTxt()->selectAll();
        QTest::keyClicks(w.ChanDescTxt(), typed.toLatin1().constData());
        QCOMPARE(w.ChanDescTxt()->text(), shown);
        // A paste takes the same characters only.
        QGuiApplication::clipboard()->setText(QStringLiteral(",\"é*"));
        QTest::keyClick(w.ChanDescTxt(), Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(w.ChanDescTxt()->text(), shown + u'*');
    }

    void otherRowDropsPendingEdit() {
        importInto(3);
        FrmVerifyRRChan w(*m_ctx);
        showActive(w);
        clickRow(w, 0);
        QTest::keyClicks(w.ChanDescTxt(), "-Pending");
        QVERIFY(w.UpdateDescBtn()->isEnabled());
        clickRow(w, 2);
        QCOMPARE(w.ChanDescTxt()->text(), QStringLiteral("Fire-Dispatch-3"));
        QCOMPARE(bank().Chans[1].Desc, QStringLiteral("Fire-Dispatch-1"));
        QCOMPARE(w.ChanLV()->topLevelItem(0)->text(4), QStringLiteral("Fire-Dispatch-1"));
    }

    void finishAndAbort_data() {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("changed");
        QTest::newRow("Finish") << "FinishBtn" << true;
        QTest::newRow("Abort") << "AbortBtn" << false;
    }
    void finishAndAbort() {
        QFETCH(QString, button);
        QFETCH(bool, changed);
        importInto(4);
        const BankRec imported = bank();
        FrmVerifyRRChan w(*m_ctx);
        QSignalSpy closed(&w, &FrmVerifyRRChan::closed);
        showActive(w);
        w.move(100, 50); // where the whole window shows on the 800 x 600 test screen
        QTest::mouseClick(w.findChild<QPushButton*>(button), Qt::LeftButton);
        QVERIFY(!w.isVisible() && !w.isOpen());
        QCOMPARE(closed.count(), 1);
        QCOMPARE(closed.at(0).at(0).toBool(), changed);
        QCOMPARE(m_ctx->Profiles[2].Changed, false);
        QCOMPARE(bank().Changed, changed);
        QCOMPARE(m_ctx->Profiles[0].Changed, changed);
        QVERIFY(bank().Chans == imported.Chans);
        // The window's place is kept for the next time (in twips).
        FrmVerifyRRChan again(*m_ctx);
        QCOMPARE(again.pos(), QPoint(100, 50));
    }
};

QTEST_MAIN(TestFrmVerifyRRChan)
#include "tst_frmverifyrrchan.moc"
