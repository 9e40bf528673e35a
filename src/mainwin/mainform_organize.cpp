// SPDX-License-Identifier: GPL-3.0-or-later
// Wires the organizing tools into the main window: "CS&V Import", "CSV &Export...",
// "Organize Banks" and "Organize Channels". Each tool window is opened once, not modal; its menu
// item carries a check mark while it is open.
#include "core/filereport.h"
#include "mainform.h"

#include "organize/chirpcsv.h"
#include "organize/csvexport.h"
#include "organize/frmbankedit.h"
#include "organize/frmchnledit.h"
#include "organize/frmcsvimport.h"

#include "ui/toolwindow.h"

#include <QAction>
#include <QPointer>

namespace kestrel {

namespace {

// The open tool windows of one main window; lives as long as the main window.
class OrganizeTools : public QObject {
public:
    explicit OrganizeTools(MainForm& form) : QObject(&form), m_form(form) {}

    void csvImport(QAction* item) {
        showToolWindow(item, m_csv, [this] {
            auto* w = new FrmCsvImport(m_form.ctx(), &m_form);
            connect(w, &FrmCsvImport::bankImported, &m_form, [this] { m_form.refreshLists(); });
            connect(w, &FrmCsvImport::searchImported, &m_form, [this] { m_form.refreshLists(); });
            return w;
        });
    }

    void organizeBanks(QAction* item) {
        showToolWindow(item, m_banks, [this] {
            auto* w = new FrmBankEdit(m_form.ctx(), &m_form);
            connect(w, &FrmBankEdit::banksApplied, &m_form, [this] { m_form.refreshLists(); });
            return w;
        });
    }

    void organizeChannels(QAction* item) {
        showToolWindow(item, m_chans, [this] {
            auto* w = new FrmChnlEdit(m_form.ctx(), &m_form);
            connect(w, &FrmChnlEdit::channelsSaved, &m_form, [this] { m_form.refreshLists(); });
            return w;
        });
    }

    // Writes the shown bank, or the search ranges on the search tab, to a chosen CSV file; a bank
    // also as a file CHIRP opens, when that kind of file is chosen.
    void csvExport() {
        AppContext& ctx = m_form.ctx();
        Trap(ctx.errors, "MainForm -> CsvExportMenuItem", [&](Stmt& s) {
            s.at(1);
            const bool search = ctx.CurBank == SearchTab;
            if (!search && (ctx.CurBank < 1 || ctx.CurBank > BankCount))
                return;
            FileDialogOptions dialog;
            dialog.title = QStringLiteral("CSV Export");
            dialog.startDir = ctx.appDir();
            dialog.pattern = search ? QStringLiteral("*.csv")
                                    : QString::fromLatin1(kCsvExportFilter) + QStringLiteral(";;") +
                                          QString::fromLatin1(kChirpExportFilter);
            dialog.defaultExt = QStringLiteral("csv");
            dialog.presetName =
                (search ? ctx.cur().SrchName : ctx.cur().Banks[ctx.CurBank].FileName) +
                QStringLiteral(".csv");
            QString kind = QString::fromLatin1(kCsvExportFilter);
            dialog.chosenFilter = &kind;
            const std::optional<QString> path = ctx.prompts().saveFile(dialog);
            if (!path)
                return;
            s.at(2);
            const BankRec* bank = search ? nullptr : &ctx.cur().Banks[ctx.CurBank];
            const QByteArray bytes = search ? SearchCsv(ctx.cur())
                                     : kind == QLatin1String(kChirpExportFilter)
                                         ? ChirpCsv(*bank, ctx.CurBank)
                                         : BankCsv(*bank);
            SaveCsvFile(ctx, bytes, *path);
            ReportWriteFailures(ctx); // the file and the system's reason
        });
    }

private:
    MainForm& m_form;
    QPointer<FrmCsvImport> m_csv;
    QPointer<FrmBankEdit> m_banks;
    QPointer<FrmChnlEdit> m_chans;
};

} // namespace

void installOrganize(MainForm& form) {
    auto* tools = new OrganizeTools(form);
    if (QAction* item = form.wireMenuItem(MenuId::CsvImport)) {
        item->setCheckable(true);
        QObject::connect(item, &QAction::triggered, tools,
                         [tools, item] { tools->csvImport(item); });
    }
    if (QAction* item = form.wireMenuItem(MenuId::CsvExport))
        QObject::connect(item, &QAction::triggered, tools, [tools] { tools->csvExport(); });
    if (QAction* item = form.wireMenuItem(MenuId::OrganizeBanks)) {
        item->setCheckable(true);
        QObject::connect(item, &QAction::triggered, tools,
                         [tools, item] { tools->organizeBanks(item); });
    }
    if (QAction* item = form.wireMenuItem(MenuId::OrganizeChans)) {
        item->setCheckable(true);
        QObject::connect(item, &QAction::triggered, tools,
                         [tools, item] { tools->organizeChannels(item); });
    }
}

} // namespace kestrel
