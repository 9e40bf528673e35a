// SPDX-License-Identifier: GPL-3.0-or-later
#include "frmerrs.h"

#include "core/appcontext.h"
#include "ui/windowplace.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace kestrel {

QString FrmErrs::errorText() {
    const QString indent(9, QLatin1Char(' '));
    const QString packet = QStringLiteral("indicates the packet number where the error occurred.");
    const QStringList entries{
        QStringLiteral("C-Err -> communication error while receiving data\n") + indent + packet,
        QStringLiteral("S-Err -> scanner received a checksum error while receiving data.\n") +
            indent + packet,
        QStringLiteral("d-Err -> while receiving data, End, d-Err\n") + indent +
            QStringLiteral("and its frame number appear."),
        QStringLiteral("L-Err -> length field error while receiving data.\n") + indent + packet,
        QStringLiteral("T-Err -> Timeout occurred while waiting for data.\n") + indent + packet,
    };
    return entries.join(QStringLiteral("\n\n"));
}

FrmErrs::FrmErrs(AppContext& ctx, QWidget* parent) : QWidget(parent, Qt::Window), m_ctx(ctx) {
    setObjectName(QStringLiteral("FrmErrs"));
    setWindowTitle(QStringLiteral("Possible Errors Returned"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_text = new QPlainTextEdit(this);
    m_text->setObjectName(QStringLiteral("Text1"));
    m_text->setReadOnly(true);
    // The explanations line up under the codes only in a fixed-pitch font.
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_text);
    resize(520, 260);
    placeWindow(this);
    Trap(m_ctx.errors, "FrmErrs -> Load", [&] { m_text->setPlainText(errorText()); });
}

void FrmErrs::closeEvent(QCloseEvent* event) {
    QWidget::closeEvent(event);
    Trap(m_ctx.errors, "FrmErrs -> Unload", [&] { Q_EMIT closed(); });
}

} // namespace kestrel
