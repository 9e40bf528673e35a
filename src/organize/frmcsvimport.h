// SPDX-License-Identifier: GPL-3.0-or-later
// The "CSV Import" window: loads a CSV file, shows its lines one by one, and imports it into the
// shown bank or the search ranges with a chosen column (or the default) for each field. A CHIRP
// file needs no choices: its columns are found by name.
#pragma once

#include "csvimport.h"

#include <QWidget>

class QCheckBox;
class QLineEdit;
class QListWidget;
class QPushButton;
class QStackedWidget;
class QTabBar;

namespace kestrel {

class FrmCsvImport : public QWidget {
    Q_OBJECT
public:
    explicit FrmCsvImport(AppContext& ctx, QWidget* parent = nullptr);

    QTabBar* TypeTab() const { return m_typeTab; }
    QPushButton* BankBtn(int i) const { return m_frames[0].buttons[i]; }
    QPushButton* SearchBtn(int i) const { return m_frames[1].buttons[i]; }
    // One-line lists: the entry scrolled to the top is the field's choice.
    QListWidget* CboList1(int i) const { return m_frames[0].lists[i]; }
    QListWidget* CboList2(int i) const { return m_frames[1].lists[i]; }
    QLineEdit* Text1(int i) const { return m_frames[0].boxes[i]; }
    QLineEdit* Text2(int i) const { return m_frames[1].boxes[i]; }
    // For a CHIRP file: each row into channel Location+1 of the profile instead of the shown bank.
    QCheckBox* LocationChk() const { return m_locationChk; }
    // Whether the loaded file is a CHIRP file.
    bool isChirp() const { return m_chirp; }

    int mode() const;
    // The entry now at the top of a field's list (0 = "> Default <").
    int choice(int mode, int field) const;
    const CsvImport& import() const { return m_import; }

Q_SIGNALS:
    // The shown bank or the search ranges were filled: the main window redraws them.
    void bankImported();
    void searchImported();
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Frame {
        QPushButton* buttons[3]{};
        QList<QListWidget*> lists;
        QLineEdit* boxes[kCsvTextBoxes]{};
    };
    QWidget* makeFrame(int mode, const QString& title, const QStringList& labels);
    void Load();
    void ClearData();
    void ShowLine(const QString& line);
    void loadFile(int mode);
    void showNextLine(int mode);
    void importFile(int mode);
    void importChirp();
    const char* buttonLabel(int mode) const;

    AppContext& m_ctx;
    CsvImport m_import;
    QTabBar* m_typeTab;
    QStackedWidget* m_stack;
    Frame m_frames[2];
    QCheckBox* m_locationChk = nullptr;
    bool m_chirp = false;
};

} // namespace kestrel
