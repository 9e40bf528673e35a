// SPDX-License-Identifier: GPL-3.0-or-later
// The web import window: logs in to the frequency database, walks country, state, county and
// system or agency, shows what was found as a tree with check boxes and imports the ticked
// frequencies into the shown bank, then opens the verify window. The tree's content and the
// import itself live in importtree.h; this window keeps the controls in step with them.
#pragma once

#include "import/frmfeeds.h"
#include "import/frmsearchrr.h"
#include "import/frmtalkgrouplist.h"
#include "import/frmverifyrrchan.h"
#include "import/importtree.h"
#include "webservice/ui/frmdbaseloc.h"
#include "webservice/ui/frmviewxml.h"

#include <QHash>
#include <QMainWindow>
#include <QPointer>

class QAction;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTimer;
class QTreeWidget;
class QTreeWidgetItem;

namespace kestrel {

class AppContext;
class RRClient;

class FrmImportRR : public QMainWindow {
    Q_OBJECT
public:
    // Item data of TV1: the node key ("c1s2d3").
    static constexpr int KeyRole = Qt::UserRole;

    explicit FrmImportRR(AppContext& ctx, QWidget* parent = nullptr);
    ~FrmImportRR() override;

    // ---- the handlers, public for the tests and the main window ----
    void LogInBtn_Click();
    void ResetControls();
    void Reload_DBase();
    void TypeOpt_Click(int index);
    void ImportBtn_Click(int index);
    void CompareBtn_Click();
    void LoadXmlMenuItem_Click();
    void SaveXmlMenuItem_Click();
    void ViewMenuItem_Click();
    void SearchFreqsMenuItem_Click();
    void ShowAudioFeedsMenuItem_Click();

    // ---- advanced searches (frmimportrr_search.cpp) ----
    void StartFreqSearch(const QString& freq, const QString& tone);
    void StartFreqsByTag();
    void StartFreqsByCallSign(const QString& lat, const QString& lon);
    void GetCallSignDetails(const QString& callSign);
    void GetSysIdDetails(const QString& sysId);
    // Sets a navigation list's text: selects the row that shows it and runs its step; false
    // when no row shows it.
    bool setListText(QComboBox* list, const QString& text);

    // ---- controls ----
    QLineEdit* UNameTxt() const { return m_uName; }
    QLineEdit* UPassTxt() const { return m_uPass; }
    QCheckBox* RemberMeChk() const { return m_rememberMe; }
    QPushButton* LogInBtn() const { return m_logIn; }
    QLineEdit* ZipCodeTxt() const { return m_zip; }
    QComboBox* CboCountry() const { return m_country; }
    QComboBox* CboState() const { return m_state; }
    QComboBox* CboCounty() const { return m_county; }
    QComboBox* CboSystem() const { return m_system; }
    QRadioButton* TypeOpt(int i) const { return m_typeOpt[i]; }
    QLabel* FipsLbl() const { return m_fips; }
    QLabel* CityLbl() const { return m_city; }
    QLabel* ExpiryLbl() const { return m_expiry; }
    QTreeWidget* TV1() const { return m_tv; }
    QTreeWidget* Lv1() const { return m_lv1; }
    QPushButton* ImportBtn(int i) const { return m_import[i]; }
    QPushButton* CompareBtn() const { return m_compare; }
    QLabel* FrqChanLbl() const { return m_frqChan; }
    QLabel* SiteChnLbl() const { return m_siteChn; }
    QLabel* GrpIdLbl() const { return m_grpId; }
    QGroupBox* TrunkFrame() const { return m_trunkFrame; }
    QGroupBox* ConvFrame() const { return m_convFrame; }
    QLabel* TrsLabel(const QString& name) const { return m_trsLabels.value(name); }
    QTimer* Timer1() const { return m_timer1; }
    QAction* menuItem(const QString& objectName) const;
    QTreeWidgetItem* node(const QString& key) const { return m_nodes.value(key); }
    FrmVerifyRRChan* verifyWindow() const { return m_verify; }
    FrmViewXml* xmlViewer() const { return m_viewer; }
    FrmSearchRR* searchWindow() const { return m_search; }
    FrmFeeds* feedsWindow() const { return m_feeds; }
    FrmTalkgroupList* compareWindow() const { return m_compareList; }

    // ---- state ----
    QString treeTag() const { return m_treeTag; }
    bool loggedIn() const { return m_loggedIn; }
    int FreqSelCnt() const { return m_freqSelCnt; }
    int SiteChanSelCnt() const { return m_siteChanSelCnt; }
    int GroupSelCnt() const { return m_groupSelCnt; }
    int ConvLevel() const { return m_convLevel; }
    int SearchSelCnt() const { return m_searchSelCnt; }
    int TagSelCnt() const { return m_tagSelCnt; }

Q_SIGNALS:
    // The window has closed.
    void closed();
    // Channels were written into the shown bank (the verify window follows).
    void bankImported();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildMenus();
    void Load();
    void Unload();

    void CboCountry_Click();
    void CboState_Click();
    void CboCounty_Click();
    void CboSystem_Click();
    void ZipCodeEnter();
    // Asks the service for the zip code's place; an unknown one empties the box and says so.
    bool lookUpZip(const QString& zip);
    void CityLbl_Click();
    void DBaseAddrMenuItem_Click();

    void RRImpShwCnv();
    void RRImpShwAgn();
    void RRImpShwTrsDet();
    void RRImpShwTrs();
    void Set_TvHeight(bool trunking);
    void showTree(const QString& tag, const QList<importtree::TreeNode>& nodes);
    void clearTree();
    void zeroCounters();
    void showCounters();
    void fillBandPlan(int site);

    // Advanced searches.
    void beginSearch();
    void noResults();
    void RRShwSrchFrqs();
    void RRShwTagFrqs();
    void RRShwCallSigns();
    void RRShwCallSignDetails();
    void RRShwSysIdDetails();
    void searchNodeCheck(QTreeWidgetItem* item);

    void TV1_NodeCheck(QTreeWidgetItem* item);
    void TV1_NodeClick(QTreeWidgetItem* item);
    void Timer1_Timer();
    void refuseTick(QTreeWidgetItem* item);
    void setChecked(QTreeWidgetItem* item, bool on);

    void fillList(QComboBox* list, const QString& selectRow, const QStringList& names);
    void clearList(QComboBox* list);
    void setOption(int index); // -1 chooses none
    BankRec* currentBank();
    void openVerify();

    AppContext& m_ctx;
    RRClient& m_client;

    QLineEdit* m_uName;
    QLineEdit* m_uPass;
    QCheckBox* m_rememberMe;
    QPushButton* m_logIn;
    QLineEdit* m_zip;
    QLabel* m_expiry;
    QLabel* m_city;
    QLabel* m_lat;
    QLabel* m_lon;
    QComboBox* m_country;
    QComboBox* m_state;
    QComboBox* m_county;
    QComboBox* m_system;
    QLabel* m_systemLabel = nullptr;
    QRadioButton* m_typeOpt[3];
    QButtonGroup* m_typeGroup;
    QLabel* m_fips;
    QTreeWidget* m_tv;
    QTreeWidget* m_lv1;
    QPushButton* m_import[2];
    QPushButton* m_compare;
    QLabel* m_frqChan;
    QLabel* m_siteChn;
    QLabel* m_grpId;
    QGroupBox* m_trunkFrame;
    QGroupBox* m_convFrame;
    QHash<QString, QLabel*> m_trsLabels;
    QTimer* m_timer1;
    QHash<QString, QAction*> m_menuItems;
    QHash<QString, QTreeWidgetItem*> m_nodes;

    QPointer<FrmVerifyRRChan> m_verify;
    int m_stepId = -1; // the last import's undo step, which the verify window's edits join
    QPointer<FrmViewXml> m_viewer;
    QPointer<FrmDBaseLoc> m_dbaseLoc;
    QPointer<FrmSearchRR> m_search;
    QPointer<FrmFeeds> m_feeds;
    QPointer<FrmTalkgroupList> m_compareList;

    // Window state.
    QString m_treeTag = QStringLiteral("*");
    bool m_loggedIn = false;
    bool m_haveCredentials = false;
    bool m_zipFound = false;
    bool m_treeLoaded = false;
    bool m_checking = false; // the window itself is changing ticks
    bool m_closed = false;
    int m_listType = -1;
    qint32 m_stid = 0;
    qint32 m_ctid = 0;
    qint32 m_aid = 0;
    qint32 m_sid = 0;
    int m_convLevel = 0;
    int m_freqSelCnt = 0;
    int m_siteChanSelCnt = 0;
    int m_groupSelCnt = 0;
    int m_bandPlanSelCnt = 0;
    bool m_siteChosen = false;
    int m_chosenSite = -1;
    importtree::ConvTree m_conv;
    importtree::TrsTree m_trs;
    TypTrsDetails m_details;
    // The window's copies of the last frequency and tag search results, with their ticks.
    QList<TypSearchFreq> m_searchFreqs;
    QList<bool> m_searchSel;
    QList<TypFreq> m_tagFreqs;
    QList<bool> m_tagSel;
    int m_searchSelCnt = 0;
    int m_tagSelCnt = 0;
};

} // namespace kestrel
