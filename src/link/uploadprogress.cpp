// SPDX-License-Identifier: GPL-3.0-or-later
#include "uploadprogress.h"

#include "kestrelcomm.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

namespace kestrel {

UploadProgress::UploadProgress(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("UploadProgress"));
    m_label = new QLabel(QStringLiteral("Sending Bank:"), this);
    m_text = new QLineEdit(this);
    m_text->setObjectName(QStringLiteral("SndBankTxt"));
    m_text->setReadOnly(true);
    m_text->setMaximumWidth(m_text->fontMetrics().horizontalAdvance(QStringLiteral("00000")) + 12);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_label);
    layout->addWidget(m_text);
    m_label->hide();
    m_text->hide();
}

void UploadProgress::attach(KestrelComm& link) {
    connect(&link, &KestrelComm::SendingChnl, this,
            [this](quint8 n) { m_text->setText(QString::number(n)); });
    connect(&link, &KestrelComm::SendingSrch, this,
            [this](quint8 n) { m_text->setText(QString::number(n)); });
}

void UploadProgress::begin(const QString& caption) {
    m_text->clear();
    m_text->show();
    m_label->setText(caption);
    m_label->show();
}

void UploadProgress::end() {
    m_text->hide();
    m_label->hide();
}

} // namespace kestrel
