// SPDX-License-Identifier: GPL-3.0-or-later
// The communications trace window: outgoing and incoming lines side by side, optionally copied
// into "Debug.log".
#pragma once

#include <QWidget>

class QCheckBox;
class QListWidget;

namespace kestrel {

class AppContext;
class KestrelComm;

class FrmDebug : public QWidget {
    Q_OBJECT
public:
    FrmDebug(AppContext& ctx, KestrelComm& link, QWidget* parent = nullptr);

    // list 0: outgoing and set-up lines; 1: incoming lines.
    void SetDebugInfo(int list, const QString& text);

    QCheckBox* Check1() const { return m_check; }
    QListWidget* LogWnd(int i) const { return m_lists[i]; }
    QString logPath() const;

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void setLogging(bool on);

    AppContext& m_ctx;
    KestrelComm& m_link;
    QCheckBox* m_check;
    QListWidget* m_lists[2];
};

} // namespace kestrel
