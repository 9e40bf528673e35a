// SPDX-License-Identifier: GPL-3.0-or-later
// FrmPrntPrev: the "Print Preview" window. Shows a list page by page as it will be printed and
// prints a chosen range of pages through the printer dialog.
#pragma once

#include "printpage.h"

#include <QDialog>
#include <functional>
#include <memory>

class QLabel;
class QPrinter;
class QPushButton;
class QScrollBar;

namespace kestrel {

class AppContext;

class FrmPrntPrev : public QDialog {
    Q_OBJECT

public:
    explicit FrmPrntPrev(AppContext& ctx, QWidget* parent = nullptr);
    ~FrmPrntPrev() override;

    // Set by the caller before the window is shown.
    void setList_View(const PrintTable& table) { m_table = table; }
    void setDescription(const QString& title) { m_description = title; }
    void setMaxRows(qint16 rows) { m_maxRows = rows; }

    // Asks which printer and which pages: fills the printer's page range and returns false when
    // the user cancels. The default shows the platform's printer dialog.
    using PrinterChooser = std::function<bool(QPrinter& printer, int minPage, int maxPage)>;
    void setPrinterChooser(PrinterChooser chooser) { m_chooser = std::move(chooser); }

    // Time stamped on the pages; the clock when not set.
    void setClock(std::function<QDateTime()> clock) { m_clock = std::move(clock); }

    const QString& description() const { return m_description; }
    qint16 maxRows() const { return m_maxRows; }
    int currentPage() const { return m_page; }
    int pageCount() const { return m_pages; }
    int itemCount() const { return m_items; }
    int lastDrawnPage() const { return m_drawn; }
    // The page picture as last drawn.
    QImage pageImage() const { return m_image; }

    // Prints pages from..to on a device (the print button does this with the chosen printer).
    // Returns false after telling the user why it failed.
    bool PrintPages(QPagedPaintDevice& device, int from, int to);

protected:
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

public:
    void done(int result) override;

private:
    void Load();
    void Unload();
    void InitializePictureBox();
    void SetScrollBars();
    void Set_Preview();
    void Show_Page();
    void PageDir_Btn(int index);
    void PrintPicBtn();
    void scrollChanged();
    bool choosePrinter(QPrinter& printer, int minPage, int maxPage);

    AppContext& m_ctx;
    PrintTable m_table;
    QString m_description;
    qint16 m_maxRows = kDefaultMaxRows;
    int m_items = 0;
    int m_pages = 1;
    int m_page = 1;
    int m_drawn = 0;
    bool m_loaded = false;
    std::unique_ptr<cPrintLV> m_list;
    PrinterChooser m_chooser;
    std::function<QDateTime()> m_clock;
    QImage m_image;

    QWidget* m_picScroll;
    QLabel* m_picTarget;
    QScrollBar* m_hscScroll;
    QScrollBar* m_vscScroll;
    QPushButton* m_prevBtn;
    QPushButton* m_nextBtn;
    QPushButton* m_printBtn;
    QLabel* m_pageLbl;
    QLabel* m_printLbl;
};

} // namespace kestrel
