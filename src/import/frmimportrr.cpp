// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmimportrr.h"

#include "core/filereport.h"
#include "core/freq.h"
#include "core/settings.h"
#include "history/history.h"
#include "import/frmverifyrrchan.h"
#include "import/searchtree.h"
#include "ui/windowplace.h"
#include "webservice/rrclient.h"
#include "webservice/ui/frmdbaseloc.h"
#include "webservice/ui/frmviewxml.h"
#include "webservice/webcredentials.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFile>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTextStream>
#include <QTimer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QXmlStreamReader>

namespace kestrel {

using namespace importtree;

namespace {

const QString kCaption = QStringLiteral("RadioReference Web Import");
const QString kSelect = QStringLiteral(">>>  Select  <<<");
const QString kSelectSystem = QStringLiteral(">>> Select <<<");

// The hourglass while the window waits for the service; the client's wait keeps painting.
struct BusyCursor {
    BusyCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

// A list is white while it can be used and takes the window's colour while it cannot.
void setListEnabled(QWidget* list, bool on) {
    list->setEnabled(on);
    QPalette p = list->palette();
    p.setColor(QPalette::Base,
               on ? QColor(Qt::white) : list->window()->palette().color(QPalette::Window));
    list->setPalette(p);
}

QLabel* valueLabel(const QString& text = {}) {
    auto* l = new QLabel(text);
    l->setFrameShape(QFrame::Panel);
    l->setFrameShadow(QFrame::Sunken);
    l->setMinimumWidth(60);
    return l;
}

} // namespace

FrmImportRR::FrmImportRR(AppContext& ctx, QWidget* parent)
    : QMainWindow(parent, Qt::Window), m_ctx(ctx), m_client(ctx.component<RRClient>()) {
    setWindowTitle(kCaption);
    buildControls();
    buildMenus();
    placeWindow(this, m_ctx, WindowId::ImpRR);
    Load();
}

FrmImportRR::~FrmImportRR() = default;

void FrmImportRR::buildControls() {
    auto* central = new QWidget(this);
    setCentralWidget(central);
    auto* top = new QHBoxLayout(central);

    // Left: login, zip code and the navigation lists.
    auto* left = new QVBoxLayout;
    auto* login = new QGroupBox(QStringLiteral("Log In"));
    auto* lg = new QGridLayout(login);
    m_uName = new QLineEdit;
    m_uName->setObjectName(QStringLiteral("UNameTxt"));
    m_uPass = new QLineEdit;
    m_uPass->setObjectName(QStringLiteral("UPassTxt"));
    m_uPass->setEchoMode(QLineEdit::Password);
    m_rememberMe = new QCheckBox(QStringLiteral("Remember Me"));
    m_logIn = new QPushButton(QStringLiteral("Log In"));
    m_expiry = valueLabel();
    lg->addWidget(new QLabel(QStringLiteral("UserName:")), 0, 0);
    lg->addWidget(m_uName, 0, 1);
    lg->addWidget(new QLabel(QStringLiteral("PassWord:")), 1, 0);
    lg->addWidget(m_uPass, 1, 1);
    lg->addWidget(m_rememberMe, 2, 0);
    lg->addWidget(m_logIn, 2, 1);
    lg->addWidget(new QLabel(QStringLiteral("Expiration Date:")), 3, 0);
    lg->addWidget(m_expiry, 3, 1);
    left->addWidget(login);

    auto* nav = new QGridLayout;
    m_zip = new QLineEdit;
    m_zip->setObjectName(QStringLiteral("ZipCodeTxt"));
    m_zip->setToolTip(QStringLiteral("United States ONLY!"));
    m_zip->installEventFilter(this);
    m_city = new QLabel(QStringLiteral("City Name"));
    m_city->installEventFilter(this);
    m_lat = valueLabel();
    m_lon = valueLabel();
    nav->addWidget(new QLabel(QStringLiteral("ZipCode:")), 0, 0);
    nav->addWidget(m_zip, 0, 1);
    nav->addWidget(new QLabel(QStringLiteral("City:")), 1, 0);
    nav->addWidget(m_city, 1, 1);
    nav->addWidget(new QLabel(QStringLiteral("City's Latitude")), 2, 0);
    nav->addWidget(m_lat, 2, 1);
    nav->addWidget(new QLabel(QStringLiteral("City's Longitude")), 3, 0);
    nav->addWidget(m_lon, 3, 1);
    const char* const labels[] = {"Country:", "State / Province:", "County:", "System:"};
    QComboBox** lists[] = {&m_country, &m_state, &m_county, &m_system};
    const char* const names[] = {"CboCountry", "CboState", "CboCounty", "CboSystem"};
    for (int i = 0; i < 4; ++i) {
        *lists[i] = new QComboBox;
        (*lists[i])->setObjectName(QString::fromLatin1(names[i]));
        (*lists[i])->setMinimumWidth(220);
        auto* label = new QLabel(QString::fromLatin1(labels[i]));
        nav->addWidget(label, 4 + i, 0);
        nav->addWidget(*lists[i], 4 + i, 1);
        m_systemLabel = label; // the last row's caption follows the list type
    }
    m_systemLabel->setObjectName(QStringLiteral("LblSystem"));
    left->addLayout(nav);
    auto* opts = new QHBoxLayout;
    m_typeGroup = new QButtonGroup(this);
    const char* const optText[] = {"Trunking", "Conventional", "Agencies"};
    for (int i = 0; i < 3; ++i) {
        m_typeOpt[i] = new QRadioButton(QString::fromLatin1(optText[i]));
        m_typeGroup->addButton(m_typeOpt[i], i);
        opts->addWidget(m_typeOpt[i]);
        connect(m_typeOpt[i], &QRadioButton::clicked, this, [this, i](bool on) {
            if (on)
                TypeOpt_Click(i);
        });
    }
    left->addLayout(opts);
    left->addStretch();
    top->addLayout(left);

    // Right: the frame of the chosen kind, then the tree.
    auto* right = new QVBoxLayout;
    m_trunkFrame = new QGroupBox(QStringLiteral("Trunking Information"));
    auto* tg = new QGridLayout(m_trunkFrame);
    const char* const trs[] = {
        "System ID:", "Sites:",   "Fleet Map:", "Type:",     "Flavor:",   "Voice:",
        "Groups:",    "Updated:", "WACN:",      "Latitude:", "Longitude:"};
    int row = 0;
    for (const char* t : trs) {
        QString name = QString::fromLatin1(t);
        name.chop(1);
        name.remove(u' ');
        auto* l = valueLabel();
        m_trsLabels.insert(name, l);
        tg->addWidget(new QLabel(QString::fromLatin1(t)), row / 2, (row % 2) * 2);
        tg->addWidget(l, row / 2, (row % 2) * 2 + 1);
        ++row;
    }
    auto* bp = new QGroupBox(QStringLiteral("Band Plan:"));
    auto* bpl = new QVBoxLayout(bp);
    m_lv1 = new QTreeWidget;
    m_lv1->setObjectName(QStringLiteral("Lv1"));
    m_lv1->setRootIsDecorated(false);
    m_lv1->setHeaderLabels(
        {QStringLiteral("Base"), QStringLiteral("OffSet"), QStringLiteral("Step")});
    m_lv1->setMaximumHeight(110);
    m_lv1->setMinimumWidth(230);
    m_lv1->setColumnWidth(0, 80);
    m_lv1->setColumnWidth(1, 60);
    bpl->addWidget(m_lv1);
    tg->addWidget(bp, 0, 4, 5, 1);
    m_siteChn = valueLabel(QStringLiteral("0"));
    m_siteChn->setToolTip(QStringLiteral("Number of Channels Selected"));
    m_grpId = valueLabel(QStringLiteral("0"));
    m_grpId->setToolTip(QStringLiteral("Number of Groups Selected"));
    m_import[0] = new QPushButton(QStringLiteral("Import"));
    m_import[0]->setToolTip(QStringLiteral("Import Site Info and Talk Groups"));
    m_compare = new QPushButton(QStringLiteral("Compare"));
    m_compare->setToolTip(QStringLiteral("Compare Talk Groups"));
    auto* trow = new QHBoxLayout;
    trow->addWidget(new QLabel(QStringLiteral("Channels:")));
    trow->addWidget(m_siteChn);
    trow->addWidget(new QLabel(QStringLiteral("Group ID's:")));
    trow->addWidget(m_grpId);
    trow->addStretch();
    trow->addWidget(m_compare);
    trow->addWidget(m_import[0]);
    tg->addLayout(trow, 6, 0, 1, 5);
    right->addWidget(m_trunkFrame);

    m_convFrame = new QGroupBox(QStringLiteral("Conventional / Agency Frequencies"));
    auto* cg = new QGridLayout(m_convFrame);
    m_fips = valueLabel(QStringLiteral("000000"));
    m_frqChan = valueLabel(QStringLiteral("0"));
    m_import[1] = new QPushButton(QStringLiteral("Import"));
    cg->addWidget(
        new QLabel(QStringLiteral("Classes: B = Base, M = Mobile, R = Repeater, F = Fixed")), 0, 0,
        1, 4);
    cg->addWidget(new QLabel(QStringLiteral("NOAA SAME FIPS:")), 1, 0);
    cg->addWidget(m_fips, 1, 1);
    cg->addWidget(new QLabel(QStringLiteral("Channels:")), 1, 2);
    cg->addWidget(m_frqChan, 1, 3);
    cg->addWidget(m_import[1], 1, 4);
    right->addWidget(m_convFrame);

    m_tv = new QTreeWidget;
    m_tv->setObjectName(QStringLiteral("TV1"));
    m_tv->setHeaderHidden(true);
    m_tv->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_tv->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_tv->header()->setStretchLastSection(false);
    right->addWidget(m_tv, 1);
    top->addLayout(right, 1);

    m_timer1 = new QTimer(this);
    m_timer1->setInterval(50);
    m_timer1->setSingleShot(true);

    connect(m_logIn, &QPushButton::clicked, this, &FrmImportRR::LogInBtn_Click);
    connect(m_country, &QComboBox::activated, this, &FrmImportRR::CboCountry_Click);
    connect(m_state, &QComboBox::activated, this, &FrmImportRR::CboState_Click);
    connect(m_county, &QComboBox::activated, this, &FrmImportRR::CboCounty_Click);
    connect(m_system, &QComboBox::activated, this, &FrmImportRR::CboSystem_Click);
    connect(m_import[0], &QPushButton::clicked, this, [this] { ImportBtn_Click(0); });
    connect(m_import[1], &QPushButton::clicked, this, [this] { ImportBtn_Click(1); });
    connect(m_compare, &QPushButton::clicked, this, &FrmImportRR::CompareBtn_Click);
    connect(m_tv, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int) {
        if (!m_checking)
            TV1_NodeCheck(item);
    });
    connect(m_tv, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* item) { TV1_NodeClick(item); });
    connect(m_lv1, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem*, int) {
        // The ticks stay in the rows; only the count is kept (nothing else reads either).
        Trap(m_ctx.errors, "FrmImportRR -> LV1_ItemCheck", [&] {
            m_bandPlanSelCnt = 0;
            for (int i = 0; i < m_lv1->topLevelItemCount(); ++i)
                m_bandPlanSelCnt += m_lv1->topLevelItem(i)->checkState(0) == Qt::Checked;
        });
    });
    connect(m_timer1, &QTimer::timeout, this, &FrmImportRR::Timer1_Timer);
    resize(1000, 640);
}

void FrmImportRR::buildMenus() {
    const auto add = [this](QMenu* menu, const QString& text, const char* name) {
        QAction* a = menu->addAction(text);
        a->setObjectName(QString::fromLatin1(name));
        m_menuItems.insert(a->objectName(), a);
        return a;
    };
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    connect(add(file, QStringLiteral("&Load XML File"), "LoadXmlMenuItem"), &QAction::triggered,
            this, &FrmImportRR::LoadXmlMenuItem_Click);
    connect(add(file, QStringLiteral("&Save XML File"), "SaveXmlMenuItem"), &QAction::triggered,
            this, &FrmImportRR::SaveXmlMenuItem_Click);
    QAction* view = add(file, QStringLiteral("Vie&w XML File"), "ViewMenuItem");
    view->setCheckable(true);
    connect(view, &QAction::triggered, this, &FrmImportRR::ViewMenuItem_Click);
    file->addSeparator();
    connect(add(file, QStringLiteral("E&xit"), "ExitMenuItem"), &QAction::triggered, this,
            &QWidget::close);
    QMenu* settings = menuBar()->addMenu(QStringLiteral("&Settings"));
    QAction* dbase = add(settings, QStringLiteral("&Database Address"), "DBaseAddrMenuItem");
    dbase->setCheckable(true);
    connect(dbase, &QAction::triggered, this, &FrmImportRR::DBaseAddrMenuItem_Click);
    QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
    // Both open once the user is logged in; the feeds only when the user has some.
    QAction* search = add(options, QStringLiteral("&Advanced Search"), "SearchFreqsMenuItem");
    search->setCheckable(true);
    search->setEnabled(false);
    connect(search, &QAction::triggered, this, &FrmImportRR::SearchFreqsMenuItem_Click);
    QAction* feeds = add(options, QStringLiteral("&Show My Audio Feeds"), "ShowAudioFeedsMenuItem");
    feeds->setCheckable(true);
    feeds->setEnabled(false);
    connect(feeds, &QAction::triggered, this, &FrmImportRR::ShowAudioFeedsMenuItem_Click);
}

QAction* FrmImportRR::menuItem(const QString& objectName) const {
    return m_menuItems.value(objectName);
}

// ---- opening and closing --------------------------------------------------------------------

void FrmImportRR::Load() {
    Trap(m_ctx.errors, "FrmImportRR -> Load", [&](Stmt& s) {
        s.at(1);
        m_loggedIn = m_haveCredentials = m_zipFound = m_treeLoaded = false;
        m_compare->setEnabled(false);
        s.at(2);
        m_uName->setText(m_ctx.registry.WebName);
        m_uPass->setText(m_ctx.component<WebCredentials>().password());
        m_zip->setText(m_ctx.registry.ZipCode);
        s.at(3);
        m_stid = m_ctid = m_aid = 0;
        m_convLevel = 0;
        s.at(4);
        ResetControls();
        Reload_DBase();
        m_treeTag = QStringLiteral("*");
        m_closed = false;
    });
}

void FrmImportRR::closeEvent(QCloseEvent* event) {
    Unload();
    QMainWindow::closeEvent(event);
}

void FrmImportRR::Unload() {
    if (m_closed)
        return;
    Trap(m_ctx.errors, "FrmImportRR -> Unload", [&](Stmt& s) {
        s.at(1);
        rememberWindow(this, m_ctx, WindowId::ImpRR);
        WebCredentials& cred = m_ctx.component<WebCredentials>();
        if (m_rememberMe->isChecked()) {
            cred.remember(m_uName->text(), m_uPass->text());
        } else {
            m_ctx.registry.WebName.clear();
            Save_Setting({}, QString(), QStringLiteral("WebName"));
            cred.forget();
        }
        s.at(3);
        if (m_verify)
            m_verify->close();
        if (m_viewer)
            m_viewer->close();
        if (m_dbaseLoc)
            m_dbaseLoc->close();
        if (m_search)
            m_search->close();
        if (m_feeds)
            m_feeds->close();
        if (m_compareList)
            m_compareList->close();
    });
    m_closed = true;
    m_ctx.markSettingsChanged();
    Q_EMIT closed();
}

void FrmImportRR::ResetControls() {
    Trap(m_ctx.errors, "FrmImportRR -> ResetControls", [&] {
        for (QComboBox* list : {m_country, m_state, m_county, m_system})
            clearList(list);
        setOption(-1);
        for (QRadioButton* o : m_typeOpt)
            o->setEnabled(false);
        for (QLabel* l : std::as_const(m_trsLabels))
            l->clear();
        m_fips->setText(QStringLiteral("000000"));
        m_lv1->clear();
        clearTree();
        m_treeTag = QStringLiteral("*");
        m_client.CountyInfo = TypCountyInfo{};
        Set_TvHeight(false);
    });
}

void FrmImportRR::Reload_DBase() {
    Trap(m_ctx.errors, "FrmImportRR -> Reload_DBase", [&] {
        m_haveCredentials = !m_uName->text().isEmpty() && !m_uPass->text().isEmpty();
        m_rememberMe->setChecked(m_haveCredentials);
        if (m_haveCredentials) {
            BusyCursor busy;
            m_client.InitSoap();
        }
    });
}

// ---- login ----------------------------------------------------------------------------------

void FrmImportRR::LogInBtn_Click() {
    Trap(m_ctx.errors, "RRImpLogin", [&](Stmt& s) {
        s.at(1);
        const QString user = m_uName->text(), pass = m_uPass->text(), zip = m_zip->text();
        m_client.setCredentials(user, pass);
        m_ctx.registry.WebName = user;
        m_ctx.registry.ZipCode = zip;
        m_haveCredentials = !user.isEmpty() && !pass.isEmpty();
        s.at(2);
        if (!m_client.descriptionLoaded()) {
            BusyCursor busy;
            if (!m_client.InitSoap() || !m_client.descriptionLoaded())
                return;
        }
        s.at(3);
        {
            BusyCursor busy;
            // The public service and a local address alike: the user's data proves the login.
            s.at(4);
            if (!m_client.getUserData()) {
                m_loggedIn = false;
                return;
            }
            m_loggedIn = !m_client.UserData.subExpireDate.isEmpty();
            m_expiry->setText(m_client.UserData.subExpireDate);
            m_logIn->setEnabled(!m_loggedIn);
            if (m_loggedIn) {
                s.at(7);
                m_client.getTrsFlavor(0);
                m_client.getTrsType(0);
                m_client.getTrsVoice(0);
                m_client.getMode(0);
                m_client.getTag(0);
                m_client.getMetroArea(0);
                m_client.fccGetRadioServiceCode(QStringLiteral("0"));
                menuItem(QStringLiteral("SearchFreqsMenuItem"))->setEnabled(true);
                menuItem(QStringLiteral("ShowAudioFeedsMenuItem"))
                    ->setEnabled(m_client.getUserFeedBroadcasts());
            }
        }
        if (!m_loggedIn) {
            if (!m_ctx.errors.failedInAction())
                m_ctx.errors.Tell(QStringLiteral("The web service at %1 gave no subscription "
                                                 "for %2; check the user name and log in again.")
                                      .arg(m_client.baseUrl(), user));
            return;
        }
        BusyCursor busy;
        if (!zip.isEmpty()) {
            s.at(8);
            lookUpZip(zip);
        }
        s.at(9);
        m_client.getCountryList();
        if (!m_client.Countries.isEmpty()) {
            QStringList names;
            for (const TypCountry& c : std::as_const(m_client.Countries))
                names << c.countryName;
            fillList(m_country, kSelect, names);
            if (m_zipFound) {
                m_city->setText(m_client.ZipcodeInfo.city);
                setListText(m_country, QStringLiteral("United States"));
            }
        }
    });
}

bool FrmImportRR::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_zip && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (m_loggedIn)
                ZipCodeEnter();
            return true;
        }
        if (key->key() == Qt::Key_Backspace || key->key() == Qt::Key_Delete)
            return false;
        const QString text = key->text();
        if (text.isEmpty())
            return false; // moving keys are not typed characters
        return !(text.size() == 1 && (text[0] == u'.' || (text[0] >= u'0' && text[0] <= u'9')));
    }
    if (watched == m_city && event->type() == QEvent::MouseButtonRelease) {
        CityLbl_Click();
        return true;
    }
    return QMainWindow::eventFilter(watched, event);
}

void FrmImportRR::ZipCodeEnter() {
    Trap(m_ctx.errors, "FrmImportRR -> ZipCodeTxt_KeyPress", [&] {
        BusyCursor busy;
        m_ctx.registry.ZipCode = m_zip->text();
        if (!lookUpZip(m_zip->text()))
            return;
        const TypZipcode zip = m_client.ZipcodeInfo;
        if (m_state->count() == 0 && m_country->count() > 0)
            setListText(m_country, QStringLiteral("United States"));
        if (m_state->count() > 0) {
            m_city->setText(zip.city);
            if (m_state->currentText() != m_client.Get_StateName(zip.stid))
                setListText(m_state, m_client.Get_StateName(zip.stid));
            if (m_county->currentText() != m_client.Get_CountyName(zip.ctid))
                setListText(m_county, m_client.Get_CountyName(zip.ctid));
        }
    });
}

bool FrmImportRR::lookUpZip(const QString& zip) {
    m_client.getZipcodeInfo(zip.toInt());
    m_lat->setText(QString::number(m_client.ZipcodeInfo.lat));
    m_lon->setText(QString::number(m_client.ZipcodeInfo.lon));
    m_zipFound = m_client.ZipcodeInfo.stid != 0;
    if (!m_zipFound) {
        m_zip->clear();
        if (!m_ctx.errors.failedInAction())
            m_ctx.errors.Tell(
                QStringLiteral("The web service knows no zip code %1; check it.").arg(zip));
    }
    return m_zipFound;
}

void FrmImportRR::CityLbl_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> Label2", [&] {
        if (!m_zipFound)
            return;
        if (m_country->currentText() != u"United States")
            setListText(m_country, QStringLiteral("United States"));
        setListText(m_county, m_client.Get_CountyName(m_client.ZipcodeInfo.ctid));
    });
}

// ---- navigation -----------------------------------------------------------------------------

void FrmImportRR::clearList(QComboBox* list) {
    list->clear();
    list->setToolTip({});
    setListEnabled(list, false);
}

void FrmImportRR::fillList(QComboBox* list, const QString& selectRow, const QStringList& names) {
    list->clear();
    list->addItem(selectRow);
    list->addItems(names);
    setListEnabled(list, true);
    list->setCurrentIndex(0);
}

bool FrmImportRR::setListText(QComboBox* list, const QString& text) {
    const int row = list->findText(text, Qt::MatchFixedString);
    if (row < 0)
        return false;
    list->setCurrentIndex(row);
    if (list == m_country)
        CboCountry_Click();
    else if (list == m_state)
        CboState_Click();
    else if (list == m_county)
        CboCounty_Click();
    else
        CboSystem_Click();
    return true;
}

void FrmImportRR::setOption(int index) {
    m_typeGroup->setExclusive(false);
    for (int i = 0; i < 3; ++i)
        m_typeOpt[i]->setChecked(i == index);
    m_typeGroup->setExclusive(true);
    m_listType = index;
    if (index >= 0)
        TypeOpt_Click(index);
    else
        m_systemLabel->setText(QStringLiteral("System:"));
}

void FrmImportRR::CboCountry_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> CboCountry", [&] {
        m_country->setToolTip(m_country->currentText());
        m_stid = m_ctid = m_aid = 0;
        m_fips->setText(QStringLiteral("000000"));
        for (QComboBox* list : {m_state, m_county, m_system})
            clearList(list);
        clearTree();
        const int row = m_country->currentIndex();
        if (row < 1 || row > m_client.Countries.size())
            return;
        BusyCursor busy;
        m_client.getCountryInfo(m_client.Countries[row - 1].coid);
        if (m_client.States.isEmpty())
            return;
        QStringList names;
        for (const TypState& st : std::as_const(m_client.States))
            names << st.stateName;
        fillList(m_state, kSelect, names);
        if (m_country->currentText().toLower() == u"united states" && m_zipFound)
            setListText(m_state, m_client.Get_StateName(m_client.ZipcodeInfo.stid));
    });
}

void FrmImportRR::CboState_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> CboState", [&] {
        m_state->setToolTip(m_state->currentText());
        const int row = m_state->currentIndex();
        m_ctid = m_aid = 0;
        m_fips->setText(QStringLiteral("000000"));
        clearList(m_county);
        clearList(m_system);
        clearTree();
        if (row < 1 || row > m_client.States.size())
            return;
        m_stid = m_client.States[row - 1].stid;
        m_convLevel = 1;
        BusyCursor busy;
        m_client.getStateInfo(m_stid);
        const TypStateInfo& info = m_client.StateInfo;
        if (!info.countyList.isEmpty()) {
            QStringList names;
            for (const TypCountySummary& c : info.countyList)
                names << c.countyName;
            fillList(m_county, kSelect, names);
        }
        m_typeOpt[0]->setEnabled(!info.trsList.isEmpty());
        m_typeOpt[2]->setEnabled(!info.agencyList.isEmpty());
        if (m_typeOpt[2]->isEnabled())
            setOption(2);
        else if (m_typeOpt[0]->isEnabled())
            setOption(0);
        else
            setOption(-1);
        // A zip code that named this state also names its county.
        if (m_zipFound && m_client.ZipcodeInfo.stid == m_stid && m_client.ZipcodeInfo.ctid != 0)
            setListText(m_county, m_client.Get_CountyName(m_client.ZipcodeInfo.ctid));
    });
}

void FrmImportRR::CboCounty_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> CboCounty", [&] {
        m_county->setToolTip(m_county->currentText());
        const int row = m_county->currentIndex();
        const auto& counties = m_client.StateInfo.countyList;
        clearList(m_system);
        clearTree();
        if (row < 1 || row > counties.size())
            return;
        m_ctid = counties[row - 1].ctid;
        m_aid = 0;
        m_convLevel = 2;
        {
            BusyCursor busy;
            m_client.getCountyInfo(m_ctid);
        }
        const TypCountyInfo& info = m_client.CountyInfo;
        m_fips->setText(info.fips.isEmpty() ? QStringLiteral("000000") : info.fips);
        QStringList agencies;
        for (const TypAgencySummary& a : info.agencyList)
            agencies << a.aName;
        fillList(m_system, kSelect, agencies);
        m_typeOpt[0]->setEnabled(!info.trsList.isEmpty());
        m_typeOpt[1]->setEnabled(!info.cats.isEmpty());
        m_typeOpt[2]->setEnabled(!info.agencyList.isEmpty());
        setOption(m_typeOpt[1]->isEnabled()   ? 1
                  : m_typeOpt[2]->isEnabled() ? 2
                  : m_typeOpt[0]->isEnabled() ? 0
                                              : -1);
    });
}

void FrmImportRR::TypeOpt_Click(int index) {
    Trap(m_ctx.errors, "RRImpTypOpt", [&] {
        m_listType = index;
        m_systemLabel->setText(index == 2 ? QStringLiteral("Agency:") : QStringLiteral("System:"));
        clearTree();
        clearList(m_system);
        Set_TvHeight(index == 0);
        const bool county = m_ctid != 0;
        if (index == 0) {
            QStringList names;
            const auto& list = county ? m_client.CountyInfo.trsList : m_client.StateInfo.trsList;
            for (const TypTrsSummary& t : list)
                names << t.sName;
            fillList(m_system, kSelectSystem, names);
        } else if (index == 1) {
            m_convLevel = 3;
            RRImpShwCnv();
        } else if (index == 2) {
            m_convLevel = county ? 2 : 1;
            QStringList names;
            const auto& list =
                county ? m_client.CountyInfo.agencyList : m_client.StateInfo.agencyList;
            for (const TypAgencySummary& a : list)
                names << a.aName;
            fillList(m_system, kSelectSystem, names);
        }
    });
}

void FrmImportRR::CboSystem_Click() {
    Trap(m_ctx.errors, "RRImpSystemCbo", [&] {
        m_system->setToolTip(m_system->currentText());
        const int row = m_system->currentIndex() - 1;
        const bool county = m_ctid != 0;
        if (m_listType == 0) {
            clearTree();
            const auto& list = county ? m_client.CountyInfo.trsList : m_client.StateInfo.trsList;
            if (row < 0 || row >= list.size())
                return;
            const qint32 sid = list[row].sid;
            m_sid = sid;
            BusyCursor busy;
            m_client.getTrsSites(sid);
            if (!m_client.getTrsDetails(sid))
                m_client.TrsDetails = TypTrsDetails{};
            m_client.getTrsTalkgroupCats(sid);
            RRImpShwTrsDet();
            RRImpShwTrs();
        } else if (m_listType == 1) {
            m_convLevel = 3;
            m_freqSelCnt = 0;
            showCounters();
        } else if (m_listType == 2) {
            clearTree();
            const auto& list =
                county ? m_client.CountyInfo.agencyList : m_client.StateInfo.agencyList;
            if (row < 0 || row >= list.size())
                return;
            m_convLevel = county ? 2 : 1;
            m_aid = list[row].aid;
            BusyCursor busy;
            if (!m_client.getAgencyInfo(m_aid))
                m_client.AgencyInfo = TypAgencyInfo{};
            RRImpShwAgn();
        }
    });
}

void FrmImportRR::DBaseAddrMenuItem_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> DBaseAddrMenuItem", [&] {
        QAction* item = menuItem(QStringLiteral("DBaseAddrMenuItem"));
        if (m_dbaseLoc) {
            m_dbaseLoc->close();
            item->setChecked(false);
            return;
        }
        m_dbaseLoc = OpenDBaseLoc(m_ctx, this);
        item->setChecked(true);
        connect(m_dbaseLoc.data(), &QObject::destroyed, item, [item] { item->setChecked(false); });
        connect(m_dbaseLoc.data(), &FrmDBaseLoc::saved, this, [this] {
            // Another database: the lists and the login belong to the old one.
            m_loggedIn = false;
            m_logIn->setEnabled(true);
            ResetControls();
            Reload_DBase();
        });
    });
}

// ---- trees ----------------------------------------------------------------------------------

void FrmImportRR::Set_TvHeight(bool trunking) {
    m_trunkFrame->setVisible(trunking);
    m_convFrame->setVisible(!trunking);
}

void FrmImportRR::zeroCounters() {
    m_freqSelCnt = m_siteChanSelCnt = m_groupSelCnt = m_searchSelCnt = m_tagSelCnt = 0;
    m_siteChosen = false;
    m_chosenSite = -1;
    showCounters();
}

void FrmImportRR::showCounters() {
    // The search result trees count their own ticks in the conventional frame.
    const int freqs = m_treeTag == u"SearchFreqs"  ? m_searchSelCnt
                      : m_treeTag == u"SearchTaqs" ? m_tagSelCnt
                                                   : m_freqSelCnt;
    m_frqChan->setText(QString::number(freqs));
    m_siteChn->setText(QString::number(m_siteChanSelCnt));
    m_grpId->setText(QString::number(m_groupSelCnt));
    m_import[1]->setEnabled(freqs >= 1);
    m_import[0]->setEnabled(m_groupSelCnt >= 1 || m_siteChanSelCnt >= 1);
    m_compare->setEnabled(m_import[0]->isEnabled());
}

void FrmImportRR::clearTree() {
    m_checking = true;
    m_tv->clear();
    m_checking = false;
    m_nodes.clear();
    m_treeLoaded = false;
    m_conv.clear();
    m_trs = TrsTree{};
    m_timer1->stop();
    m_timer1->setProperty("tag", QString());
    zeroCounters();
}

void FrmImportRR::showTree(const QString& tag, const QList<TreeNode>& nodes) {
    m_treeTag = tag;
    m_checking = true;
    m_tv->clear();
    m_nodes.clear();
    const std::function<void(QTreeWidgetItem*, const TreeNode&)> add = [&](QTreeWidgetItem* parent,
                                                                           const TreeNode& n) {
        auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tv);
        item->setText(0, n.text);
        item->setData(0, KeyRole, n.key);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
        m_nodes.insert(n.key, item);
        for (const TreeNode& c : n.children)
            add(item, c);
    };
    for (const TreeNode& n : nodes)
        add(nullptr, n);
    for (int i = 0; i < m_tv->topLevelItemCount(); ++i)
        m_tv->topLevelItem(i)->setExpanded(true);
    m_checking = false;
    zeroCounters();
}

void FrmImportRR::RRImpShwCnv() {
    Trap(m_ctx.errors, "RRImpShwCnv", [&] {
        BusyCursor busy;
        if (!m_treeLoaded || m_conv.isEmpty()) {
            ConvTree tree = ConvTreeFromCats(m_client.CountyInfo.cats);
            FetchSubcatFreqs(m_client, tree, &m_ctx.errors);
            m_conv = tree;
        } else {
            ClearSelected(m_conv);
        }
        showTree(QStringLiteral("StateConv"), ConvTreeNodes(m_conv, m_client.Modes));
        m_treeLoaded = true;
    });
}

void FrmImportRR::RRImpShwAgn() {
    Trap(m_ctx.errors, "RRImpShwAgn", [&] {
        BusyCursor busy;
        ConvTree tree = ConvTreeFromCats(m_client.AgencyInfo.cats);
        FetchSubcatFreqs(m_client, tree, &m_ctx.errors);
        m_conv = tree;
        showTree(QStringLiteral("CountyAgency"), ConvTreeNodes(m_conv, m_client.Modes));
        m_treeLoaded = true;
    });
}

void FrmImportRR::RRImpShwTrsDet() {
    Trap(m_ctx.errors, "RRImpShwTrsDet", [&] {
        const TypTrsDetails& d = m_client.TrsDetails;
        m_details = d;
        const auto set = [this](const char* name, const QString& text) {
            if (QLabel* l = m_trsLabels.value(QString::fromLatin1(name)))
                l->setText(text);
        };
        set("SystemID", d.sysid.isEmpty() ? QString() : d.sysid[0].sysid);
        set("WACN", d.sysid.isEmpty() ? QString() : d.sysid[0].wacn);
        set("Sites", QString::number(m_client.TrsSites.size()));
        set("FleetMap", FleetMapText(d));
        set("Type", CvrtSiteType(m_ctx.errors, m_client.TrsTypes, d.sType));
        set("Flavor", CvrtSiteFlavor(m_ctx.errors, m_client.TrsFlavors, d.sType, d.sFlavor));
        set("Voice", CvrtSiteVoice(m_ctx.errors, m_client.TrsVoices, d.sType, d.sVoice));
        set("Groups", QString::number(m_client.TgCats.size()));
        set("Updated", d.lastUpdated);
        set("Latitude", QString::number(d.lat));
        set("Longitude", QString::number(d.lon));
        fillBandPlan(-1);
    });
}

void FrmImportRR::fillBandPlan(int site) {
    const QSignalBlocker quiet(m_lv1);
    m_lv1->clear();
    m_bandPlanSelCnt = 0;
    for (const QStringList& row : BandPlanRows(m_details, m_client.TrsSites, site)) {
        auto* item = new QTreeWidgetItem(m_lv1, row);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(0, Qt::Unchecked);
    }
}

void FrmImportRR::RRImpShwTrs() {
    Trap(m_ctx.errors, "RRImpShwTrs", [&] {
        BusyCursor busy;
        TrsTree tree;
        tree.sites = m_client.TrsSites;
        tree.typeI = IsTypeI(m_ctx.errors, m_client.TrsFlavors, m_client.TrsDetails);
        // As with the subcategories: after a reported failure the other categories stay empty.
        const int reports = m_ctx.errors.reportCount();
        for (qsizetype i = 0; i < m_client.TgCats.size(); ++i)
            if (m_ctx.errors.reportCount() != reports ||
                !m_client.getTrsTalkgroups(qint16(i), m_sid, m_client.TgCats[i].tgCid, 0, 0))
                m_client.TgCats[i].Talkgroups.clear();
        tree.tgCats = m_client.TgCats;
        for (const TypSite& s : std::as_const(tree.sites))
            tree.siteFreqSel.append(QList<bool>(s.siteFreqs.size(), false));
        for (const TypTgCat& c : std::as_const(tree.tgCats))
            tree.tgSel.append(QList<bool>(c.Talkgroups.size(), false));
        m_trs = tree;
        showTree(QStringLiteral("CountyTrs"), TrsTreeNodes(m_trs));
    });
}

// ---- ticks ----------------------------------------------------------------------------------

void FrmImportRR::setChecked(QTreeWidgetItem* item, bool on) {
    const bool was = m_checking;
    m_checking = true;
    item->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
    m_checking = was;
}

void FrmImportRR::refuseTick(QTreeWidgetItem* item) {
    m_ctx.prompts().message(QStringLiteral("You can only Import One Site at a time"), kCaption,
                            Icon::Exclamation, Buttons::Ok);
    // The tick cannot be taken back while its own change is being delivered.
    m_timer1->setProperty("tag", item->data(0, KeyRole).toString());
    m_timer1->start();
}

void FrmImportRR::Timer1_Timer() {
    Trap(m_ctx.errors, "FrmImportRR -> Timer1_Timer", [&] {
        m_timer1->stop();
        const QString key = m_timer1->property("tag").toString();
        if (QTreeWidgetItem* item = m_nodes.value(key))
            setChecked(item, false);
        m_timer1->setProperty("tag", QString());
    });
}

void FrmImportRR::TV1_NodeCheck(QTreeWidgetItem* item) {
    Trap(m_ctx.errors, "RRimpTv1NodeChk ", [&] {
        const bool on = item->checkState(0) == Qt::Checked;
        if (m_treeTag == u"SearchFreqs" || m_treeTag == u"SearchTaqs") {
            searchNodeCheck(item);
            return;
        }
        const KeyParts k = SplitKey(item->data(0, KeyRole).toString());
        const int c = k.c - 1, s = k.s - 1, d = k.d - 1;
        if (m_treeTag == u"StateConv" || m_treeTag == u"CountyAgency") {
            if (c < 0 || c >= m_conv.size())
                return;
            const auto tickSub = [&](int ci, int si) {
                ConvSubcat& sub = m_conv[ci].subcats[si];
                for (int i = 0; i < sub.selected.size(); ++i) {
                    sub.selected[i] = on;
                    setChecked(m_nodes.value(NodeKey(ci + 1, si + 1, i + 1)), on);
                }
            };
            const int before = m_freqSelCnt;
            if (d >= 0) {
                m_conv[c].subcats[s].selected[d] = on;
            } else if (s >= 0) {
                tickSub(c, s);
            } else {
                for (int si = 0; si < m_conv[c].subcats.size(); ++si) {
                    tickSub(c, si);
                    setChecked(m_nodes.value(NodeKey(c + 1, si + 1)), on);
                }
            }
            m_freqSelCnt = CountSelected(m_conv);
            if (d >= 0 && item->parent()) {
                if (on && before == 0 && m_freqSelCnt >= 1)
                    setChecked(item->parent(), true);
                else if (!on && m_freqSelCnt == 0)
                    setChecked(item->parent(), false);
            }
            showCounters();
            return;
        }
        if (m_treeTag != u"CountyTrs")
            return;
        if (k.c == 1) {
            if (s < 0) {
                if (on)
                    refuseTick(item);
                return;
            }
            if (on && m_siteChosen && m_chosenSite != s) {
                refuseTick(item);
                return;
            }
            QList<bool>& sel = m_trs.siteFreqSel[s];
            if (d < 0) {
                if (on) {
                    m_siteChosen = true;
                    m_chosenSite = s;
                }
                if (on || m_chosenSite == s) {
                    for (int i = 0; i < sel.size(); ++i) {
                        sel[i] = on;
                        setChecked(m_nodes.value(NodeKey(1, s + 1, i + 1)), on);
                    }
                }
            } else {
                sel[d] = on;
                if (on) {
                    m_siteChosen = true;
                    m_chosenSite = s;
                }
            }
            if (!sel.contains(true) && m_chosenSite == s) {
                m_siteChosen = false;
                m_chosenSite = -1;
                setChecked(m_nodes.value(NodeKey(1, s + 1)), false);
            }
        } else if (k.c == 2) {
            const auto tickCat = [&](int ci) {
                QList<bool>& sel = m_trs.tgSel[ci];
                for (int i = 0; i < sel.size(); ++i) {
                    sel[i] = on;
                    setChecked(m_nodes.value(NodeKey(2, ci + 1, i + 1)), on);
                }
            };
            if (s < 0) {
                for (int ci = 0; ci < m_trs.tgSel.size(); ++ci) {
                    tickCat(ci);
                    setChecked(m_nodes.value(NodeKey(2, ci + 1)), on);
                }
            } else if (d < 0) {
                tickCat(s);
            } else {
                m_trs.tgSel[s][d] = on;
            }
        }
        m_siteChanSelCnt = CountSiteSelected(m_trs);
        m_groupSelCnt = CountTgSelected(m_trs);
        showCounters();
    });
}

void FrmImportRR::TV1_NodeClick(QTreeWidgetItem* item) {
    Trap(m_ctx.errors, "RRimpTv1NodeClk ", [&] {
        if (m_treeTag != u"CountyTrs")
            return;
        const KeyParts k = SplitKey(item->data(0, KeyRole).toString());
        if (k.c == 1 && k.s > 0 && k.d == 0)
            fillBandPlan(k.s - 1);
    });
}

// ---- import ---------------------------------------------------------------------------------

BankRec* FrmImportRR::currentBank() {
    if (m_ctx.CurBank < 1 || m_ctx.CurBank > BankCount)
        throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
    return &m_ctx.cur().Banks[m_ctx.CurBank];
}

void FrmImportRR::ImportBtn_Click(int index) {
    Trap(m_ctx.errors, "RRImpBtn", [&](Stmt& s) {
        s.at(1);
        const Answer a = m_ctx.prompts().message(
            QStringLiteral("Overwrite *ALL* Data in the Current Bank?\nSelecting [No] will "
                           "Create a New Bank..."),
            kCaption, Icon::Question, Buttons::YesNoCancel);
        if (a == Answer::Cancel)
            return;
        // No promises a new bank, but the bank set is fixed: the shown bank is written as for Yes.
        BankRec& bank = *currentBank();
        // The import and the verify window's edits and Finish are one undoable step.
        m_stepId = HistoryOf(m_ctx).newMergeId();
        ChangeStep step(m_ctx, QStringLiteral("Web Import"), m_ctx.CurProfile, m_ctx.CurBank,
                        m_stepId);
        if (index == 1 && m_treeTag == u"SearchFreqs" && !m_searchFreqs.isEmpty()) {
            // The search results shown win over conventional ticks made before the search.
            s.at(4);
            searchtree::ImportSearchSelection(m_ctx.errors, bank, m_client.Modes,
                                              QStringLiteral("SearchFreqs"), m_searchFreqs,
                                              m_searchSel);
            Q_EMIT bankImported();
            openVerify();
        } else if (index == 1 && m_treeTag == u"SearchTaqs" && !m_tagFreqs.isEmpty()) {
            s.at(5);
            searchtree::ImportSearchSelection(m_ctx.errors, bank, m_client.Modes,
                                              QStringLiteral("TagFreqs"), m_tagFreqs, m_tagSel);
            Q_EMIT bankImported();
            openVerify();
        } else if (index == 1) {
            s.at(2);
            if (m_freqSelCnt == 0)
                return;
            bank.ImportCount = 0;
            bank.ImportName = m_convLevel == 3 ? ValidateFName(m_county->currentText()) +
                                                     QStringLiteral("-Conventional")
                                               : ValidateFName(m_system->currentText());
            bank.Changed = true;
            ImportConvSelection(m_ctx.errors, bank, m_client.Modes, m_conv);
            Q_EMIT bankImported();
            openVerify();
        } else {
            s.at(3);
            bank.ImportName = ValidateFName(m_system->currentText());
            if (m_siteChanSelCnt > 0) {
                bank.ImportCount = 0;
                bank.Changed = true;
                ImportSiteSelection(m_ctx.errors, bank, m_trs);
                Q_EMIT bankImported();
                openVerify();
            }
        }
    });
}

void FrmImportRR::openVerify() {
    if (m_verify)
        m_verify->close();
    m_verify = new FrmVerifyRRChan(m_ctx, this);
    m_verify->setStepId(m_stepId);
    m_verify->setAttribute(Qt::WA_DeleteOnClose);
    connect(m_verify.data(), &FrmVerifyRRChan::closed, this, [this] { Q_EMIT bankImported(); });
    m_verify->show();
}

void FrmImportRR::CompareBtn_Click() {
    Trap(m_ctx.errors, "RRImportCompare", [&] {
        if (m_groupSelCnt < 1)
            return;
        GroupIdList& list = m_ctx.component<GroupIdList>();
        CompareTalkgroups(m_ctx.errors, list, m_trs);
        if (!m_compareList) {
            m_compareList = new FrmTalkgroupList(m_ctx, this);
            m_compareList->setAttribute(Qt::WA_DeleteOnClose);
        }
        m_compareList->fill(list);
        m_compareList->show();
        m_compareList->raise();
    });
}

// ---- XML text of the last exchange ----------------------------------------------------------

void FrmImportRR::LoadXmlMenuItem_Click() {
    Trap(m_ctx.errors, "RRImpLoadXml-", [&] {
        FileDialogOptions o;
        o.title = QStringLiteral("Load XML File");
        o.startDir = m_ctx.appDir();
        o.pattern = QStringLiteral("*.xml");
        o.defaultExt = QStringLiteral("xml");
        o.presetName = QStringLiteral("*.xml");
        const std::optional<QString> path = m_ctx.prompts().openFile(o);
        if (!path)
            return;
        QFile f(*path);
        if (!f.open(QIODevice::ReadOnly | QIODevice::Text))
            throw KestrelError(err::FileNotFound, QStringLiteral("File not found"));
        QTextStream in(&f);
        QString text;
        while (!in.atEnd())
            text += in.readLine();
        m_client.LastEnvelope = text;
    });
}

void FrmImportRR::SaveXmlMenuItem_Click() {
    Trap(m_ctx.errors, "RRImpSave", [&] {
        FileDialogOptions o;
        o.title = QStringLiteral("Save XML File");
        o.startDir = m_ctx.appDir();
        o.pattern = QStringLiteral("*.xml");
        o.defaultExt = QStringLiteral("xml");
        o.presetName = QStringLiteral("Text.xml");
        const std::optional<QString> path = m_ctx.prompts().saveFile(o);
        if (!path)
            return;
        QString text = m_client.LastEnvelope;
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
        text.replace(u'\n', QStringLiteral("\r\n"));
        if (!SaveBytes(m_ctx, text.toUtf8(), *path))
            throw KestrelError(err::PathNotFound, QStringLiteral("Path not found"));
    });
}

void FrmImportRR::ViewMenuItem_Click() {
    Trap(m_ctx.errors, "FrmImportRR -> ViewMenuItem", [&] {
        QAction* item = menuItem(QStringLiteral("ViewMenuItem"));
        if (!item->isChecked()) {
            if (m_viewer)
                m_viewer->close();
            return;
        }
        const QString text = m_client.LastEnvelope;
        QXmlStreamReader reader(text);
        while (!reader.atEnd())
            reader.readNext();
        if (reader.hasError() || text.trimmed().isEmpty()) {
            item->setChecked(false);
            m_ctx.prompts().message(
                QStringLiteral("Error occurred when parsing the XML file\n\nError Code: %1\nLine "
                               "Number: %2\nLine Position: %3\nReason: %4")
                    .arg(int(reader.error()))
                    .arg(reader.lineNumber())
                    .arg(reader.columnNumber())
                    .arg(reader.hasError() ? reader.errorString()
                                           : QStringLiteral("The document is empty")),
                QStringLiteral("XML Parse Error"), Icon::Exclamation, Buttons::Ok);
            return;
        }
        if (!m_viewer) {
            m_viewer = new FrmViewXml(m_ctx, this);
            m_viewer->setWindowFlag(Qt::Window);
            m_viewer->setAttribute(Qt::WA_DeleteOnClose);
            connect(m_viewer.data(), &FrmViewXml::closed, item,
                    [item] { item->setChecked(false); });
        }
        m_viewer->FillXML(text);
        m_viewer->show();
    });
}

} // namespace kestrel
