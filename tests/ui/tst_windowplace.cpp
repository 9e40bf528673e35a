// SPDX-License-Identifier: GPL-3.0-or-later
// Windows placed on a desktop of two screens, offscreen: the main window comes back from a place
// off every screen and fits a small screen, and a dialog opens over the main window. The rules
// themselves are checked in tst_placement; this is their use by the windows.
#include "core/placement.h"
#include "core/profiles.h"
#include "link/kestrelcomm.h"
#include "mainwin/mainform.h"
#include "testsupport.h"
#include "ui/windowplace.h"

#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

using namespace kestrel;

namespace {

// A screen of 1600 x 900 pixels and, to its right, one of 1280 x 1024.
const char* const kScreens = R"({"screens": [
  {"name": "small", "x": 0, "y": 0, "width": 1600, "height": 900, "logicalDpi": 96},
  {"name": "right", "x": 1600, "y": 0, "width": 1280, "height": 1024, "logicalDpi": 96}]})";

QScreen* screenNamed(const char* name) {
    for (QScreen* s : QGuiApplication::screens())
        if (s->name() == QLatin1String(name))
            return s;
    return nullptr;
}

// Whether the window's frame lies wholly on the screen; says where it is when not.
bool onScreen(const QWidget& w, const char* name) {
    const QRect area = screenNamed(name)->availableGeometry();
    if (area.contains(w.frameGeometry()))
        return true;
    qWarning() << "frame" << w.frameGeometry() << "inner" << w.geometry() << "screen" << area;
    return false;
}

} // namespace

class TestWindowPlace : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::unique_ptr<ScriptedPrompts> m_prompts;
    std::unique_ptr<AppContext> m_ctx;

    std::unique_ptr<MainForm> showMain(QPoint at, QSize size) {
        m_prompts = std::make_unique<ScriptedPrompts>(Answer::Yes);
        m_ctx = std::make_unique<AppContext>(m_dir.path(), m_prompts.get());
        m_ctx->screenTwips = desktopTwips(); // as start-up sets it
        Load_Profiles(*m_ctx);
        m_ctx->settings.pos(WindowId::Main) = PointToTwips(at);
        m_ctx->settings.mainSize = SizeToTwips(size);
        auto form = std::make_unique<MainForm>(*m_ctx);
        form->findChild<KestrelComm*>()->setTimeScale(0.01);
        form->show();
        if (!QTest::qWaitForWindowExposed(form.get()))
            qWarning("main window not exposed");
        return form;
    }

private Q_SLOTS:
    void initTestCase() {
        QCOMPARE(QGuiApplication::screens().size(), 2);
        QVERIFY(screenNamed("small") && screenNamed("right"));
    }

    // A place remembered on a third monitor, since unplugged, right of both screens; a dialog
    // then opens over the main window.
    void offScreenPlaceComesBack() {
        const QRect right = screenNamed("right")->availableGeometry();
        const auto form = showMain(right.topRight() + QPoint(2000, 100), QSize(600, 400));
        QVERIFY(onScreen(*form, "right"));
        QCOMPARE(form->size(), QSize(600, 400)); // the remembered size, as it fits
        QDialog dialog(form.get());
        dialog.resize(200, 100);
        placeWindow(&dialog);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        const QPoint offset = dialog.frameGeometry().center() - form->frameGeometry().center();
        QVERIFY2(offset.manhattanLength() <= 4,
                 qPrintable(QString::number(offset.manhattanLength())));
        dialog.close();
        form->close();
        // Closing remembers where it now stands, and its size.
        QCOMPARE(TwipsToPoint(m_ctx->settings.pos(WindowId::Main)), form->pos());
        QCOMPARE(TwipsToSize(m_ctx->settings.mainSize), QSize(600, 400));
    }

    // Remembered larger than the small screen (at double scale its 900 pixels leave 450).
    void mainWindowFitsTheSmallScreen() {
        const auto form = showMain(QPoint(50, 50), QSize(3000, 2000));
        QVERIFY(onScreen(*form, "small"));
        QVERIFY(form->minimumSizeHint().height() <= form->height());
        form->close();
    }
};

int main(int argc, char** argv) {
    QTemporaryDir dir;
    const QString config = dir.filePath(QStringLiteral("screens.json"));
    kestrel::test::writeFile(config, kScreens);
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + config.toLocal8Bit());
    QApplication app(argc, argv);
    TestWindowPlace test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_windowplace.moc"
