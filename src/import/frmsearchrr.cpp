// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmsearchrr.h"

#include "core/appcontext.h"
#include "import/frmimportrr.h"
#include "import/searchtree.h"
#include "ui/windowplace.h"
#include "webservice/rrclient.h"
#include "webservice/ui/keyfilter.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrel {

namespace {

const QString kSelect = QStringLiteral(">>>  Select  <<<");

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

// Call signs and system ids: digits and letters, typed lower case taken as upper case.
void upperCaseBox(QLineEdit* box, ErrorReporter& errors, const char* label) {
    new KeyFilter(
        box,
        [](QChar c) { return isDigit(c) || (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z'); },
        errors, label);
    QObject::connect(box, &QLineEdit::textEdited, box, [box](const QString& text) {
        const QString upper = text.toUpper();
        if (upper != text) {
            const int cursor = box->cursorPosition();
            box->setText(upper);
            box->setCursorPosition(cursor);
        }
    });
}

} // namespace

FrmSearchRR::FrmSearchRR(AppContext& ctx, FrmImportRR& import, QWidget* parent)
    : QWidget(parent, Qt::Window), m_ctx(ctx), m_import(import),
      m_settings(ctx.component<SearchSettings>()) {
    setWindowTitle(QStringLiteral("Advanced Search Options"));
    buildControls();
    placeWindow(this);
    Load();
}

void FrmSearchRR::buildControls() {
    const auto box = [this](const char* name) {
        auto* e = new QLineEdit(this);
        e->setObjectName(QString::fromLatin1(name));
        return e;
    };
    const auto options = [this](QRadioButton** opts, const QStringList& texts, auto handler) {
        auto* group = new QButtonGroup(this);
        auto* row = new QHBoxLayout;
        for (int i = 0; i < texts.size(); ++i) {
            opts[i] = new QRadioButton(texts[i], this);
            group->addButton(opts[i], i);
            row->addWidget(opts[i]);
        }
        row->addStretch();
        connect(group, &QButtonGroup::idClicked, this, handler);
        return row;
    };
    const QStringList captions{
        QStringLiteral("Search Frequency By Location"), QStringLiteral("Search Frequencies By Tag"),
        QStringLiteral("Search Call Signs By Area"), QStringLiteral("Get Call Sign Details"),
        QStringLiteral("Search Trunking Site By System ID")};
    QFormLayout* forms[5];
    auto* layout = new QVBoxLayout(this);
    for (int i = 0; i < 5; ++i) {
        m_frames[i] = new QGroupBox(captions[i], this);
        auto* frame = new QHBoxLayout(m_frames[i]);
        forms[i] = new QFormLayout;
        frame->addLayout(forms[i], 1);
        m_start[i] = new QPushButton(QStringLiteral("Search"), m_frames[i]);
        m_start[i]->setObjectName(QStringLiteral("StartSearchBtn%1").arg(i));
        frame->addWidget(m_start[i], 0, Qt::AlignBottom);
        connect(m_start[i], &QPushButton::clicked, this, [this, i] { StartSearchBtn_Click(i); });
        layout->addWidget(m_frames[i]);
    }

    m_freq = box("FreqTxt");
    m_tone = box("ToneTxt");
    m_metro = new QComboBox(this);
    m_metro->setObjectName(QStringLiteral("CboMetro"));
    forms[0]->addRow(QStringLiteral("Frequency"), m_freq);
    forms[0]->addRow(QStringLiteral("Tone"), m_tone);
    forms[0]->addRow(options(
        m_srchFrqOpt, {QStringLiteral("State"), QStringLiteral("County"), QStringLiteral("Metro")},
        &FrmSearchRR::SrchFrqOpt_Click));
    forms[0]->addRow(m_metro);

    m_tags = new QComboBox(this);
    m_tags->setObjectName(QStringLiteral("CboTags"));
    forms[1]->addRow(m_tags);
    forms[1]->addRow(options(m_tagOpt, {QStringLiteral("County"), QStringLiteral("Agency")},
                             &FrmSearchRR::TagOpt_Click));

    m_lat = box("LatTxt");
    m_lon = box("LonTxt");
    forms[2]->addRow(QStringLiteral("Latitude"), m_lat);
    forms[2]->addRow(QStringLiteral("Longitude"), m_lon);
    forms[2]->addRow(options(m_distOpt,
                             {QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3")},
                             &FrmSearchRR::DistOpt_Click));
    forms[2]->addRow(options(m_rangeOpt,
                             {QStringLiteral("Statute Miles"), QStringLiteral("Nautical Miles"),
                              QStringLiteral("Kilometers")},
                             &FrmSearchRR::RangeOpt_Click));

    m_callSign = box("CallSignTxt");
    forms[3]->addRow(QStringLiteral("CallSign"), m_callSign);
    m_sysId = box("SysIdTxt");
    forms[4]->addRow(QStringLiteral("System ID"), m_sysId);

    connect(m_metro, &QComboBox::activated, this, &FrmSearchRR::CboMetro_Click);
    connect(m_tags, &QComboBox::activated, this, &FrmSearchRR::CboTags_Click);

    const auto frequency = [](QChar c) { return c == u'.' || isDigit(c); };
    const auto degrees = [](QChar c) { return c == u'+' || c == u'-' || c == u'.' || isDigit(c); };
    new KeyFilter(m_freq, frequency, m_ctx.errors, "FrmSearchRR -> FreqTxt_KeyPress");
    new KeyFilter(m_tone, frequency, m_ctx.errors, "FrmSearchRR -> ToneTxt_KeyPress");
    new KeyFilter(m_lat, degrees, m_ctx.errors, "FrmSearchRR -> LatTxt_KeyPress");
    new KeyFilter(m_lon, degrees, m_ctx.errors, "FrmSearchRR -> LonTxt_KeyPress");
    upperCaseBox(m_callSign, m_ctx.errors, "FrmSearchRR -> CallSignTxt_KeyPress");
    upperCaseBox(m_sysId, m_ctx.errors, "FrmSearchRR -> SysIdTxt_KeyPress");
}

void FrmSearchRR::Load() {
    Trap(m_ctx.errors, "FrmSearchRR -> Load", [&](Stmt& s) {
        s.at(1);
        m_lat->setText(m_settings.LatText);
        m_lon->setText(m_settings.LonText);
        s.at(2);
        // The call-sign searches open for any address whose description offers them.
        const RRClient& client = m_ctx.component<RRClient>();
        const bool fcc[] = {client.offers(RRCommands::fccGetProxCallsigns),
                            client.offers(RRCommands::fccGetCallsign)};
        for (int i : {2, 3}) {
            m_frames[i]->setEnabled(fcc[i - 2]);
            m_start[i]->setEnabled(fcc[i - 2]);
        }
        s.at(3);
        m_metro->clear();
        if (!client.MetroAreas.isEmpty()) {
            m_metro->addItem(kSelect);
            for (const TypMetroArea& m : client.MetroAreas)
                m_metro->addItem(m.metroName);
            m_metro->setCurrentIndex(0);
        }
        m_metro->setEnabled(!client.MetroAreas.isEmpty());
        s.at(4);
        m_tags->clear();
        if (!client.Tags.isEmpty()) {
            m_tags->addItem(kSelect);
            for (const TypTag& t : client.Tags)
                m_tags->addItem(t.tagDescr);
            m_tags->setCurrentIndex(0);
        }
        m_tags->setEnabled(!client.Tags.isEmpty());
        s.at(5);
        m_srchFrqOpt[0]->setChecked(true);
        SrchFrqOpt_Click(0);
        m_tagOpt[0]->setChecked(true);
        TagOpt_Click(0);
        m_distOpt[0]->setChecked(true);
        DistOpt_Click(0);
        m_rangeOpt[0]->setChecked(true);
        RangeOpt_Click(0);
    });
}

void FrmSearchRR::closeEvent(QCloseEvent* event) {
    Unload();
    QWidget::closeEvent(event);
}

void FrmSearchRR::Unload() {
    if (m_closed)
        return;
    m_closed = true;
    Trap(m_ctx.errors, "FrmSearchRR -> Unload", [&] {
        if (QAction* item = m_import.menuItem(QStringLiteral("SearchFreqsMenuItem")))
            item->setChecked(false);
    });
    Q_EMIT closed();
}

void FrmSearchRR::SrchFrqOpt_Click(int index) {
    Trap(m_ctx.errors, "FrmSearchRR -> SrchFrqOpt", [&] {
        m_settings.SearchScope = index;
        m_metro->setEnabled(index == 2 && m_metro->count() > 0);
        m_settings.AreaName = index == 0   ? m_import.CboState()->currentText()
                              : index == 1 ? m_import.CboCounty()->currentText()
                                           : QString();
        if (index == 2 && m_metro->currentIndex() > 0)
            CboMetro_Click();
    });
}

void FrmSearchRR::CboMetro_Click() {
    Trap(m_ctx.errors, "FrmSearchRR -> CboMetro", [&] {
        m_settings.AreaName = m_metro->currentText();
        m_metro->setToolTip(m_metro->currentText());
        const int row = m_metro->currentIndex();
        const auto& metros = m_ctx.component<RRClient>().MetroAreas;
        if (row >= 1 && row <= metros.size())
            m_settings.mid = metros[row - 1].mid;
    });
}

void FrmSearchRR::TagOpt_Click(int index) {
    Trap(m_ctx.errors, "FrmSearchRR -> TagOpt",
         [&] { m_settings.TagByCounty = index == 0 ? 1 : 0; });
}

void FrmSearchRR::CboTags_Click() {
    Trap(m_ctx.errors, "FrmSearchRR -> CboTags", [&] {
        const int row = m_tags->currentIndex();
        const auto& tags = m_ctx.component<RRClient>().Tags;
        if (row >= 1 && row <= tags.size())
            m_settings.tagId = tags[row - 1].tagId;
    });
}

void FrmSearchRR::DistOpt_Click(int index) {
    Trap(m_ctx.errors, "FrmSearchRR -> DistOpt", [&] { m_settings.SearchRange = index + 1; });
}

void FrmSearchRR::RangeOpt_Click(int index) {
    Trap(m_ctx.errors, "FrmSearchRR -> RangeOpt", [&] { m_settings.RangeUnit = index; });
}

void FrmSearchRR::StartSearchBtn_Click(int index) {
    Trap(m_ctx.errors, "FrmSearchRR -> StartSearchBtn", [&] {
        // The import window closes this window before it searches.
        switch (index) {
        case 0:
            m_import.StartFreqSearch(m_freq->text(), m_tone->text());
            break;
        case 1:
            m_import.StartFreqsByTag();
            break;
        case 2:
            m_import.StartFreqsByCallSign(m_lat->text(), m_lon->text());
            break;
        case 3:
            m_import.GetCallSignDetails(m_callSign->text());
            break;
        case 4:
            m_import.GetSysIdDetails(m_sysId->text());
            break;
        default:
            break;
        }
    });
}

} // namespace kestrel
