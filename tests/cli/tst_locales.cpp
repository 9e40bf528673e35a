// SPDX-License-Identifier: GPL-3.0-or-later
// Files, CSV, frames and print-outs do not depend on the user's locale: the same commands run
// under the C locale and under a locale that writes "146,520" give the same bytes.
#include "testsupport.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

// Runs kestrelctl on `dir` with LANG and LC_ALL set to `locale`; fails the test when it fails.
QByteArray ctl(const QString& locale, const QString& dir, const QStringList& args) {
    QProcess p;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(u"LANG"_s, locale);
    env.insert(u"LC_ALL"_s, locale);
    p.setProcessEnvironment(env);
    p.start(qEnvironmentVariable("KESTRELCTL"), QStringList{u"--data-dir"_s, dir} + args);
    if (!p.waitForFinished(60000) || p.exitCode() != 0)
        qWarning() << locale << args << p.readAllStandardError();
    return p.exitCode() == 0 ? p.readAllStandardOutput() : QByteArray("failed");
}

// What stays the same in a PDF from one run to the next: its text, laid out, without the time
// of day the heading carries (its date stays, in the form the print-out fixes).
QByteArray pdfText(const QString& pdf) {
    QProcess p;
    p.start(u"pdftotext"_s, {u"-layout"_s, pdf, u"-"_s});
    p.waitForFinished(60000);
    return QString::fromUtf8(p.readAllStandardOutput())
        .replace(QRegularExpression(u"Time: \\d\\d:\\d\\d:\\d\\d"_s), u"Time: -"_s)
        .toUtf8();
}

// Every output of one session of edits under `locale`, by name.
QMap<QString, QByteArray> session(const QString& locale, const QString& dir) {
    QMap<QString, QByteArray> out;
    const QString csv = dir + u"/in.csv"_s;
    QFile f(csv);
    f.open(QIODevice::WriteOnly);
    f.write("Name,Freq\nTower,118.300000\nMarine 16,156.8\n");
    f.close();
    out[u"set"_s] =
        ctl(locale, dir,
            {u"set"_s, u"--bank"_s, u"2"_s, u"--slot"_s, u"16"_s, u"146.52,Fire East,T,F,T"_s});
    out[u"search"_s] = ctl(locale, dir, {u"set"_s, u"--search"_s, u"1"_s, u"25,28,Low"_s});
    out[u"import"_s] = ctl(
        locale, dir, {u"import-csv"_s, csv, u"--bank"_s, u"3"_s, u"--columns"_s, u"1,2,0,0,0"_s});
    out[u"csv"_s] = ctl(locale, dir, {u"export-csv"_s, u"--bank"_s, u"2"_s});
    out[u"chirp"_s] =
        ctl(locale, dir, {u"export-csv"_s, u"--bank"_s, u"3"_s, u"--format"_s, u"chirp"_s});
    out[u"frames"_s] = ctl(locale, dir, {u"frames"_s, u"--all"_s});
    out[u"show"_s] = ctl(locale, dir, {u"show"_s, u"--bank"_s, u"2"_s});
    const QString pdf = dir + u"/bank.pdf"_s;
    ctl(locale, dir, {u"print"_s, u"--bank"_s, u"2"_s, u"-o"_s, pdf});
    out[u"pdf"_s] = pdfText(pdf);
    QFile::remove(pdf);
    const QMap<QString, QByteArray> files = snapshotTree(dir);
    for (auto it = files.begin(); it != files.end(); ++it)
        out[u"file "_s + it.key()] = it.value();
    return out;
}

} // namespace

class TestLocales : public QObject {
    Q_OBJECT
private Q_SLOTS:
    // A locale that is not generated falls back to C and would prove nothing.
    void initTestCase() {
        QProcess p;
        p.start(u"locale"_s, {u"-a"_s});
        QVERIFY(p.waitForFinished(60000));
        const QByteArray known = p.readAllStandardOutput().toLower();
        QVERIFY2(known.contains("de_de.utf8") && known.contains("fr_fr.utf8"),
                 "run tools/bootstrap: the de_DE and fr_FR locales are missing");
    }
    void sameBytes_data() {
        QTest::addColumn<QString>("locale");
        QTest::newRow("German") << u"de_DE.UTF-8"_s;
        QTest::newRow("French") << u"fr_FR.UTF-8"_s;
    }
    void sameBytes() {
        QFETCH(QString, locale);
        QTemporaryDir c, other;
        const QMap<QString, QByteArray> expected = session(u"C"_s, c.path());
        const QMap<QString, QByteArray> actual = session(locale, other.path());
        QVERIFY(expected.value(u"csv"_s).contains("146.520000"));
        QVERIFY(expected.value(u"pdf"_s).contains("146.520000"));
        QCOMPARE(actual.keys(), expected.keys());
        for (auto it = expected.begin(); it != expected.end(); ++it) {
            QVERIFY2(it.value() != "failed", qPrintable(it.key()));
            QVERIFY2(actual.value(it.key()) == it.value(), qPrintable(it.key()));
        }
    }
};

QTEST_GUILESS_MAIN(TestLocales)
#include "tst_locales.moc"
