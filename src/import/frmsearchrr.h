// SPDX-License-Identifier: GPL-3.0-or-later
// "Advanced Search Options": the five searches of the frequency database (frequencies by
// location, frequencies by tag, call signs around a point, one call sign's licence, trunked
// systems by system id). It records the choices in the search settings and hands the inputs to
// the import window, which runs the search and shows the results in its tree.
#pragma once

#include <QWidget>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace kestrel {

class AppContext;
class FrmImportRR;
class SearchSettings;

class FrmSearchRR : public QWidget {
    Q_OBJECT
public:
    FrmSearchRR(AppContext& ctx, FrmImportRR& import, QWidget* parent = nullptr);

    // ---- handlers, public for the tests ----
    void SrchFrqOpt_Click(int index);
    void CboMetro_Click();
    void TagOpt_Click(int index);
    void CboTags_Click();
    void DistOpt_Click(int index);
    void RangeOpt_Click(int index);
    void StartSearchBtn_Click(int index);

    // ---- controls ----
    QLineEdit* FreqTxt() const { return m_freq; }
    QLineEdit* ToneTxt() const { return m_tone; }
    QLineEdit* LatTxt() const { return m_lat; }
    QLineEdit* LonTxt() const { return m_lon; }
    QLineEdit* CallSignTxt() const { return m_callSign; }
    QLineEdit* SysIdTxt() const { return m_sysId; }
    QRadioButton* SrchFrqOpt(int i) const { return m_srchFrqOpt[i]; }
    QRadioButton* TagOpt(int i) const { return m_tagOpt[i]; }
    QRadioButton* DistOpt(int i) const { return m_distOpt[i]; }
    QRadioButton* RangeOpt(int i) const { return m_rangeOpt[i]; }
    QComboBox* CboMetro() const { return m_metro; }
    QComboBox* CboTags() const { return m_tags; }
    QGroupBox* Frame(int i) const { return m_frames[i]; }
    QPushButton* StartSearchBtn(int i) const { return m_start[i]; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildControls();
    void Load();
    void Unload();

    AppContext& m_ctx;
    FrmImportRR& m_import;
    SearchSettings& m_settings;

    QLineEdit* m_freq;
    QLineEdit* m_tone;
    QLineEdit* m_lat;
    QLineEdit* m_lon;
    QLineEdit* m_callSign;
    QLineEdit* m_sysId;
    QRadioButton* m_srchFrqOpt[3];
    QRadioButton* m_tagOpt[2];
    QRadioButton* m_distOpt[3];
    QRadioButton* m_rangeOpt[3];
    QComboBox* m_metro;
    QComboBox* m_tags;
    QGroupBox* m_frames[5];
    QPushButton* m_start[5];
    bool m_closed = false;
};

} // namespace kestrel
