// SPDX-License-Identifier: GPL-3.0-or-later
// The database location window: where the frequency database is reached (the service or a local
// address), which service version is spoken, and the HTTP proxy. A version choice takes effect at
// once; location, address and proxy only when the user saves.
#pragma once

#include <QDialog>
#include <QMap>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kestrel {

class AppContext;

class FrmDBaseLoc : public QDialog {
    Q_OBJECT
public:
    explicit FrmDBaseLoc(AppContext& ctx, QWidget* parent = nullptr);
    ~FrmDBaseLoc() override;

    // Controls, by the indices the window gives them.
    QRadioButton* LocationOpt(int index) const { return m_locationOpt[index]; } // 0, 1
    QRadioButton* RRVerOpt(int index) const { return m_verOpt.value(index); }   // 1-10, 99, 100
    QLineEdit* LocalTxt() const { return m_localTxt; }
    QLineEdit* RRVerTxt() const { return m_verTxt; }
    QCheckBox* UseProxyChk() const { return m_useProxyChk; }
    QLineEdit* ProxyAdrTxt() const { return m_proxyAdrTxt; }
    QLineEdit* ProxyPrtTxt() const { return m_proxyPrtTxt; }
    QPushButton* CmndBtn(int index) const { return m_cmndBtn[index]; } // 0 Save, 1 Cancel

Q_SIGNALS:
    // The settings were saved: whoever talks to the database resets and reloads its description.
    void saved();

private:
    void Load();
    void onLocationOpt(int index);
    void onRRVerOpt(int index);
    void Set_UserDefined();
    void onRRVerTxtChange();
    void onRRVerTxtLeave();
    void onLocalTxtChange();
    void onLocalTxtLeave();
    void onUseProxyChk();
    void onProxyAdrTxtChange();
    void onProxyPrtTxtChange();
    void onProxyPrtTxtLeave();
    void onSave();
    // The version chosen here reaches the settings file when profile 0 is next written.
    void setVersion(int version, const QString& address);

    AppContext& m_ctx;
    QRadioButton* m_locationOpt[2] = {};
    QMap<int, QRadioButton*> m_verOpt;
    QLineEdit* m_localTxt;
    QLineEdit* m_verTxt;
    QCheckBox* m_useProxyChk;
    QLineEdit* m_proxyAdrTxt;
    QLineEdit* m_proxyPrtTxt;
    QPushButton* m_cmndBtn[2] = {};
    int m_location = 0;
    bool m_loaded = false;
};

// Opens the window over parent (modal to it) and returns it; it deletes itself when closed.
// The main window's Options menu and the import window's Settings menu both open it here.
FrmDBaseLoc* OpenDBaseLoc(AppContext& ctx, QWidget* parent);

} // namespace kestrel
