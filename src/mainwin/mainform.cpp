// SPDX-License-Identifier: GPL-3.0-or-later
#include "mainform.h"

#include "core/entry.h"
#include "core/filereport.h"
#include "core/freq.h"
#include "core/profiles.h"
#include "inplaceedit.h"
#include "servicebands.h"
#include "ui/windowplace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableWidget>
#include <QVBoxLayout>

namespace kestrel {

namespace {

const char* const kTitle = "Kestrel Manager";
// Characters a file's base name cannot hold; "." would cut the name short when read back.
const char* const kNameRefused = "./\\:,*?|<>\"";

} // namespace

MainForm::MainForm(AppContext& ctx, QWidget* parent)
    : QMainWindow(parent), m_ctx(ctx),
      m_openUrl([](const QUrl& url) { QDesktopServices::openUrl(url); }) {
    setObjectName(QStringLiteral("MainForm"));
    setWindowTitle(QString::fromLatin1(kTitle));
    buildWidgets();
    buildMenus();
    connectEditing();
    loadWindow();
    installSubsystems();
}

MainForm::~MainForm() = default;

bool MainForm::event(QEvent* event) {
    const bool handled = QMainWindow::event(event);
    if (event->type() == QEvent::Paint && !m_painted) {
        m_painted = true;
        Q_EMIT firstPainted();
    }
    return handled;
}

QLineEdit* MainForm::SndBankTxt() const {
    return m_sndBankTxt;
}

QTableWidget* MainForm::makeList(const QStringList& headers, int rows, bool searchList) {
    auto* list = new QTableWidget(rows, int(headers.size()));
    list->setHorizontalHeaderLabels(headers);
    list->verticalHeader()->hide();
    list->setShowGrid(false);
    list->setAlternatingRowColors(true);
    list->setWordWrap(false);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setSelectionMode(QAbstractItemView::ExtendedSelection);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setTabKeyNavigation(false);
    list->setContextMenuPolicy(Qt::NoContextMenu);
    const QFontMetrics fm(list->font());
    list->verticalHeader()->setDefaultSectionSize(fm.height() + 6);
    list->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);

    // Columns sized to what they can hold; the description takes the rest of the width.
    QHeaderView* header = list->horizontalHeader();
    header->setHighlightSections(false);
    const int pad = fm.horizontalAdvance(QLatin1Char('M')) * 2;
    const auto fit = [&](int column, const QString& sample) {
        const QString caption = headers[column];
        list->setColumnWidth(
            column, std::max(fm.horizontalAdvance(sample), fm.horizontalAdvance(caption)) + pad);
    };
    const QList<ListColumn>& table = searchList ? SearchColumnTable() : ChannelColumnTable();
    const int descColumn = searchList ? int(ColSrchDesc) : int(ColDesc);
    for (int c = 0; c < headers.size(); ++c) {
        if (table[c].sample)
            fit(c, QString::fromLatin1(table[c].sample));
    }
    list->setColumnWidth(descColumn, fm.horizontalAdvance(QString(24, QLatin1Char('x'))));
    header->setSectionResizeMode(descColumn, QHeaderView::Stretch);

    for (int r = 0; r < rows; ++r) {
        for (int c = 0; c < headers.size(); ++c) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            list->setItem(r, c, item);
        }
    }
    list->viewport()->installEventFilter(this);
    list->installEventFilter(this);
    return list;
}

void MainForm::buildWidgets() {
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);

    m_profileTab = new QTabBar;
    m_profileTab->setObjectName(QStringLiteral("ProfileTab"));
    m_profileTab->setExpanding(false);
    m_profileTab->setUsesScrollButtons(true);
    layout->addWidget(m_profileTab);

    auto* profRow = new QHBoxLayout;
    m_labels[2] = new QLabel(tr("Profile Name:"));
    m_profTxt = new InplaceEdit;
    m_profTxt->setObjectName(QStringLiteral("ProfTxt"));
    m_profTxt->setMaxLength(64);
    m_profTxt->refuseCharacters(QString::fromLatin1(kNameRefused));
    m_labels[2]->setBuddy(m_profTxt);
    profRow->addWidget(m_labels[2]);
    profRow->addWidget(m_profTxt, 1);
    profRow->addStretch(1);
    layout->addLayout(profRow);

    m_panels = new QStackedWidget;
    m_panels->addWidget(buildScanBanksPanel());
    m_panels->addWidget(buildChannelListPanel());
    m_panels->addWidget(buildServicePanel());
    layout->addWidget(m_panels, 1);
    setCentralWidget(central);

    for (int i = 0; i < 3; ++i) {
        m_labels[i]->setObjectName(QStringLiteral("Label") + QString::number(i));
        m_labels[i]->installEventFilter(this);
    }

    // The in-place boxes live on the list they edit; they are moved there when an edit starts.
    m_freqTxt = new InplaceEdit(m_chnlsLv->viewport());
    m_freqTxt->setObjectName(QStringLiteral("FreqTxt"));
    m_freqTxt->hide();
    m_descTxt = new InplaceEdit(m_chnlsLv->viewport());
    m_descTxt->setObjectName(QStringLiteral("DescTxt"));
    m_descTxt->refuseCharacters(QStringLiteral(","));
    m_descTxt->setMaxLength(kDescMax);
    m_descTxt->hide();

    // Until a size is remembered; placing the window fits it to its screen.
    resize(920, 680);
}

QGroupBox* MainForm::buildScanBanksPanel() {
    auto* box = new QGroupBox(tr("Scan Banks"));
    auto* layout = new QVBoxLayout(box);
    m_bankTab = new QTabBar;
    m_bankTab->setObjectName(QStringLiteral("BankTab"));
    m_bankTab->setExpanding(false);
    m_bankTab->setUsesScrollButtons(true);
    m_bankTab->installEventFilter(this);
    for (int t = 0; t <= BankCount; ++t)
        m_bankTab->addTab(QString());
    layout->addWidget(m_bankTab);

    m_chnlsLv = makeList(ChannelHeaders(), ChansPerBank, false);
    m_chnlsLv->setObjectName(QStringLiteral("ChnlsLv"));
    m_searchLv = makeList(SearchHeaders(), SearchCount, true);
    m_searchLv->setObjectName(QStringLiteral("SearchLV"));
    m_listStack = new QStackedWidget;
    m_listStack->addWidget(m_chnlsLv);
    m_listStack->addWidget(m_searchLv);
    layout->addWidget(m_listStack, 1);

    auto* row = new QHBoxLayout;
    m_labels[0] = new QLabel(tr("Bank Name:"));
    m_bankTxt = new InplaceEdit;
    m_bankTxt->setObjectName(QStringLiteral("BankTxt"));
    m_bankTxt->setMaxLength(64);
    m_bankTxt->refuseCharacters(QString::fromLatin1(kNameRefused));
    m_labels[0]->setBuddy(m_bankTxt);
    m_labels[1] = new QLabel(tr("Sending Bank:"));
    m_sndBankTxt = new QLineEdit;
    m_sndBankTxt->setObjectName(QStringLiteral("SndBankTxt"));
    m_sndBankTxt->setReadOnly(true);
    m_sndBankTxt->setMaximumWidth(
        m_sndBankTxt->fontMetrics().horizontalAdvance(QStringLiteral("0000000")) + 12);
    m_labels[1]->hide();
    m_sndBankTxt->hide();
    row->addWidget(m_labels[0]);
    row->addWidget(m_bankTxt, 1);
    row->addStretch(1);
    row->addWidget(m_labels[1]);
    row->addWidget(m_sndBankTxt);
    layout->addLayout(row);
    return box;
}

QGroupBox* MainForm::buildChannelListPanel() {
    auto* box = new QGroupBox(tr("Channel List"));
    auto* layout = new QVBoxLayout(box);
    m_chanLv = makeList(ChannelHeaders(), ChannelCount, false);
    m_chanLv->setObjectName(QStringLiteral("ChanLV"));
    layout->addWidget(m_chanLv, 1);
    auto* row = new QHBoxLayout;
    m_printChansBtn = new QPushButton(tr("Print"));
    m_printChansBtn->setObjectName(QStringLiteral("PtintChansBtn"));
    m_printChansBtn->setEnabled(false); // until printing is wired in
    row->addStretch(1);
    row->addWidget(m_printChansBtn);
    layout->addLayout(row);
    return box;
}

QGroupBox* MainForm::buildServicePanel() {
    auto* box = new QGroupBox(tr("Stored Service Frequencies"));
    // The lists are taller than a small screen leaves at a large scale: they scroll there
    // instead of making the whole window taller than the screen.
    auto* scroll = new QScrollArea;
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    auto* lists = new QWidget;
    scroll->setWidget(lists);
    (new QVBoxLayout(box))->addWidget(scroll);
    auto* layout = new QHBoxLayout(lists);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(layout->spacing() * 8);
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    for (int list = 1; list <= 2; ++list) {
        auto* label = new QLabel(ServiceBandLines(list).join(QLatin1Char('\n')));
        label->setObjectName(QStringLiteral("ServiceList") + QString::number(list));
        label->setFont(fixed);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        label->setTextInteractionFlags(Qt::NoTextInteraction);
        layout->addWidget(label);
    }
    layout->addStretch(1);
    return box;
}

void MainForm::InitControls() {
    // The rows exist from the start (makeList); here they get their numbers.
    Trap(m_ctx.errors, "MainForm -> InitControls", [&] {
        for (int n = 1; n <= ChannelCount; ++n)
            m_chanLv->item(n - 1, ColChanNumber)->setText(Num3(n));
        for (int i = 1; i <= SearchCount; ++i)
            m_searchLv->item(i - 1, ColSrchNumber)->setText(Num2(i));
    });
}

void MainForm::loadWindow() {
    Trap(m_ctx.errors, "MainForm -> Load", [&](Stmt& s) {
        s.at(1);
        m_ctx.CurBank = 0;
        placeWindow(this, m_ctx, WindowId::Main);
        s.at(2);
        InitControls();
        s.at(3);
        {
            const QSignalBlocker block(m_profileTab);
            while (m_profileTab->count() > 0)
                m_profileTab->removeTab(0);
            for (int p = 0; p < ProfileCount; ++p)
                m_profileTab->addTab(p == 0 ? QStringLiteral("Main") : m_ctx.Profiles[p].Name);
        }
        s.at(4);
        m_ctx.CurProfile = 0;
        captionBankTabs();
        s.at(5);
        m_ctx.CurBank = 1;
        {
            const QSignalBlocker block(m_bankTab);
            m_bankTab->setCurrentIndex(0);
        }
        s.at(6);
        {
            const QSignalBlocker block(m_profileTab);
            m_profileTab->setCurrentIndex(0);
        }
        onProfileTab(0);
        showPanel(ScanBanksPanel);
        s.at(7);
        updateCaption();
    });
    connect(m_profileTab, &QTabBar::currentChanged, this, &MainForm::onProfileTab);
    connect(m_bankTab, &QTabBar::currentChanged, this, &MainForm::onBankTab);
    m_loaded = true;
}

bool MainForm::shownProfileModified() const {
    const ProfileRec& profile = m_ctx.cur();
    if (profile.Changed)
        return true;
    for (int b = 1; b <= BankCount; ++b)
        if (profile.Banks[b].Changed)
            return true;
    return false;
}

void MainForm::updateCaption() {
    // "*" marks what closing or Save Profile would still write.
    setWindowTitle(QString::fromLatin1(kTitle) + QStringLiteral(" [") + m_shown.profName +
                   (shownProfileModified() ? QStringLiteral("*]") : QStringLiteral("]")));
}

void MainForm::captionBankTabs() {
    const ProfileRec& profile = m_ctx.cur();
    for (int b = 1; b <= BankCount; ++b)
        m_bankTab->setTabText(b - 1, profile.Banks[b].FileName);
    m_bankTab->setTabText(SearchTab - 1,
                          m_shown.srchName.isEmpty() ? profile.SrchName : m_shown.srchName);
}

void MainForm::onProfileTab(int index) {
    if (index < 0)
        return;
    finishCellEdit();
    Trap(m_ctx.errors, "MainForm -> ProfileTab", [&](Stmt& s) {
        s.at(1);
        m_ctx.CurProfile = qint16(index);
        m_shown = ShownNames::of(m_ctx);
        s.at(2);
        {
            const QSignalBlocker block(m_profTxt);
            m_profTxt->setText(m_shown.profName);
            m_profTxt->setPending(false);
        }
        m_profTxt->setEnabled(m_ctx.CurProfile >= 1);
        s.at(3);
        updateCaption();
        s.at(4);
        FillChanLV();
        for (int i = 1; i <= SearchCount; ++i)
            paintSearchRow(i);
        s.at(5);
        captionBankTabs();
        s.at(6);
        SetMenus(m_ctx.CurBank);
        if (m_ctx.CurBank >= 1 && m_ctx.CurBank <= BankCount)
            RefreshBank(m_ctx.CurBank);
        else
            RefreshSearch();
    });
}

void MainForm::onBankTab(int index) {
    if (index < 0)
        return;
    finishCellEdit();
    Trap(m_ctx.errors, "MainForm -> BankTab", [&] {
        m_ctx.CurBank = quint8(index + 1);
        SetMenus(m_ctx.CurBank);
        if (m_ctx.CurBank == SearchTab) {
            m_listStack->setCurrentWidget(m_searchLv);
            RefreshSearch();
        } else {
            m_listStack->setCurrentWidget(m_chnlsLv);
            RefreshBank(m_ctx.CurBank);
        }
    });
}

void MainForm::nextBankTab() {
    m_bankTab->setCurrentIndex((m_bankTab->currentIndex() + 1) % m_bankTab->count());
}

void MainForm::stepBankTab(int step, int bank) {
    // Bank keys belong to the scan banks: the panel comes to the front first.
    if (shownPanel() != ScanBanksPanel)
        showPanel(ScanBanksPanel);
    const int count = m_bankTab->count();
    const int index = bank >= 1 ? bank - 1 : (m_bankTab->currentIndex() + step + count) % count;
    m_bankTab->setCurrentIndex(index);
    QTableWidget* list = activeList();
    if (list && !list->hasFocus() && !m_profTxt->hasFocus() && !m_bankTxt->hasFocus())
        list->setFocus();
}

QTableWidget* MainForm::activeList() const {
    switch (shownPanel()) {
    case ScanBanksPanel:
        return m_ctx.CurBank == SearchTab ? m_searchLv : m_chnlsLv;
    case ChannelListPanel:
        return m_chanLv;
    case ServicePanel:
        break;
    }
    return nullptr;
}

void MainForm::SetMenus(int b) {
    Trap(m_ctx.errors, "MainForm -> SetMenus", [&] {
        static const MenuId bankItems[] = {
            MenuId::ClearCurrBank, MenuId::ClearBanks,  MenuId::LoadBank,   MenuId::SaveBank,
            MenuId::SaveBankAs,    MenuId::DefaultBank, MenuId::SetFactory, MenuId::WebImport};
        static const MenuId searchItems[] = {MenuId::ClearSearch, MenuId::LoadSearch,
                                             MenuId::SaveSearch, MenuId::SaveSearchAs,
                                             MenuId::DefaultLimits};
        const bool onBank = b >= 1 && b <= BankCount;
        const auto set = [&](MenuId name, bool enabled) {
            QAction* a = menuItem(name);
            // Items of windows not wired in yet stay disabled whatever the tab.
            if (a && !a->property("kestrelUnwired").toBool())
                a->setEnabled(enabled);
        };
        for (const MenuId name : bankItems)
            set(name, onBank);
        for (const MenuId name : searchItems)
            set(name, !onBank);
    });
}

void MainForm::paintRow(QTableWidget* list, int row, const QStringList& texts) {
    for (int c = 0; c < texts.size(); ++c) {
        QTableWidgetItem* item = list->item(row, c);
        if (item->text() != texts[c])
            item->setText(texts[c]);
    }
}

void MainForm::paintChnlsRow(int slot) {
    const int b = m_ctx.CurBank;
    paintRow(m_chnlsLv, slot - 1,
             ChannelRowTexts(ChannelNumber(b, slot), m_ctx.cur().Banks[b].Chans[slot]));
}

void MainForm::paintChanRow(int n) {
    paintRow(m_chanLv, n - 1,
             ChannelRowTexts(n, m_ctx.cur().Banks[BankOfChannel(n)].Chans[SlotOfChannel(n)]));
}

void MainForm::paintSearchRow(int index) {
    updateCaption();
    paintRow(m_searchLv, index - 1, SearchRowTexts(index, m_ctx.cur().Searches[index]));
}

void MainForm::RefreshBank(int b) {
    Trap(m_ctx.errors, "MainForm -> RefreshBank", [&] {
        if (b < 1 || b > BankCount)
            return;
        {
            const QSignalBlocker block(m_bankTxt);
            m_bankTxt->setText(m_ctx.cur().Banks[b].FileName);
            m_bankTxt->setPending(false);
        }
        for (int c = 1; c <= ChansPerBank; ++c)
            paintRow(m_chnlsLv, c - 1,
                     ChannelRowTexts(ChannelNumber(b, c), m_ctx.cur().Banks[b].Chans[c]));
        updateCaption();
    });
}

void MainForm::RefreshSearch() {
    Trap(m_ctx.errors, "MainForm -> RefreshSearch", [&] {
        {
            const QSignalBlocker block(m_bankTxt);
            m_bankTxt->setText(m_shown.srchName);
            m_bankTxt->setPending(false);
        }
        for (int i = 1; i <= SearchCount; ++i)
            paintSearchRow(i);
    });
}

void MainForm::FillChanLV() {
    for (int n = 1; n <= ChannelCount; ++n)
        paintChanRow(n);
}

void MainForm::refreshChannel(int n) {
    updateCaption();
    if (n < 1 || n > ChannelCount)
        return;
    paintChanRow(n);
    if (BankOfChannel(n) == m_ctx.CurBank)
        paintChnlsRow(SlotOfChannel(n));
}

void MainForm::refreshLists() {
    FillChanLV();
    captionBankTabs();
    if (m_ctx.CurBank == SearchTab)
        RefreshSearch();
    else
        RefreshBank(m_ctx.CurBank);
}

MainForm::Panel MainForm::shownPanel() const {
    return Panel(m_panels->currentIndex());
}

QWidget* MainForm::panelWidget(Panel panel) const {
    return m_panels->widget(panel);
}

QAction* MainForm::menuItem(const QString& objectName) const {
    const std::optional<MenuId> id = MenuIdByName(objectName);
    return id ? menuItem(*id) : nullptr;
}

QAction* MainForm::wireMenuItem(const QString& objectName) {
    const std::optional<MenuId> id = MenuIdByName(objectName);
    return id ? wireMenuItem(*id) : nullptr;
}

QAction* MainForm::wireMenuItem(MenuId id) {
    QAction* a = menuItem(id);
    if (!a)
        return nullptr;
    a->setProperty("kestrelUnwired", false);
    a->setEnabled(true);
    SetMenus(m_ctx.CurBank);
    return a;
}

bool MainForm::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    // Ctrl+V on the bank tabs steps to the next tab rather than pasting.
    if (m_bankTab && watched == m_bankTab && type == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_V && (key->modifiers() & Qt::ControlModifier)) {
            event->accept();
            return true;
        }
    }
    if (m_bankTab && watched == m_bankTab && type == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_V && (key->modifiers() & Qt::ControlModifier)) {
            nextBankTab();
            return true;
        }
    }
    for (int i = 0; i < 3; ++i) {
        if (m_labels[i] && watched == m_labels[i] && type == QEvent::MouseButtonDblClick) {
            onLabelDoubleClick(i);
            return true;
        }
    }
    for (QTableWidget* list : {m_chnlsLv, m_searchLv, m_chanLv}) {
        if (!list) // still being built
            continue;
        if (watched == list->viewport()) {
            if (type == QEvent::MouseButtonPress) {
                m_lastButton[list] = static_cast<QMouseEvent*>(event)->button();
            } else if (type == QEvent::MouseButtonDblClick && list != m_chanLv) {
                // The cell under the pointer, whatever the view made of the first click.
                const auto* mouse = static_cast<QMouseEvent*>(event);
                const QModelIndex index = list->indexAt(mouse->position().toPoint());
                if (mouse->button() == Qt::LeftButton && index.isValid()) {
                    onCellDoubleClicked(list, index.row(), index.column());
                    return true;
                }
            } else if (type == QEvent::MouseButtonRelease) {
                const auto* mouse = static_cast<QMouseEvent*>(event);
                if (mouse->button() == Qt::RightButton &&
                    m_lastButton.value(list) == Qt::RightButton)
                    showPopUp(list, mouse->position().toPoint());
            }
        } else if (watched == list && type == QEvent::KeyPress) {
            const auto* key = static_cast<QKeyEvent*>(event);
            const bool start = key->key() == Qt::Key_F2 || key->key() == Qt::Key_Return ||
                               key->key() == Qt::Key_Enter;
            const QModelIndex current = list->currentIndex();
            if (start && list != m_chanLv && current.isValid()) {
                onCellDoubleClicked(list, current.row(), current.column());
                return true;
            }
            // Space flips the flag under the cursor, as a double click on it does.
            if (key->key() == Qt::Key_Space && key->modifiers() == Qt::NoModifier &&
                list == m_chnlsLv && current.isValid() && !IsTextColumn(false, current.column()) &&
                current.column() != ColChanNumber) {
                onCellDoubleClicked(list, current.row(), current.column());
                return true;
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainForm::closeEvent(QCloseEvent* event) {
    finishCellEdit();
    Trap(m_ctx.errors, "MainForm -> Unload", [&](Stmt& s) {
        s.at(1);
        rememberWindow(this, m_ctx, WindowId::Main);
        s.at(2);
        for (QWidget* w : QApplication::topLevelWidgets()) {
            if (w != this && w->isVisible())
                w->close();
        }
        s.at(3);
        Save_Profiles(m_ctx);
        s.at(4);
        SaveRegistryValues(m_ctx.registry);
    });
    // What could not be saved is still in memory: the user may stay and try again.
    if (!ReportWriteFailures(m_ctx) &&
        m_ctx.prompts().message(tr("Close anyway? What could not be saved will be lost."),
                                QStringLiteral("Kestrel Manager"), Icon::Question,
                                Buttons::YesNo) == Answer::No) {
        event->ignore();
        return;
    }
    event->accept();
}

} // namespace kestrel
