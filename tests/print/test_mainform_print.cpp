// SPDX-License-Identifier: GPL-3.0-or-later
// Printing from the main window: the channel list's "Print" button and "&Print Current Bank" on
// a bank tab and on the search tab open the preview with the list on screen and its title; the
// menu item's mark shows while the preview is open, and the preview's place is remembered.
#include "pdftext.h"
#include "testsupport.h"

#include "core/files.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"
#include "print/frmprntprev.h"

#include <QAction>
#include <QApplication>
#include <QBuffer>
#include <QPdfWriter>
#include <QPushButton>
#include <QTabBar>
#include <QTest>
#include <QTimer>

using namespace kestrel;

namespace {

// What the open preview showed, read while it is open.
struct Seen {
    bool open = false;
    QString title;
    int items = 0;
    int pages = 0;
    int maxRows = 0;
    bool itemChecked = false;
    QString lastPageText;
};

} // namespace

class TestMainFormPrint : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    ScriptedPrompts m_prompts{Answer::Yes};
    std::unique_ptr<AppContext> m_ctx;
    std::unique_ptr<MainForm> m_form;

    // Runs `open` and, once the modal preview is up, records what it shows (its last page
    // printed to a PDF) and closes it.
    Seen whilePreviewOpen(const std::function<void()>& open) {
        Seen seen;
        QTimer::singleShot(0, this, [&] {
            auto* preview = qobject_cast<FrmPrntPrev*>(QApplication::activeModalWidget());
            if (preview == nullptr)
                return;
            seen.open = true;
            seen.title = preview->description();
            seen.items = preview->itemCount();
            seen.pages = preview->pageCount();
            seen.maxRows = preview->maxRows();
            seen.itemChecked = m_form->menuItem(QStringLiteral("PrintBankMenuItem"))->isChecked();
            const QString pdf = m_dir.filePath(QStringLiteral("last.pdf"));
            {
                QPdfWriter writer(pdf);
                preview->PrintPages(writer, preview->pageCount(), preview->pageCount());
            }
            seen.lastPageText = test::pdfText(pdf);
            preview->move(preview->pos() + QPoint(40, 20));
            preview->reject();
        });
        open();
        return seen;
    }

private Q_SLOTS:
    void init() {
        m_ctx = std::make_unique<AppContext>(m_dir.path(), &m_prompts);
        MakeBanksDir(*m_ctx);
        Load_Profiles(*m_ctx);
        m_form = std::make_unique<MainForm>(*m_ctx);
        m_form->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    }
    void cleanup() {
        m_form.reset();
        m_ctx.reset();
    }

    void printAllChannels() {
        // An edit made on the bank panel shows in the printed channel list.
        m_ctx->cur().Banks[10].Chans[20].Desc = QStringLiteral("Edited Last");
        m_form->menuItem(QStringLiteral("ShowAllChanMenuItem"))->trigger();
        QPushButton* button = m_form->PtintChansBtn();
        QVERIFY(button->isEnabled());
        QVERIFY(button->isVisible());
        const Seen seen = whilePreviewOpen([&] { QTest::mouseClick(button, Qt::LeftButton); });
        QVERIFY(seen.open);
        QCOMPARE(seen.title, QStringLiteral("All Channels For Main"));
        QCOMPARE(seen.items, 200);
        QCOMPARE(seen.pages, 4);
        QCOMPARE(seen.maxRows, 50);
        QVERIFY(seen.lastPageText.contains(QStringLiteral("Page: 4 of 4")));
        QVERIFY(seen.lastPageText.contains(QStringLiteral("All Channels For Main")));
        static const QRegularExpression row(QStringLiteral("200\\s+\\S+\\s+Edited Last"));
        QVERIFY(row.match(seen.lastPageText).hasMatch());
        QCOMPARE(m_ctx->errors.reportCount(), 0);
    }

    void printCurrentBank_data() {
        QTest::addColumn<int>("tab");
        QTest::addColumn<int>("items");
        QTest::addColumn<QString>("lastRow");
        QTest::newRow("bank 1") << 0 << 20 << QStringLiteral("020");
        QTest::newRow("bank 7") << 6 << 20 << QStringLiteral("140");
        QTest::newRow("search ranges") << 10 << 10 << QStringLiteral("10");
    }
    void printCurrentBank() {
        QFETCH(int, tab);
        QFETCH(int, items);
        QFETCH(QString, lastRow);
        QTabBar* tabs = m_form->BankTab();
        tabs->setCurrentIndex(tab);
        QCOMPARE(int(m_ctx->CurBank), tab + 1);
        const QString title =
            tab == 10 ? m_ctx->cur().SrchName : m_ctx->cur().Banks[tab + 1].FileName;
        QVERIFY(!title.isEmpty());
        QAction* item = m_form->menuItem(QStringLiteral("PrintBankMenuItem"));
        QVERIFY(item->isEnabled());
        QVERIFY(!item->isChecked());

        const Seen seen = whilePreviewOpen([&] { item->trigger(); });
        QVERIFY(seen.open);
        QCOMPARE(seen.title, title);
        QCOMPARE(seen.items, items);
        QCOMPARE(seen.pages, 1);
        QCOMPARE(seen.maxRows, 50);
        QVERIFY(seen.itemChecked);
        QVERIFY(!item->isChecked());
        QVERIFY(seen.lastPageText.contains(title));
        QVERIFY(seen.lastPageText.contains(QStringLiteral("Page: 1 of 1")));
        static const QRegularExpression rowStart(QStringLiteral("(?m)^\\s*(\\d{2,3})\\s"));
        QStringList numbers;
        for (auto it = rowStart.globalMatch(seen.lastPageText); it.hasNext();)
            numbers << it.next().captured(1);
        QCOMPARE(numbers.size(), items);
        QCOMPARE(numbers.last(), lastRow);
        if (tab == 10)
            QVERIFY(seen.lastPageText.contains(QStringLiteral("Lower")));
    }

    void previewPlaceRemembered() {
        m_ctx->settings.pos(WindowId::PP) = WindowPos{900, 1200}; // twips: (80, 60) pixels
        QAction* item = m_form->menuItem(QStringLiteral("PrintBankMenuItem"));
        const Seen seen = whilePreviewOpen([&] { item->trigger(); });
        QVERIFY(seen.open);
        // The test moved the open preview 40 pixels right and 20 down before closing it.
        QCOMPARE(m_ctx->settings.pos(WindowId::PP), (WindowPos{(60 + 20) * 15, (80 + 40) * 15}));
    }
};

QTEST_MAIN(TestMainFormPrint)
#include "test_mainform_print.moc"
