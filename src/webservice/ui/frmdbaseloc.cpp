// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmdbaseloc.h"

#include "keyfilter.h"
#include "ui/windowplace.h"

#include "core/appcontext.h"
#include "core/dbaselocation.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace kestrel {

namespace {

constexpr int kUserDefined = 100;
constexpr int kLatest = 99;

QLineEdit* makeBox(QWidget* parent, const char* name, int maxLength = 0) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    if (maxLength > 0)
        box->setMaxLength(maxLength);
    return box;
}

} // namespace

FrmDBaseLoc::FrmDBaseLoc(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmDBaseLoc"));
    setWindowTitle(QStringLiteral("Database Location"));

    auto* location = new QGroupBox(QStringLiteral("Location of Radio Database"), this);
    auto* locationLayout = new QVBoxLayout(location);
    auto* locationGroup = new QButtonGroup(this);
    const QString locationCaptions[2] = {QStringLiteral("RadioReference.com"),
                                         QStringLiteral("Local Address")};
    for (int i = 0; i < 2; ++i) {
        m_locationOpt[i] = new QRadioButton(locationCaptions[i], location);
        m_locationOpt[i]->setObjectName(QStringLiteral("LocationOpt%1").arg(i));
        locationGroup->addButton(m_locationOpt[i], i);
        locationLayout->addWidget(m_locationOpt[i]);
        connect(m_locationOpt[i], &QRadioButton::clicked, this, [this, i] {
            Trap(m_ctx.errors, "FrmDBaseLoc -> LocationOpt", [&] { onLocationOpt(i); });
        });
    }
    m_localTxt = makeBox(location, "LocalTxt");
    m_localTxt->setMinimumWidth(300);
    locationLayout->addWidget(m_localTxt);

    auto* version = new QGroupBox(QStringLiteral("RadioReference Version"), this);
    auto* versionLayout = new QGridLayout(version);
    auto* versionGroup = new QButtonGroup(this);
    for (int i : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, kLatest, kUserDefined}) {
        const QString caption = i == 1              ? QStringLiteral("Classic")
                                : i == kLatest      ? QStringLiteral("Latest")
                                : i == kUserDefined ? QStringLiteral("User Defined")
                                                    : QStringLiteral("Version %1").arg(i);
        auto* opt = new QRadioButton(caption, version);
        opt->setObjectName(QStringLiteral("RRVerOpt%1").arg(i));
        versionGroup->addButton(opt, i);
        const int slot = i <= 10 ? i - 1 : (i == kLatest ? 10 : 11);
        versionLayout->addWidget(opt, slot % 4, slot / 4);
        m_verOpt.insert(i, opt);
        connect(opt, &QRadioButton::clicked, this, [this, i] {
            Trap(m_ctx.errors, "FrmDBaseLoc -> RRVerOpt", [&] { onRRVerOpt(i); });
        });
    }
    m_verTxt = makeBox(version, "RRVerTxt", 3);
    m_verTxt->setMaximumWidth(50);
    versionLayout->addWidget(m_verTxt, 3, 3);

    auto* proxy = new QGroupBox(QStringLiteral("HTTP Proxy"), this);
    auto* proxyLayout = new QFormLayout(proxy);
    m_useProxyChk = new QCheckBox(QStringLiteral("Use Proxy"), proxy);
    m_useProxyChk->setObjectName(QStringLiteral("UseProxyChk"));
    m_proxyAdrTxt = makeBox(proxy, "ProxyAdrTxt");
    m_proxyPrtTxt = makeBox(proxy, "ProxyPrtTxt", 5);
    m_proxyPrtTxt->setMaximumWidth(70);
    proxyLayout->addRow(m_useProxyChk);
    proxyLayout->addRow(QStringLiteral("Address:"), m_proxyAdrTxt);
    proxyLayout->addRow(QStringLiteral("Port:"), m_proxyPrtTxt);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    const QString buttonCaptions[2] = {QStringLiteral("Save"), QStringLiteral("Cancel")};
    for (int i = 0; i < 2; ++i) {
        m_cmndBtn[i] = new QPushButton(buttonCaptions[i], this);
        m_cmndBtn[i]->setObjectName(QStringLiteral("CmndBtn%1").arg(i));
        m_cmndBtn[i]->setAutoDefault(false);
        buttons->addWidget(m_cmndBtn[i]);
    }
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(location);
    layout->addWidget(version);
    layout->addWidget(proxy);
    layout->addLayout(buttons);

    ErrorReporter& errors = m_ctx.errors;
    new KeyFilter(
        m_localTxt, AddressKeyAllowed, errors, "FrmDBaseLoc -> LocalTxt_KeyPress",
        [this] { onLocalTxtLeave(); }, "FrmDBaseLoc -> LocalTxt_LostFocus");
    new KeyFilter(
        m_verTxt, VersionKeyAllowed, errors, "FrmDBaseLoc -> RRVerTxt_KeyPress",
        [this] { onRRVerTxtLeave(); }, "FrmDBaseLoc -> RRVerTxt_LostFocus");
    new KeyFilter(m_proxyAdrTxt, ProxyAddressKeyAllowed, errors,
                  "FrmDBaseLoc -> ProxyAdrTxt_KeyPress");
    new KeyFilter(
        m_proxyPrtTxt, ProxyPortKeyAllowed, errors, "FrmDBaseLoc -> ProxyPrtTxt_KeyPress",
        [this] { onProxyPrtTxtLeave(); }, "FrmDBaseLoc -> ProxyPrtTxt_Change");

    connect(m_localTxt, &QLineEdit::textChanged, this, [this] {
        Trap(m_ctx.errors, "FrmDBaseLoc -> LocalTxt_Change", [&] { onLocalTxtChange(); });
    });
    connect(m_verTxt, &QLineEdit::textChanged, this, [this] {
        Trap(m_ctx.errors, "FrmDBaseLoc -> RRVerTxt_Change", [&] { onRRVerTxtChange(); });
    });
    connect(m_useProxyChk, &QCheckBox::toggled, this,
            [this] { Trap(m_ctx.errors, "FrmDBaseLoc -> UseProxyChk", [&] { onUseProxyChk(); }); });
    connect(m_proxyAdrTxt, &QLineEdit::textChanged, this, [this] {
        Trap(m_ctx.errors, "FrmDBaseLoc -> ProxyAdrTxt_Change", [&] { onProxyAdrTxtChange(); });
    });
    connect(m_proxyPrtTxt, &QLineEdit::textChanged, this, [this] {
        Trap(m_ctx.errors, "FrmDBaseLoc -> ProxyPrtTxt_Change", [&] { onProxyPrtTxtChange(); });
    });
    connect(m_cmndBtn[0], &QPushButton::clicked, this,
            [this] { Trap(m_ctx.errors, "FrmDBaseLoc -> CmndBtn", [&] { onSave(); }); });
    connect(m_cmndBtn[1], &QPushButton::clicked, this,
            [this] { Trap(m_ctx.errors, "FrmDBaseLoc -> CmndBtn", [&] { reject(); }); });

    placeWindow(this);
    Trap(m_ctx.errors, "FrmDBaseLoc -> Load", [&] { Load(); });
}

FrmDBaseLoc::~FrmDBaseLoc() {
    // Hiding the window while it is torn down moves the focus; its boxes must not react then.
    qDeleteAll(findChildren<KeyFilter*>());
}

void FrmDBaseLoc::Load() {
    const ProgramSettings& s = m_ctx.settings;
    m_loaded = false;
    m_cmndBtn[0]->setEnabled(false);
    m_localTxt->setEnabled(false);
    m_localTxt->setText(s.ServiceAddress);

    m_location = s.DBaseIndex == kLocalLocation ? kLocalLocation : kServiceLocation;
    m_locationOpt[m_location]->setChecked(true);
    onLocationOpt(m_location);

    const int v = s.DBaseVersion;
    const int opt = v >= 1 && v <= 8 ? v : v == kLatestVersion ? kLatest : kUserDefined;
    m_verOpt[opt]->setChecked(true);
    m_verTxt->setEnabled(opt == kUserDefined);
    if (opt == kUserDefined)
        m_verTxt->setText(QString::number(v));
    m_localTxt->setText(LocationAddress(v, m_location, s));

    m_proxyAdrTxt->setText(s.DBaseProxyAdr);
    m_proxyPrtTxt->setText(QString::number(s.DBaseProxyPrt));
    m_useProxyChk->setChecked(s.DBaseProxyUse);
    onUseProxyChk();
    m_loaded = true;
}

void FrmDBaseLoc::onLocationOpt(int index) {
    m_location = index;
    m_localTxt->setEnabled(index == kLocalLocation);
    m_localTxt->setText(LocationAddress(m_ctx.settings.DBaseVersion, index, m_ctx.settings));
    m_cmndBtn[0]->setEnabled(!m_localTxt->text().isEmpty());
}

void FrmDBaseLoc::setVersion(int version, const QString& address) {
    m_ctx.settings.DBaseVersion = qint16(version);
    m_ctx.settings.ServiceAddress = address;
    m_ctx.markSettingsChanged();
    m_localTxt->setText(address);
}

void FrmDBaseLoc::onRRVerOpt(int index) {
    if (!m_loaded)
        return;
    m_verTxt->setEnabled(index == kUserDefined);
    if (index >= 1 && index <= 8) {
        setVersion(index, LocationAddress(index, m_location, m_ctx.settings));
    } else if (index == kLatest) {
        setVersion(kLatestVersion, LocationAddress(kLatestVersion, m_location, m_ctx.settings));
    } else if (index == kUserDefined) {
        if (m_verTxt->text().isEmpty())
            m_verTxt->setText(QStringLiteral("8")); // runs Set_UserDefined through the change
        else
            Set_UserDefined();
    }
    // "Version 9" and "Version 10" name versions the service does not offer yet: they change
    // nothing.
}

void FrmDBaseLoc::Set_UserDefined() {
    Trap(m_ctx.errors, "FrmDBaseLoc -> Set_UserDefined", [&] {
        const int version = m_verTxt->text().toInt();
        const ProgramSettings& s = m_ctx.settings;
        setVersion(version, m_location == kLocalLocation ? s.DBaseLocUsr : s.DBaseEndUsr);
    });
}

void FrmDBaseLoc::onRRVerTxtChange() {
    if (!m_loaded || !m_verOpt[kUserDefined]->isChecked())
        return;
    if (m_verTxt->text().isEmpty()) {
        m_verTxt->setText(QStringLiteral("8")); // comes back here with the new text
        return;
    }
    Set_UserDefined();
}

void FrmDBaseLoc::onRRVerTxtLeave() {
    if (!m_loaded || !m_verOpt[kUserDefined]->isChecked())
        return;
    const QString checked = CheckedUserVersion(m_verTxt->text());
    if (checked != m_verTxt->text())
        m_verTxt->setText(checked);
}

void FrmDBaseLoc::onLocalTxtChange() {
    // An emptied box may be typed into again; leaving it empty brings its address back.
    m_cmndBtn[0]->setEnabled(!m_localTxt->text().isEmpty());
}

void FrmDBaseLoc::onLocalTxtLeave() {
    if (!m_localTxt->text().isEmpty())
        return;
    m_localTxt->setText(LocalEndpoint(m_ctx.settings.DBaseVersion, m_ctx.settings));
    m_cmndBtn[0]->setEnabled(true);
}

void FrmDBaseLoc::onUseProxyChk() {
    const bool on = m_useProxyChk->isChecked();
    m_proxyAdrTxt->setEnabled(on);
    m_proxyPrtTxt->setEnabled(on);
}

void FrmDBaseLoc::onProxyAdrTxtChange() {
    if (m_proxyAdrTxt->text().isEmpty())
        m_proxyAdrTxt->setText(QStringLiteral("127.0.0.1"));
}

void FrmDBaseLoc::onProxyPrtTxtChange() {
    if (m_proxyPrtTxt->text().isEmpty())
        m_proxyPrtTxt->setText(QStringLiteral("8080"));
}

void FrmDBaseLoc::onProxyPrtTxtLeave() {
    // The range is checked when the user leaves the box, so that a port can be typed digit by
    // digit.
    const QString checked = CheckedProxyPort(m_proxyPrtTxt->text());
    if (checked != m_proxyPrtTxt->text())
        m_proxyPrtTxt->setText(checked);
}

void FrmDBaseLoc::onSave() {
    onProxyPrtTxtLeave();
    ProgramSettings& s = m_ctx.settings;
    QString address = m_localTxt->text();
    if (m_location == kLocalLocation) {
        // The address typed is the one saved and used, whatever the version.
        const std::optional<QString> checked = CheckedServiceAddress(address);
        if (!checked) {
            m_ctx.prompts().message(
                QStringLiteral("\"%1\" is not a web address; type one that starts with http:// "
                               "or https://, such as http://127.0.0.1:9000/soap2/.")
                    .arg(address),
                windowTitle(), Icon::Exclamation, Buttons::Ok);
            return;
        }
        address = *checked;
        s.DBaseLocUsr = address;
    }
    s.DBaseIndex = qint16(m_location);
    s.ServiceAddress = address;
    s.DBaseProxyUse = m_useProxyChk->isChecked();
    s.DBaseProxyAdr = m_proxyAdrTxt->text();
    s.DBaseProxyPrt = qint16(m_proxyPrtTxt->text().toInt());
    m_ctx.markSettingsChanged();
    Q_EMIT saved();
    accept();
}

FrmDBaseLoc* OpenDBaseLoc(AppContext& ctx, QWidget* parent) {
    auto* window = new FrmDBaseLoc(ctx, parent);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->open();
    return window;
}

} // namespace kestrel
