// SPDX-License-Identifier: GPL-3.0-or-later
// The progress box of an upload: a caption ("Sending Chan:" or "Sending Srch:") and the number
// of the channel or range on its way. Hidden except while an upload runs.
#pragma once

#include <QWidget>

class QLabel;
class QLineEdit;

namespace kestrel {

class KestrelComm;

class UploadProgress : public QWidget {
    Q_OBJECT
public:
    explicit UploadProgress(QWidget* parent = nullptr);

    // Follows the link's progress signals.
    void attach(KestrelComm& link);
    void begin(const QString& caption);
    void end();

    QLabel* label() const { return m_label; }
    QLineEdit* SndBankTxt() const { return m_text; }

private:
    QLabel* m_label;
    QLineEdit* m_text;
};

} // namespace kestrel
