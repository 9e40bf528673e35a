// SPDX-License-Identifier: GPL-3.0-or-later
// The database location window as the user drives it: location and version choices, the typing
// rules of its boxes, Cancel and Save, and Save reaching the settings file.
#include "core/class_ini.h"
#include "core/files.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"
#include "webservice/ui/frmdbaseloc.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;

namespace {
const QString kEndUsr = QStringLiteral("https://db.example.net/end/");
const QString kLocUsr = QStringLiteral("http://192.168.1.9:8000/loc/");
} // namespace

class TestFrmDBaseLoc : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;

    std::unique_ptr<AppContext> makeContext(int version, int location) {
        auto ctx = std::make_unique<AppContext>(m_dir.path());
        ctx->settings.DBaseVersion = qint16(version);
        ctx->settings.DBaseIndex = qint16(location);
        ctx->settings.DBaseEndUsr = kEndUsr;
        ctx->settings.DBaseLocUsr = kLocUsr;
        ctx->settings.DBaseProxyAdr = QStringLiteral("proxy.lan");
        ctx->settings.ServiceAddress = DeriveServiceAddress(ctx->settings);
        return ctx;
    }

    static void showActive(QWidget& w) {
        w.show();
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
    }

    // Clicks an option where its caption is (a stretched option does not take clicks beyond it).
    static void click(QAbstractButton* b) {
        QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
    }

    static void retype(QLineEdit* box, const QString& keys) {
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, keys.toLatin1().constData());
    }

private Q_SLOTS:
    void latestVersion_data() {
        QTest::addColumn<int>("location");
        QTest::addColumn<bool>("openedAtLatest");
        QTest::addColumn<QString>("address");
        QTest::newRow("service, chosen") << 0 << false << kEndUsr;
        QTest::newRow("local, chosen") << 1 << false << kLocUsr;
        QTest::newRow("service, stored") << 0 << true << kEndUsr;
        QTest::newRow("local, stored") << 1 << true << kLocUsr;
    }
    void latestVersion() {
        QFETCH(int, location);
        QFETCH(bool, openedAtLatest);
        QFETCH(QString, address);
        auto ctx = makeContext(openedAtLatest ? 999 : 8, 0);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        click(w.LocationOpt(location));
        if (!openedAtLatest)
            click(w.RRVerOpt(99));
        QVERIFY(w.RRVerOpt(99)->isChecked());
        QCOMPARE(w.LocalTxt()->text(), address);
        QCOMPARE(w.LocalTxt()->isEnabled(), location == 1);
        // The version takes effect at once and stays after Cancel; the location does not.
        click(w.CmndBtn(1));
        QCOMPARE(ctx->settings.DBaseVersion, 999);
        QCOMPARE(ctx->settings.DBaseIndex, 0);
        QCOMPARE(ctx->settings.ServiceAddress, openedAtLatest ? kEndUsr : address);
        QCOMPARE(ctx->Profiles[0].Changed, !openedAtLatest);
    }

    void versionOptions_data() {
        QTest::addColumn<int>("option");
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("address");
        QTest::newRow("classic") << 1 << 1 << QStringLiteral("http://127.0.0.1:9000/soap/");
        QTest::newRow("version 3") << 3 << 3 << QStringLiteral("http://127.0.0.1:9000/soap2/");
        QTest::newRow("version 9 changes nothing") << 9 << 5 << QString();
        QTest::newRow("user defined, empty box") << 100 << 8 << kLocUsr;
    }
    void versionOptions() {
        QFETCH(int, option);
        QFETCH(int, version);
        QFETCH(QString, address);
        auto ctx = makeContext(5, 1);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        const QString before = w.LocalTxt()->text();
        click(w.RRVerOpt(option));
        QCOMPARE(ctx->settings.DBaseVersion, version);
        QCOMPARE(w.LocalTxt()->text(), address.isEmpty() ? before : address);
        QCOMPARE(w.RRVerTxt()->isEnabled(), option == 100);
        if (option == 100)
            QCOMPARE(w.RRVerTxt()->text(), QStringLiteral("8"));
    }

    // Each row types into one box (after selecting its text) and leaves it.
    void typingRules_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("leaveKey");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("version");
        const int tab = Qt::Key_Tab, enter = Qt::Key_Return;
        QTest::newRow("user version 12") << "RRVerTxt"
                                         << "12" << tab << "8" << 8;
        QTest::newRow("user version 12, Enter") << "RRVerTxt"
                                                << "12" << enter << "8" << 8;
        QTest::newRow("user version 1") << "RRVerTxt"
                                        << "1" << tab << "8" << 8;
        QTest::newRow("user version 6") << "RRVerTxt"
                                        << "6" << tab << "6" << 6;
        QTest::newRow("version letters refused") << "RRVerTxt"
                                                 << "7x" << tab << "7" << 7;
        QTest::newRow("port 79") << "ProxyPrtTxt"
                                 << "79" << tab << "8080" << 8;
        QTest::newRow("port 40000") << "ProxyPrtTxt"
                                    << "40000" << enter << "8080" << 8;
        QTest::newRow("port 3128") << "ProxyPrtTxt"
                                   << "3128" << tab << "3128" << 8;
        QTest::newRow("proxy emptied") << "ProxyAdrTxt"
                                       << "\b" << tab << "127.0.0.1" << 8;
        QTest::newRow("proxy keys") << "ProxyAdrTxt"
                                    << "a-b_c~d/e.f:g h" << tab << "a-b_c~d/e.fgh" << 8;
        QTest::newRow("address refuses : and /")
            << "LocalTxt"
            << "http://db.lan:80/x" << tab << "httpdb.lan80x" << 8;
        QTest::newRow("address emptied") << "LocalTxt"
                                         << "\b" << tab << "http://127.0.0.1:9000/soap2/" << 8;
    }
    void typingRules() {
        QFETCH(QString, box);
        QFETCH(QString, keys);
        QFETCH(int, leaveKey);
        QFETCH(QString, shown);
        QFETCH(int, version);
        auto ctx = makeContext(8, 0);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        click(w.LocationOpt(1));
        click(w.RRVerOpt(100));
        w.UseProxyChk()->setChecked(true);
        auto* edit = w.findChild<QLineEdit*>(box);
        QVERIFY(edit && edit->isEnabled());
        retype(edit, keys);
        QTest::keyClick(edit, Qt::Key(leaveKey));
        QCOMPARE(edit->text(), shown);
        QCOMPARE(ctx->settings.DBaseVersion, version);
        QVERIFY(w.CmndBtn(0)->isEnabled());
    }

    void saveDisabledWhileAddressEmpty() {
        auto ctx = makeContext(8, 1);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        QVERIFY(w.CmndBtn(0)->isEnabled());
        w.LocalTxt()->setFocus();
        w.LocalTxt()->selectAll();
        QTest::keyClick(w.LocalTxt(), Qt::Key_Backspace);
        QVERIFY(w.LocalTxt()->text().isEmpty());
        QVERIFY(!w.CmndBtn(0)->isEnabled());
        QTest::keyClicks(w.LocalTxt(), "dbhost");
        QVERIFY(w.CmndBtn(0)->isEnabled());
    }

    void saveReachesSettingsFile() {
        ScriptedPrompts prompts;
        AppContext ctx(m_dir.path(), &prompts);
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        ctx.Profiles[0].Changed = false;
        {
            MainForm form(ctx);
            form.show();
            form.menuItem(QStringLiteral("DatabaseAddressMenuItem"))->trigger();
            QPointer<FrmDBaseLoc> w = form.findChild<FrmDBaseLoc*>();
            QVERIFY(w && w->isVisible());
            showActive(*w);
            QSignalSpy saved(w.data(), &FrmDBaseLoc::saved);
            click(w->RRVerOpt(100));
            retype(w->RRVerTxt(), QStringLiteral("5"));
            click(w->LocationOpt(1));
            retype(w->LocalTxt(), QStringLiteral("dbhost"));
            click(w->UseProxyChk());
            retype(w->ProxyPrtTxt(), QStringLiteral("3128"));
            click(w->CmndBtn(0));
            QCOMPARE(saved.count(), 1);
            QCOMPARE(ctx.settings.ServiceAddress, QStringLiteral("dbhost"));
            QTRY_VERIFY(w.isNull()); // closed and gone
            form.close();
        }
        const IniDocument ini = IniDocument::load(ctx.settingsPath(QStringLiteral("Main")));
        const auto key = [&](const char* k) {
            return ini.ReadKey(u"RadioRef", QString::fromLatin1(k));
        };
        QCOMPARE(key("DBaseVersion"), QStringLiteral("5"));
        QCOMPARE(key("DBaseIndex"), QStringLiteral("1"));
        QCOMPARE(key("DBaseProxyUse"), QStringLiteral("True"));
        QCOMPARE(key("DBaseProxyPrt"), QStringLiteral("3128"));
    }
};

QTEST_MAIN(TestFrmDBaseLoc)
#include "tst_frmdbaseloc.moc"
