// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmprntprev.h"

#include "core/appcontext.h"
#include "core/errors.h"
#include "ui/windowplace.h"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace kestrel {

namespace {

constexpr int kTwipsPerPixel = 15;
constexpr double kScreenDpi = 96.0;
constexpr int kScrollStep = 20; // pixels per arrow click
const QString kMessageTitle = QStringLiteral("Kestrel Manager");

QString errorText(const char* what, const KestrelError& e) {
    return QString::fromLatin1(what) + QStringLiteral(" Error [") + QString::number(e.number()) +
           QStringLiteral("] ") + e.description();
}

} // namespace

FrmPrntPrev::FrmPrntPrev(AppContext& ctx, QWidget* parent) : QDialog(parent), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmPrntPrev"));
    setWindowTitle(QStringLiteral("Print Preview"));
    const WindowInfo& info = windowInfo(WindowId::PP);
    resize(info.designWidth / kTwipsPerPixel, info.designHeight / kTwipsPerPixel);

    m_prevBtn = new QPushButton(QStringLiteral("Previous Page"), this);
    m_prevBtn->setObjectName(QStringLiteral("PageDir_Btn0"));
    m_nextBtn = new QPushButton(QStringLiteral("Next Page"), this);
    m_nextBtn->setObjectName(QStringLiteral("PageDir_Btn1"));
    m_printBtn = new QPushButton(QStringLiteral("Print"), this);
    m_printBtn->setObjectName(QStringLiteral("PrintPicBtn"));
    auto* pageCaption = new QLabel(QStringLiteral("Page:"), this);
    m_pageLbl = new QLabel(this);
    m_pageLbl->setObjectName(QStringLiteral("PageLbl"));
    m_printLbl = new QLabel(this);
    m_printLbl->setObjectName(QStringLiteral("PrintLbl"));

    m_picScroll = new QWidget(this);
    m_picScroll->setObjectName(QStringLiteral("picScroll"));
    m_picScroll->setAutoFillBackground(true);
    m_picScroll->setBackgroundRole(QPalette::Dark);
    m_picScroll->installEventFilter(this);
    m_picTarget = new QLabel(m_picScroll);
    m_picTarget->setObjectName(QStringLiteral("picTarget"));
    m_hscScroll = new QScrollBar(Qt::Horizontal, this);
    m_hscScroll->setObjectName(QStringLiteral("hscScroll"));
    m_vscScroll = new QScrollBar(Qt::Vertical, this);
    m_vscScroll->setObjectName(QStringLiteral("vscScroll"));

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_prevBtn);
    buttons->addWidget(m_nextBtn);
    buttons->addSpacing(12);
    buttons->addWidget(pageCaption);
    buttons->addWidget(m_pageLbl);
    buttons->addStretch(1);
    buttons->addWidget(m_printLbl);
    buttons->addWidget(m_printBtn);

    auto* area = new QGridLayout;
    area->setSpacing(0);
    area->addWidget(m_picScroll, 0, 0);
    area->addWidget(m_vscScroll, 0, 1);
    area->addWidget(m_hscScroll, 1, 0);

    auto* top = new QVBoxLayout(this);
    top->addLayout(buttons);
    top->addLayout(area, 1);

    connect(m_prevBtn, &QPushButton::clicked, this, [this] { PageDir_Btn(0); });
    connect(m_nextBtn, &QPushButton::clicked, this, [this] { PageDir_Btn(1); });
    connect(m_printBtn, &QPushButton::clicked, this, &FrmPrntPrev::PrintPicBtn);
    connect(m_hscScroll, &QScrollBar::valueChanged, this, [this] {
        Trap(m_ctx.errors, "FrmPrntPrev -> hscScroll_Change", [&] { scrollChanged(); });
    });
    connect(m_vscScroll, &QScrollBar::valueChanged, this, [this] {
        Trap(m_ctx.errors, "FrmPrntPrev -> vscScroll_Change", [&] { scrollChanged(); });
    });
}

FrmPrntPrev::~FrmPrntPrev() = default;

void FrmPrntPrev::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_loaded) {
        m_loaded = true;
        Load();
    }
}

void FrmPrntPrev::done(int result) {
    Unload();
    QDialog::done(result);
}

bool FrmPrntPrev::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_picScroll && event->type() == QEvent::Resize && m_loaded)
        SetScrollBars();
    return QDialog::eventFilter(watched, event);
}

void FrmPrntPrev::Load() {
    Trap(m_ctx.errors, "FrmPrntPrev -> Load", [&](Stmt& s) {
        s.at(1);
        placeWindow(this);
        s.at(2);
        m_items = int(m_table.rows.size());
        m_pages = cPrintLV::PageCountFor(m_items, m_maxRows);
        m_page = 1;
        s.at(3);
        m_list = std::make_unique<cPrintLV>(m_ctx.errors);
        m_list->ListViewName(m_table);
        m_list->Set_Pages(m_items, m_maxRows);
        s.at(4);
        InitializePictureBox();
        SetScrollBars();
        Set_Preview();
    });
}

void FrmPrntPrev::Unload() {
    Trap(m_ctx.errors, "FrmPrntPrev -> Unload", [&] { rememberWindow(this, m_ctx, WindowId::PP); });
}

void FrmPrntPrev::InitializePictureBox() {
    Trap(m_ctx.errors, "FrmPrntPrev -> InitializePictureBox", [&] {
        // The picture is the printable page at screen resolution, so it reads like the sheet.
        const QSize twips = PageSizeTwips();
        m_image = QImage(twips.width() / kTwipsPerPixel, twips.height() / kTwipsPerPixel,
                         QImage::Format_RGB32);
        const int dotsPerMeter = qRound(kScreenDpi / 0.0254);
        m_image.setDotsPerMeterX(dotsPerMeter);
        m_image.setDotsPerMeterY(dotsPerMeter);
        m_image.fill(Qt::white);
        m_picTarget->setFixedSize(m_image.size());
        m_picTarget->move(0, 0);
    });
}

void FrmPrntPrev::SetScrollBars() {
    Trap(m_ctx.errors, "FrmPrntPrev -> SetScrollBars", [&] {
        const QSize view = m_picScroll->size();
        const QSize page = m_picTarget->size();
        m_hscScroll->setRange(0, qMax(0, page.width() - view.width()));
        m_hscScroll->setPageStep(qMax(1, view.width()));
        m_hscScroll->setSingleStep(kScrollStep);
        m_hscScroll->setEnabled(page.width() > view.width());
        m_vscScroll->setRange(0, qMax(0, page.height() - view.height()));
        m_vscScroll->setPageStep(qMax(1, view.height()));
        m_vscScroll->setSingleStep(kScrollStep);
        m_vscScroll->setEnabled(page.height() > view.height());
        scrollChanged();
    });
}

void FrmPrntPrev::scrollChanged() {
    m_picTarget->move(-m_hscScroll->value(), -m_vscScroll->value());
}

void FrmPrntPrev::Set_Preview() {
    Trap(m_ctx.errors, "FrmPrntPrev -> Set_Preview", [&] {
        m_page = 1;
        Show_Page();
    });
}

void FrmPrntPrev::Show_Page() {
    Trap(m_ctx.errors, "FrmPrntPrev -> Show_Page", [&] {
        m_pageLbl->setText(QString::number(m_page) + QStringLiteral(" of ") +
                           QString::number(m_pages));
        QPainter painter(&m_image);
        DrawPage(painter, *m_list, qint16(m_page), m_description,
                 m_clock ? m_clock() : QDateTime::currentDateTime());
        painter.end();
        m_picTarget->setPixmap(QPixmap::fromImage(m_image));
        m_drawn = m_page;
    });
}

void FrmPrntPrev::PageDir_Btn(int index) {
    Trap(m_ctx.errors, "FrmPrntPrev -> PageDir_Btn", [&] {
        const int before = m_page;
        if (index == 0 && m_page >= 2)
            --m_page;
        else if (index == 1 && m_page < m_pages)
            ++m_page;
        if (m_page != before)
            Show_Page();
    });
}

bool FrmPrntPrev::choosePrinter(QPrinter& printer, int minPage, int maxPage) {
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
    dialog.setMinMax(minPage, maxPage);
    dialog.setFromTo(minPage, maxPage);
    return dialog.exec() == QDialog::Accepted;
}

void FrmPrntPrev::PrintPicBtn() {
    if (!m_list)
        return;
    QPrinter printer(QPrinter::HighResolution);
    // The printer's own paper when it names one, otherwise the locale's.
    printer.setPageLayout(DefaultPageLayout(QPrinterInfo::defaultPrinter().defaultPageSize()));
    printer.setDocName(m_description);
    int from = 1;
    int to = m_pages;
    try {
        const bool chosen =
            m_chooser ? m_chooser(printer, 1, m_pages) : choosePrinter(printer, 1, m_pages);
        if (!chosen)
            return;
        if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
            from = qBound(1, printer.fromPage(), m_pages);
            to = qBound(from, printer.toPage() > 0 ? printer.toPage() : m_pages, m_pages);
        }
    } catch (const KestrelError& e) {
        m_ctx.prompts().message(errorText("PrintPic", e), kMessageTitle, Icon::Critical,
                                Buttons::Ok);
        return;
    } catch (const std::exception& e) {
        m_ctx.prompts().message(
            errorText("PrintPic", KestrelError(err::InvalidCall, QString::fromUtf8(e.what()))),
            kMessageTitle, Icon::Critical, Buttons::Ok);
        return;
    }
    PrintPages(printer, from, to);
}

bool FrmPrntPrev::PrintPages(QPagedPaintDevice& device, int from, int to) {
    if (!m_list)
        return false;
    try {
        if (from < 1 || to > m_pages || from > to)
            throw KestrelError(err::SubscriptOutOfRange, QStringLiteral("Subscript out of range"));
        // The printer lays the pages out on its own copy so the preview keeps its page.
        cPrintLV list(m_ctx.errors);
        list.ListViewName(m_table);
        list.Set_Pages(m_items, m_maxRows);
        PrintPageRange(device, list, m_description, qint16(from), qint16(to),
                       m_clock ? m_clock() : QDateTime::currentDateTime(), [this](qint16 page) {
                           m_printLbl->setText(QStringLiteral("Printing Page: ") +
                                               QString::number(page));
                           m_printLbl->repaint();
                       });
        return true;
    } catch (const KestrelError& e) {
        m_ctx.prompts().message(errorText("PrintPages", e), kMessageTitle, Icon::Critical,
                                Buttons::Ok);
    } catch (const std::exception& e) {
        m_ctx.prompts().message(
            errorText("PrintPages", KestrelError(err::InvalidCall, QString::fromUtf8(e.what()))),
            kMessageTitle, Icon::Critical, Buttons::Ok);
    }
    return false;
}

} // namespace kestrel
