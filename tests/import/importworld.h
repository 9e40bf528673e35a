// SPDX-License-Identifier: GPL-3.0-or-later
// The world of the web import window tests: a fresh data folder, the local frequency-database
// service on a free loopback port, and the window shown over it with bank 2 current.
#pragma once

#include "core/appcontext.h"
#include "import/frmimportrr.h"
#include "webservice/rrclient.h"
#include "webservice/server/rrlocalserver.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

namespace kestrel::test {

class ImportWorld {
protected:
    QTemporaryDir m_dir;
    ScriptedPrompts m_prompts;
    std::unique_ptr<AppContext> m_ctx;
    std::unique_ptr<RRLocalServer> m_server;
    std::unique_ptr<FrmImportRR> m_win;
    QString m_country;

    // A new service with `d`, and the window shown with the given login; not yet logged in.
    void open(const RRDataSet& d, const QString& password = QStringLiteral("demo"),
              const QString& zip = {}, int dbaseIndex = 0) {
        m_win.reset();
        m_server = std::make_unique<RRLocalServer>(d);
        QVERIFY(m_server->listen() != 0);
        m_country = d.countries[0].countryName;
        m_prompts.clear();
        m_ctx = std::make_unique<AppContext>(m_dir.path(), &m_prompts);
        m_ctx->CurBank = 2;
        m_ctx->settings.DBaseIndex = qint16(dbaseIndex);
        m_ctx->registry = {QStringLiteral("demo"), password, zip};
        m_ctx->component<RRClient>().setBaseUrlOverride(m_server->baseUrl());
        m_win = std::make_unique<FrmImportRR>(*m_ctx);
        m_win->show();
    }
    void toCounty(const QString& county) {
        QVERIFY(m_win->setListText(m_win->CboCountry(), m_country));
        QVERIFY(m_win->setListText(m_win->CboState(), QStringLiteral("North Province")));
        QVERIFY(m_win->setListText(m_win->CboCounty(), county));
    }
    void tick(const QString& key, bool on = true) {
        QTreeWidgetItem* item = m_win->node(key);
        QVERIFY2(item, qPrintable(key));
        item->setCheckState(0, on ? Qt::Checked : Qt::Unchecked);
    }
    // The tree's kind, then each node as "key text", for comparing with a reviewed text.
    QStringList treeLines() const {
        QStringList out{m_win->treeTag()};
        for (QTreeWidgetItemIterator it(m_win->TV1()); *it; ++it)
            out << (*it)->data(0, FrmImportRR::KeyRole).toString() + u' ' + (*it)->text(0);
        return out;
    }
    QStringList messages() const {
        QStringList out;
        for (const auto& m : m_prompts.messages())
            out << m.text;
        return out;
    }
    void closeWorld() {
        m_win.reset();
        m_server.reset();
    }
};

} // namespace kestrel::test
