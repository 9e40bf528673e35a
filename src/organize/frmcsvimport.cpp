// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmcsvimport.h"

#include "chirpcsv.h"
#include "core/prompts.h"
#include "core/settings.h"

#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabBar>
#include <QVBoxLayout>

namespace kestrel {

namespace {

constexpr int kTwipsPerPixel = 15;

// A list one entry high, scrolled entry by entry: what shows is what is chosen.
QListWidget* oneLineList(QWidget* parent) {
    auto* list = new QListWidget(parent);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setSelectionMode(QAbstractItemView::NoSelection);
    list->setUniformItemSizes(true);
    list->addItem(CsvColumnName(0)); // measures one entry
    const int row = list->sizeHintForRow(0);
    list->clear();
    list->setFixedHeight(row + 2 * list->frameWidth());
    return list;
}

} // namespace

FrmCsvImport::FrmCsvImport(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_import(ctx) {
    setObjectName(QStringLiteral("FrmCsvImport"));
    setWindowTitle(QStringLiteral("CSV Import"));
    m_typeTab = new QTabBar(this);
    m_typeTab->setObjectName(QStringLiteral("TypeTab"));
    m_typeTab->addTab(QStringLiteral("Bank Import"));
    m_typeTab->addTab(QStringLiteral("Search Limits Import"));
    m_stack = new QStackedWidget(this);
    m_stack->addWidget(makeFrame(0, QStringLiteral("Bank Import"),
                                 {QStringLiteral("Descripton"), QStringLiteral("Frequency"),
                                  QStringLiteral("Delay"), QStringLiteral("Lock-Out"),
                                  QStringLiteral("Priority")}));
    m_stack->addWidget(makeFrame(1, QStringLiteral("Search Limits Import"),
                                 {QStringLiteral("Descripton"), QStringLiteral("Lower Frequency"),
                                  QStringLiteral("Upper Frequency")}));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_typeTab);
    layout->addWidget(m_stack);
    connect(m_typeTab, &QTabBar::currentChanged, m_stack, &QStackedWidget::setCurrentIndex);
    Load();
}

QWidget* FrmCsvImport::makeFrame(int mode, const QString& title, const QStringList& labels) {
    Frame& f = m_frames[mode];
    const QString prefix = mode == 0 ? QStringLiteral("Bank") : QStringLiteral("Search");
    const QString suffix = mode == 0 ? QStringLiteral("1") : QStringLiteral("2");
    auto* frame = new QGroupBox(title);
    const QString captions[3] = {QStringLiteral("Load CSV File"), QStringLiteral("Show Next Line"),
                                 mode == 0 ? QStringLiteral("Import To Bank")
                                           : QStringLiteral("Import To Search")};
    auto* buttons = new QHBoxLayout;
    for (int i = 0; i < 3; ++i) {
        f.buttons[i] = new QPushButton(captions[i], frame);
        f.buttons[i]->setObjectName(prefix + QStringLiteral("Btn") + QString::number(i));
        buttons->addWidget(f.buttons[i]);
    }
    connect(f.buttons[0], &QPushButton::clicked, this, [this, mode] { loadFile(mode); });
    connect(f.buttons[1], &QPushButton::clicked, this, [this, mode] { showNextLine(mode); });
    connect(f.buttons[2], &QPushButton::clicked, this, [this, mode] { importFile(mode); });

    auto* fields = new QFormLayout;
    for (qsizetype i = 0; i < labels.size(); ++i) {
        QListWidget* list = oneLineList(frame);
        list->setObjectName(QStringLiteral("CboList") + suffix + QLatin1Char('_') +
                            QString::number(i));
        f.lists.append(list);
        fields->addRow(labels[i], list);
    }
    auto* lineData = new QGroupBox(QStringLiteral("Line Data"), frame);
    auto* grid = new QGridLayout(lineData);
    for (int k = 0; k < kCsvTextBoxes; ++k) {
        f.boxes[k] = new QLineEdit(lineData);
        f.boxes[k]->setReadOnly(true);
        f.boxes[k]->setObjectName(QStringLiteral("Text") + suffix + QLatin1Char('_') +
                                  QString::number(k));
        grid->addWidget(new QLabel(CsvColumnName(k + 1), lineData), k / 3 * 2, k % 3);
        grid->addWidget(f.boxes[k], k / 3 * 2 + 1, k % 3);
    }
    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(buttons);
    layout->addLayout(fields);
    if (mode == 0) {
        m_locationChk =
            new QCheckBox(QStringLiteral("Place CHIRP rows by Location, across banks"), frame);
        m_locationChk->setObjectName(QStringLiteral("LocationChk"));
        layout->addWidget(m_locationChk);
    }
    layout->addWidget(lineData);
    return frame;
}

int FrmCsvImport::mode() const {
    return m_typeTab->currentIndex();
}

int FrmCsvImport::choice(int mode, int field) const {
    const QListWidget* list = m_frames[mode].lists.value(field);
    if (!list || list->count() == 0)
        return 0;
    return list->verticalScrollBar()->value();
}

void FrmCsvImport::Load() {
    Trap(m_ctx.errors, "FrmCsvImport -> Load", [&] {
        const WindowPos& pos = m_ctx.settings.pos(WindowId::CSV);
        move(pos.left / kTwipsPerPixel, pos.top / kTwipsPerPixel);
        m_typeTab->setCurrentIndex(0);
        m_stack->setCurrentIndex(0);
        ClearData();
        m_import.close();
        m_chirp = false;
        m_locationChk->setEnabled(false);
        for (Frame& f : m_frames) {
            f.buttons[1]->setEnabled(false);
            f.buttons[2]->setEnabled(false);
        }
    });
}

void FrmCsvImport::ClearData() {
    Trap(m_ctx.errors, "FrmCsvImport -> ClearData", [&] {
        for (Frame& f : m_frames) {
            for (QListWidget* list : f.lists) {
                list->clear();
                list->setEnabled(true);
            }
        }
    });
}

void FrmCsvImport::ShowLine(const QString& line) {
    Trap(m_ctx.errors, "CSV -> ShowLine", [&] {
        Frame& f = m_frames[mode()];
        std::array<QString, kCsvTextBoxes> boxes;
        if (m_chirp) {
            // A CHIRP row has more columns than boxes: the first ones are shown.
            const QStringList fields = CsvSplit(line);
            for (int k = 0; k < kCsvTextBoxes; ++k)
                f.boxes[k]->setText(fields.value(k));
            return;
        }
        struct Fill {
            Frame& f;
            std::array<QString, kCsvTextBoxes>& boxes;
            ~Fill() {
                for (int k = 0; k < kCsvTextBoxes; ++k)
                    f.boxes[k]->setText(boxes[k]);
            }
        } fill{f, boxes};
        CsvShowLine(line, boxes); // boxes are shown even when the line has too many fields
    });
}

const char* FrmCsvImport::buttonLabel(int mode) const {
    return mode == 0 ? "FrmCsvImport -> BankBtn" : "FrmCsvImport -> SearchBtn";
}

void FrmCsvImport::loadFile(int mode) {
    Trap(m_ctx.errors, buttonLabel(mode), [&](Stmt& s) {
        s.at(1);
        m_import.close();
        m_chirp = false;
        m_locationChk->setEnabled(false);
        Frame& f = m_frames[mode];
        FileDialogOptions dialog;
        dialog.title = mode == 0 ? QStringLiteral("Import Bank from CSV")
                                 : QStringLiteral("Import Search Bank from CSV");
        dialog.startDir = m_ctx.appDir();
        dialog.pattern = QStringLiteral("*.csv");
        dialog.defaultExt = QStringLiteral("csv");
        const std::optional<QString> path = m_ctx.prompts().openFile(dialog);
        if (!path)
            return;
        s.at(2);
        if (!m_import.open(*path))
            throw KestrelError(err::BadFileFormat, m_import.openError());
        s.at(3);
        const QString first = m_import.nextLine();
        if (mode == 0 && IsChirpHeader(first)) {
            // Its columns are found by name: there is nothing to choose.
            m_chirp = true;
            for (QListWidget* list : f.lists) {
                list->clear();
                list->setEnabled(false);
            }
            m_locationChk->setEnabled(true);
            ShowLine(first);
            f.buttons[1]->setEnabled(true);
            f.buttons[2]->setEnabled(true);
            return;
        }
        for (QListWidget* list : f.lists) {
            list->setEnabled(true);
            list->clear();
            for (int k = 0; k <= m_import.columnCount(); ++k) {
                if (k > kCsvChoosable)
                    throw KestrelError(err::SubscriptOutOfRange,
                                       QStringLiteral("Subscript out of range"));
                list->addItem(CsvColumnName(k));
            }
            list->scrollToTop();
        }
        // Our own export's header names the columns: they are chosen from it.
        const QList<int> named = m_import.headerChoices(CsvMode(mode));
        for (qsizetype i = 0; i < named.size() && i < f.lists.size(); ++i)
            f.lists[i]->scrollToItem(f.lists[i]->item(named[i]), QAbstractItemView::PositionAtTop);
        for (QLineEdit* box : f.boxes)
            box->clear();
        s.at(4);
        ShowLine(first);
        f.buttons[1]->setEnabled(true);
        f.buttons[2]->setEnabled(true);
    });
}

void FrmCsvImport::showNextLine(int mode) {
    Trap(m_ctx.errors, buttonLabel(mode), [&] { ShowLine(m_import.nextLine()); });
}

void FrmCsvImport::importFile(int mode) {
    if (mode == 0 && m_chirp) {
        importChirp();
        return;
    }
    Trap(m_ctx.errors, buttonLabel(mode), [&] {
        QList<int> choices;
        for (qsizetype i = 0; i < m_frames[mode].lists.size(); ++i)
            choices.append(choice(mode, int(i)));
        if (mode == 0)
            m_frames[0].buttons[1]->setEnabled(false);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const int imported = mode == 0
                                 ? m_import.importToBank(m_ctx.CurProfile, m_ctx.CurBank, choices)
                                 : m_import.importToSearch(m_ctx.CurProfile, choices);
        QApplication::restoreOverrideCursor();
        if (imported < 0)
            return;
        m_import.close();
        if (mode == 0)
            Q_EMIT bankImported();
        else
            Q_EMIT searchImported();
    });
}

void FrmCsvImport::importChirp() {
    Trap(m_ctx.errors, buttonLabel(0), [&] {
        m_frames[0].buttons[1]->setEnabled(false);
        QApplication::setOverrideCursor(Qt::WaitCursor);
        const std::optional<ChirpReport> report = ImportChirp(
            m_ctx, m_ctx.CurProfile, m_ctx.CurBank, m_import.fileName(),
            m_locationChk->isChecked() ? ChirpPlacement::ByLocation : ChirpPlacement::ShownBank);
        QApplication::restoreOverrideCursor();
        if (!report)
            return;
        m_import.close();
        Q_EMIT bankImported();
        m_ctx.prompts().message(report->text(), QStringLiteral("CSV Import"), Icon::Information,
                                Buttons::Ok);
    });
}

void FrmCsvImport::closeEvent(QCloseEvent* event) {
    Trap(m_ctx.errors, "FrmCsvImport -> Unload", [&] {
        m_import.close();
        WindowPos& pos = m_ctx.settings.pos(WindowId::CSV);
        pos.top = AdjFrmTop(y() * kTwipsPerPixel, m_ctx.screenTwips);
        pos.left = AdjFrmleft(x() * kTwipsPerPixel, m_ctx.screenTwips);
    });
    Q_EMIT closed();
    event->accept();
}

} // namespace kestrel
