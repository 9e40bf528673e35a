// SPDX-License-Identifier: GPL-3.0-or-later
// The database location window as the user drives it: version choices with each location, the
// typing rules of its boxes, Cancel, and Save reaching the settings file.
#include "core/class_ini.h"
#include "core/dbaselocation.h"
#include "core/files.h"
#include "core/profiles.h"
#include "mainwin/mainform.h"
#include "webservice/ui/frmdbaseloc.h"

#include <QAction>
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

void showActive(QWidget& w) {
    w.show();
    w.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&w));
}

// Clicks a button on its caption (a stretched option takes no click beyond it).
void click(QAbstractButton* b) {
    QTest::mouseClick(b, Qt::LeftButton, {}, QPoint(6, b->height() / 2));
}

void retype(QLineEdit* box, const char* keys) {
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, keys);
}
} // namespace

class TestFrmDBaseLoc : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;

    std::unique_ptr<AppContext> makeContext(int version) {
        auto ctx = std::make_unique<AppContext>(m_dir.path());
        ProgramSettings& s = ctx->settings;
        s.DBaseVersion = qint16(version);
        s.DBaseEndUsr = kEndUsr;
        s.DBaseLocUsr = kLocUsr;
        s.DBaseProxyAdr = QStringLiteral("proxy.lan");
        s.ServiceAddress = DeriveServiceAddress(s);
        return ctx;
    }

private Q_SLOTS:
    void latestVersion_data() {
        QTest::addColumn<int>("location");
        QTest::addColumn<bool>("opensAtLatest");
        QTest::addColumn<QString>("address");
        QTest::newRow("service, chosen") << 0 << false << kEndUsr;
        QTest::newRow("local, chosen") << 1 << false << kLocUsr;
        QTest::newRow("service, stored") << 0 << true << kEndUsr;
    }
    void latestVersion() {
        QFETCH(int, location);
        QFETCH(bool, opensAtLatest);
        QFETCH(QString, address);
        auto ctx = makeContext(opensAtLatest ? 999 : 8);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        click(w.LocationOpt(location));
        if (!opensAtLatest)
            click(w.RRVerOpt(99));
        QVERIFY(w.RRVerOpt(99)->isChecked());
        QCOMPARE(w.LocalTxt()->text(), address);
        QCOMPARE(w.LocalTxt()->isEnabled(), location == 1);
        // The version takes effect at once and stays after Cancel; the location does not.
        click(w.CmndBtn(1));
        QCOMPARE(ctx->settings.DBaseVersion, 999);
        QCOMPARE(ctx->settings.DBaseIndex, 0);
        QCOMPARE(ctx->settings.ServiceAddress, opensAtLatest ? kEndUsr : address);
        QCOMPARE(ctx->Profiles[0].Changed, !opensAtLatest);
    }

    // Each row chooses the local address and "User Defined", types into one box after
    // selecting its text, and leaves it by Tab or Enter (or stays in it).
    void typingRules_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<int>("leaveKey");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("version");
        const int tab = Qt::Key_Tab, enter = Qt::Key_Return, stay = 0;
        const auto row = [](const char* tag, const char* box, const char* keys, int leave,
                            const char* shown, int version = 8) {
            QTest::newRow(tag) << box << keys << leave << shown << version;
        };
        row("user version 9", "RRVerTxt", "9", tab, "8");
        row("user version 6, letter refused", "RRVerTxt", "6x", tab, "6", 6);
        row("port 79", "ProxyPrtTxt", "79", tab, "8080");
        row("port 32768", "ProxyPrtTxt", "32768", enter, "8080");
        row("port 3128", "ProxyPrtTxt", "3128", tab, "3128");
        row("proxy emptied", "ProxyAdrTxt", "\b", stay, "127.0.0.1");
        row("proxy keys", "ProxyAdrTxt", "a-b_c~d/e.f:g h", tab, "a-b_c~d/e.fgh");
        row("address takes a URL", "LocalTxt", "http://db.lan:80/x y", tab, "http://db.lan:80/xy");
        row("address emptied", "LocalTxt", "\b", stay, "");
        row("address left empty", "LocalTxt", "\b", tab, "http://192.168.1.9:8000/loc/");
    }
    void typingRules() {
        QFETCH(QString, box);
        QFETCH(QString, keys);
        QFETCH(int, leaveKey);
        QFETCH(QString, shown);
        QFETCH(int, version);
        auto ctx = makeContext(8);
        FrmDBaseLoc w(*ctx);
        showActive(w);
        click(w.LocationOpt(1));
        click(w.RRVerOpt(100));
        click(w.UseProxyChk());
        auto* edit = w.findChild<QLineEdit*>(box);
        QVERIFY(edit && edit->isEnabled());
        retype(edit, keys.toLatin1().constData());
        if (leaveKey)
            QTest::keyClick(edit, Qt::Key(leaveKey));
        QCOMPARE(edit->text(), shown);
        QCOMPARE(ctx->settings.DBaseVersion, version);
        // Save waits for an address.
        QCOMPARE(w.CmndBtn(0)->isEnabled(), !w.LocalTxt()->text().isEmpty());
    }

    // Save takes an http(s) address whatever the version, and refuses any other text with a
    // message, saving nothing.
    void saveChecksTheAddress_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("saved"); // empty: refused
        QTest::newRow("port, version 8") << 8 << "http://127.0.0.1:41234/soap2/"
                                         << "http://127.0.0.1:41234/soap2/";
        QTest::newRow("no slash, version 1") << 1 << "https://db.lan/x"
                                             << "https://db.lan/x/";
        QTest::newRow("no scheme") << 8 << "127.0.0.1:9000/soap2/"
                                   << "";
        QTest::newRow("ftp") << 999 << "ftp://db.lan/"
                             << "";
    }
    void saveChecksTheAddress() {
        QFETCH(int, version);
        QFETCH(QString, typed);
        QFETCH(QString, saved);
        ScriptedPrompts prompts;
        AppContext ctx(m_dir.path(), &prompts);
        ctx.settings.DBaseVersion = qint16(version);
        const QString before = ctx.settings.DBaseLocUsr;
        FrmDBaseLoc w(ctx);
        showActive(w);
        click(w.LocationOpt(1));
        w.LocalTxt()->setText(typed); // as a paste puts it
        click(w.CmndBtn(0));
        QCOMPARE(prompts.messages().size(), saved.isEmpty() ? 1 : 0);
        QCOMPARE(w.isVisible(), saved.isEmpty());
        QCOMPARE(ctx.settings.DBaseLocUsr, saved.isEmpty() ? before : saved);
        QCOMPARE(DeriveServiceAddress(ctx.settings),
                 saved.isEmpty() ? ServiceEndpoint(version, ctx.settings) : saved);
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
            retype(w->RRVerTxt(), "5");
            click(w->LocationOpt(1));
            retype(w->LocalTxt(), "http://dbhost:8080/rr");
            click(w->UseProxyChk());
            retype(w->ProxyPrtTxt(), "3128");
            click(w->CmndBtn(0));
            QCOMPARE(saved.count(), 1);
            QCOMPARE(ctx.settings.ServiceAddress, QStringLiteral("http://dbhost:8080/rr/"));
            QTRY_VERIFY(w.isNull()); // closed and gone
            form.close();
        }
        const IniDocument ini = IniDocument::load(ctx.settingsPath(QStringLiteral("Main")));
        const QStringList expected = {"DBaseVersion=5", "DBaseIndex=1", "DBaseProxyUse=True",
                                      "DBaseProxyPrt=3128", "DBaseLocUsr=http://dbhost:8080/rr/"};
        for (const QString& pair : expected)
            QCOMPARE(ini.ReadKey(u"RadioRef", pair.section(u'=', 0, 0)), pair.section(u'=', 1));
    }
};

QTEST_MAIN(TestFrmDBaseLoc)
#include "tst_frmdbaseloc.moc"
