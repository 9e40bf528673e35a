// SPDX-License-Identifier: GPL-3.0-or-later
// The command table's second level: a family of sub-commands, each registered on its own as
// another file would, read through the same dispatcher the program uses.
#include "cli/dispatch.h"

#include <QTest>

using namespace kestrel::cli;
using namespace Qt::StringLiterals;

namespace {
int nothing(Env&, const Args&) {
    return 0;
}
const CommandRegistration head({"zz",
                                nullptr,
                                "A family of test commands",
                                {{"user", "NAME", "Who asks"}},
                                {},
                                nullptr,
                                false,
                                {{4, "the login was refused"}}});
const CommandRegistration countries({"zz", "countries", "List the countries", {}, {}, nothing});
const CommandRegistration state({"zz",
                                 "state",
                                 "One state",
                                 {{"full", nullptr, "Everything"}},
                                 {{"ID", "The state's number"}},
                                 nothing});
} // namespace

class TestCliDispatch : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void resolveWords_data() {
        QTest::addColumn<QStringList>("words");
        QTest::addColumn<int>("action");
        QTest::addColumn<QString>("text"); // Run: "sub|dataDir|positional|user"; else contained
        const int run = Invocation::Run, print = Invocation::Print, fail = Invocation::Fail;
        QTest::newRow("member") << QStringList{"zz", "state", "12", "--user", "me"} << run
                                << "state||12|me";
        QTest::newRow("data dir before")
            << QStringList{"--data-dir", "d", "zz", "countries"} << run << "countries|d||";
        QTest::newRow("data dir after")
            << QStringList{"zz", "countries", "--data-dir", "e"} << run << "countries|e||";
        QTest::newRow("no member")
            << QStringList{"zz"} << fail << "zz: give a sub-command: countries, state";
        QTest::newRow("option before member")
            << QStringList{"zz", "--user", "me", "state", "1"} << run << "state||1|me";
        QTest::newRow("option value named like a member")
            << QStringList{"zz", "--user", "state", "countries"} << run << "countries|||state";
        QTest::newRow("options and no member")
            << QStringList{"zz", "--user", "me"} << fail
            << "zz: the sub-command comes before --user: countries, state";
        QTest::newRow("negative number is an argument")
            << QStringList{"zz", "state", "-70.11"} << run << "state||-70.11|";
        QTest::newRow("negative number as a value")
            << QStringList{"zz", "state", "--user", "-5", "-.5"} << run << "state||-.5|-5";
        QTest::newRow("close member") << QStringList{"zz", "stat", "1"} << fail
                                      << "unknown command 'stat' (did you mean 'state'?)";
        QTest::newRow("missing argument") << QStringList{"zz", "state"} << fail << "missing ID";
        QTest::newRow("other member's option")
            << QStringList{"zz", "countries", "--full"} << fail << "unknown option --full";
        QTest::newRow("family help")
            << QStringList{"zz", "--help"} << print << "\n  countries  List the countries\n";
        QTest::newRow("member help") << QStringList{"help", "zz", "state"} << print
                                     << "usage: kestrelctl zz state [options] ID\n";
        QTest::newRow("head option in member help")
            << QStringList{"zz", "state", "-h"} << print << "\n  --user NAME  ";
        QTest::newRow("head's exit status in member help")
            << QStringList{"zz", "countries", "--help"} << print
            << "\n  4  the login was refused\n";
        QTest::newRow("head's exit status listed once")
            << QStringList{"--help"} << print << "\n  4  zz: the login was refused\n\n";
        QTest::newRow("listed") << QStringList{"--help"} << print
                                << "\n  zz    A family of test commands\n";
        QTest::newRow("complete members")
            << QStringList{"--completion-words", "--", "zz"} << print << "countries\nstate\n";
        QTest::newRow("complete value")
            << QStringList{"--completion-words", "--", "zz", "state", "--user"} << print
            << ":NAME\n";
        QTest::newRow("manual page section") << QStringList{"--man", "kestrelctl"} << print
                                             << ".SS \"kestrelctl zz state [options] ID\"\n";
        QTest::newRow("manual page head option") << QStringList{"--man", "kestrelctl"} << print
                                                 << "sub-command:\n.TP\n.B \\-\\-user NAME\n";
        QTest::newRow("manual page head exit") << QStringList{"--man", "kestrelctl"} << print
                                               << ".B Exit status 4\nthe login was refused\n";
        QTest::newRow("manual page of the window")
            << QStringList{"--man", "kestrel-manager"} << print << ".B \\-\\-data\\-dir DIR\n";
        QTest::newRow("no manual page")
            << QStringList{"--man", "zz"} << fail << "no manual page for zz";
    }
    void resolveWords() {
        QFETCH(QStringList, words);
        QFETCH(int, action);
        QFETCH(QString, text);
        const Invocation inv = resolve(words);
        QVERIFY2(inv.action == action, qPrintable(inv.text));
        if (action != Invocation::Run) {
            QVERIFY2(inv.text.contains(text), qPrintable(inv.text));
            return;
        }
        QCOMPARE(QStringList({QString::fromLatin1(inv.command->sub), inv.dataDir,
                              inv.args->positional().join(u','), inv.args->value(u"user"_s)})
                     .join(u'|'),
                 text);
    }
};

QTEST_GUILESS_MAIN(TestCliDispatch)
#include "tst_clidispatch.moc"
