// SPDX-License-Identifier: GPL-3.0-or-later
// "My Audio Feeds": a read-only list of the user's audio broadcast feeds with the connection
// data a broadcasting program needs, in the order the service gave them.
#pragma once

#include <QWidget>

class QTreeWidget;

namespace kestrel {

class AppContext;

class FrmFeeds : public QWidget {
    Q_OBJECT
public:
    explicit FrmFeeds(AppContext& ctx, QWidget* parent = nullptr);

    QTreeWidget* Lv1() const { return m_lv1; }

Q_SIGNALS:
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Load();
    void Unload();

    AppContext& m_ctx;
    QTreeWidget* m_lv1;
    bool m_closed = false;
};

} // namespace kestrel
