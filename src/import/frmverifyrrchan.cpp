// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmverifyrrchan.h"

#include "ui/windowplace.h"
#include "verifyrules.h"

#include "core/appcontext.h"
#include "core/freq.h"
#include "history/history.h"
#include "webservice/ui/keyfilter.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShowEvent>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace kestrel {

namespace {

enum Column { ChColumn, FreqColumn, ModeColumn, TsqColumn, DescColumn };
constexpr int kTwipsPerPixel = 15;
const char* const kTagProperty = "tag";

QPushButton* makeButton(QWidget* parent, const char* caption, const char* name) {
    auto* button = new QPushButton(QString::fromLatin1(caption), parent);
    button->setObjectName(QString::fromLatin1(name));
    return button;
}

} // namespace

FrmVerifyRRChan::FrmVerifyRRChan(AppContext& ctx, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_profile(ctx.CurProfile), m_bank(ctx.CurBank) {
    setObjectName(QStringLiteral("FrmVerifyRRChan"));
    setWindowTitle(QStringLiteral("Verify Channel Info"));

    auto* frame = new QGroupBox(QStringLiteral("Channels"), this);
    m_chanLv = new QTreeWidget(frame);
    m_chanLv->setObjectName(QStringLiteral("ChanLV"));
    m_chanLv->setRootIsDecorated(false);
    m_chanLv->setUniformRowHeights(true);
    m_chanLv->setAllColumnsShowFocus(true);
    m_chanLv->setHeaderLabels({QStringLiteral("CH"), QStringLiteral("Frequency"),
                               QStringLiteral("Mode"), QStringLiteral("TSQ"),
                               QStringLiteral("Description")});
    m_chanLv->header()->setStretchLastSection(true);
    for (int column : {ChColumn, ModeColumn, TsqColumn})
        m_chanLv->setColumnWidth(column, 45);
    m_chanLv->setColumnWidth(FreqColumn, 95);
    auto* frameLayout = new QVBoxLayout(frame);
    frameLayout->addWidget(m_chanLv);

    m_descTxt = new QLineEdit(this);
    m_descTxt->setObjectName(QStringLiteral("ChanDescTxt"));
    m_descTxt->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_descTxt->setEnabled(false);
    auto* descLabel = new QLabel(QStringLiteral("Channel Desc:"), this);
    descLabel->setBuddy(m_descTxt);
    m_updateBtn = makeButton(this, "Update", "UpdateDescBtn");
    m_updateBtn->setEnabled(false);
    m_finishBtn = makeButton(this, "Finish", "FinishBtn");
    m_abortBtn = makeButton(this, "Abort", "AbortBtn");

    auto* descRow = new QHBoxLayout;
    descRow->addWidget(descLabel);
    descRow->addWidget(m_descTxt, 1);
    descRow->addWidget(m_updateBtn);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_finishBtn);
    buttons->addWidget(m_abortBtn);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frame, 1);
    layout->addLayout(descRow);
    layout->addLayout(buttons);

    new KeyFilter(m_descTxt, DescKeyAllowed, m_ctx.errors,
                  "FrmVerifyRRChan -> ChanDescTxt_KeyPress");
    connect(m_chanLv, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
        Trap(m_ctx.errors, "FrmVerifyRRChan -> ChanLV_ItemClick", [&] { ChanLV_ItemClick(item); });
    });
    connect(m_descTxt, &QLineEdit::textChanged, this, [this] {
        Trap(m_ctx.errors, "FrmVerifyRRChan -> ChanDescTxt_Change", [&] {
            if (m_descTxt->isEnabled())
                m_updateBtn->setEnabled(true);
        });
    });
    connect(m_updateBtn, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmVerifyRRChan -> UpdateDescBtn", [&] { UpdateDescBtn_Click(); });
    });
    connect(m_finishBtn, &QPushButton::clicked, this, [this] {
        Trap(m_ctx.errors, "FrmVerifyRRChan -> FinishBtn", [&] { FinishBtn_Click(); });
    });
    connect(m_abortBtn, &QPushButton::clicked, this, &QWidget::close);

    resize(windowInfo(WindowId::VerRR).designWidth / kTwipsPerPixel,
           windowInfo(WindowId::VerRR).designHeight / kTwipsPerPixel);
    Trap(m_ctx.errors, "FrmVerifyRRChan -> Load", [&] {
        m_open = true;
        placeWindow(this, m_ctx, WindowId::VerRR);
        FillChannels();
        m_finishBtn->setEnabled(VerifyChannels());
    });
}

BankRec& FrmVerifyRRChan::bank() {
    if (m_profile < 0 || m_profile > ProfileCount || m_bank < 1 || m_bank > BankCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    return m_ctx.Profiles[size_t(m_profile)].Banks[size_t(m_bank)];
}

void FrmVerifyRRChan::FillChannels() {
    Trap(m_ctx.errors, "FrmVerifyRRChan -> FillChannels", [&] {
        m_chanLv->clearSelection();
        m_chanLv->clear();
        const BankRec& b = bank();
        const int count = ImportedSlots(b);
        QList<QTreeWidgetItem*> rows;
        for (int i = 1; i <= count; ++i) {
            const ChannelRec& ch = b.Chans[size_t(i)];
            auto* row = new QTreeWidgetItem(QStringList{QString::number(i), FreqToString(ch.Freq),
                                                        ImportedModeText(ch), ch.Tone, ch.Desc});
            row->setData(ChColumn, Qt::UserRole, i);
            rows.append(row);
        }
        m_chanLv->addTopLevelItems(rows);
        if (QTreeWidgetItem* first = m_chanLv->topLevelItem(0)) {
            m_chanLv->scrollToItem(first);
            m_chanLv->setCurrentItem(first);
        }
    });
}

bool FrmVerifyRRChan::VerifyChannels() {
    return Trap(m_ctx.errors, "FrmVerifyRRChan -> VerifyChannels", [&] {
        const int slot = FirstLongDesc(bank());
        if (slot == 0)
            return true;
        if (QTreeWidgetItem* row = m_chanLv->topLevelItem(slot - 1))
            m_chanLv->scrollToItem(row);
        return false;
    });
}

void FrmVerifyRRChan::ChanLV_ItemClick(QTreeWidgetItem* item) {
    // Choosing a row drops an edit in progress.
    if (m_descTxt->isEnabled())
        m_descTxt->setEnabled(false);
    m_descTxt->setText(item->text(DescColumn));
    m_descTxt->setProperty(kTagProperty, QString::number(m_chanLv->indexOfTopLevelItem(item) + 1));
    m_descTxt->setEnabled(true);
    m_descTxt->setFocus();
}

void FrmVerifyRRChan::UpdateDescBtn_Click() {
    const int i = m_descTxt->property(kTagProperty).toString().toInt();
    QTreeWidgetItem* row = m_chanLv->topLevelItem(i - 1);
    if (!row || i > ImportedSlots(bank()))
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    row->setText(DescColumn, m_descTxt->text());
    ChangeStep step(m_ctx, QStringLiteral("Web Import"), qint16(m_profile), quint8(m_bank),
                    m_stepId);
    bank().Chans[size_t(i)].Desc = m_descTxt->text();
    m_descTxt->setEnabled(false);
    m_updateBtn->setEnabled(false);
    m_finishBtn->setEnabled(VerifyChannels());
}

void FrmVerifyRRChan::FinishBtn_Click() {
    ChangeStep step(m_ctx, QStringLiteral("Web Import"), qint16(m_profile), quint8(m_bank),
                    m_stepId);
    bank().Changed = true;
    m_ctx.Profiles[0].Changed = true;
    m_finished = true;
    close();
}

void FrmVerifyRRChan::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // The list can scroll only once it is laid out: bring the first long description into view
    // again when the window appears.
    if (!event->spontaneous())
        VerifyChannels();
}

void FrmVerifyRRChan::closeEvent(QCloseEvent* event) {
    rememberWindow(this, m_ctx, WindowId::VerRR);
    m_open = false;
    QWidget::closeEvent(event);
    Q_EMIT closed(m_finished);
}

} // namespace kestrel
