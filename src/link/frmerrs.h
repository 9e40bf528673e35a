// SPDX-License-Identifier: GPL-3.0-or-later
// The help text on the error codes the scanner itself shows when an upload goes wrong.
#pragma once

#include <QWidget>

class QPlainTextEdit;

namespace kestrel {

class AppContext;

class FrmErrs : public QWidget {
    Q_OBJECT
public:
    explicit FrmErrs(AppContext& ctx, QWidget* parent = nullptr);

    QPlainTextEdit* Text1() const { return m_text; }
    static QString errorText();

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    AppContext& m_ctx;
    QPlainTextEdit* m_text;
};

} // namespace kestrel
