// SPDX-License-Identifier: GPL-3.0-or-later
// The error report: the dialog, the suppress switch, the Error.log entry, and the trap.
#include "core/appcontext.h"
#include "core/files.h"
#include "testsupport.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using kestrel::test::readFile;

class TestErrors : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void dialogAndLogEntry();
    void suppressAfterYes_data();
    void suppressAfterYes();
    void trapReturnsZeroValueAndStatement_data();
    void trapReturnsZeroValueAndStatement();
    void logAppendsAndNeverFailsLoudly();
};

void TestErrors::dialogAndLogEntry() {
    QTemporaryDir dir;
    ScriptedPrompts prompts(Answer::No);
    ErrorReporter r(dir.path(), &prompts);
    r.ReportError(QStringLiteral("ModMain -> Load_Settings"), 12, 13,
                  QStringLiteral("Type mismatch"));
    QCOMPARE(prompts.messages().size(), 1);
    const auto& m = prompts.messages()[0];
    QCOMPARE(m.text, QStringLiteral("An Error Occured In ModMain -> Load_Settings @ Line:12\n\n"
                                    "Error Number: 13  Type mismatch\n\n"
                                    "Suppress Further Errors If Possible?"));
    QCOMPARE(m.title, QStringLiteral("Kestrel Manager Error"));
    QCOMPARE(m.icon, Icon::Critical);
    QCOMPARE(m.buttons, Buttons::YesNo);
    const QString log = QString::fromUtf8(readFile(r.logPath()));
    static const QRegularExpression entry(
        QStringLiteral("^\\n-- Error Occured: \\d{4}-\\d\\d-\\d\\d - \\d\\d:\\d\\d:\\d\\d --\\n"
                       "ModMain -> Load_Settings @ Line:12, Error: 13 -> Type mismatch\\n$"));
    QVERIFY2(entry.match(log).hasMatch(), qPrintable(log));
    QCOMPARE(r.logPath(), dir.filePath(QStringLiteral("Error.log")));
}

void TestErrors::suppressAfterYes_data() {
    QTest::addColumn<Answer>("first");
    QTest::addColumn<int>("dialogs");
    QTest::newRow("yes suppresses the next dialog") << Answer::Yes << 1;
    QTest::newRow("no keeps dialogs coming") << Answer::No << 2;
}

void TestErrors::suppressAfterYes() {
    QFETCH(Answer, first);
    QFETCH(int, dialogs);
    QTemporaryDir dir;
    ScriptedPrompts prompts(Answer::No);
    prompts.queueAnswer(first);
    ErrorReporter r(dir.path(), &prompts);
    r.ReportError(QStringLiteral("A -> One"), 1, 5, QStringLiteral("first"));
    r.ReportError(QStringLiteral("A -> Two"), 2, 5, QStringLiteral("second"));
    QCOMPARE(prompts.messages().size(), dialogs);
    QCOMPARE(r.suppressed(), first == Answer::Yes);
    const QByteArray log = readFile(r.logPath());
    QCOMPARE(log.count("-- Error Occured: "), 2); // both logged either way
    QVERIFY(log.contains("A -> Two @ Line:2, Error: 5 -> second\n"));
}

void TestErrors::trapReturnsZeroValueAndStatement_data() {
    QTest::addColumn<int>("reached"); // statement started before the throw; 0 = none
    QTest::newRow("before the first statement") << 0;
    QTest::newRow("third statement") << 3;
}

void TestErrors::trapReturnsZeroValueAndStatement() {
    QFETCH(int, reached);
    QTemporaryDir dir;
    ScriptedPrompts prompts;
    AppContext ctx(dir.path(), &prompts);
    int partial = 0;
    const int result = Trap(ctx.errors, "ModTest -> Proc", [&](Stmt& s) {
        for (int n = 1; n <= reached; ++n) {
            s.at(n);
            partial = n;
        }
        throw KestrelError(err::FileNotFound, QStringLiteral("File not found"));
        return 42;
    });
    QCOMPARE(result, 0);
    QCOMPARE(partial, reached); // work done before the error stays
    QCOMPARE(ctx.errors.currentLabel(), QStringLiteral("ModTest -> Proc"));
    QVERIFY(readFile(ctx.errors.logPath())
                .contains(QStringLiteral("ModTest -> Proc @ Line:%1, Error: 53 -> File not found\n")
                              .arg(reached)
                              .toUtf8()));
    QVERIFY(prompts.messages()[0].text.contains(QStringLiteral("@ Line:%1\n").arg(reached)));
    // Standard exceptions are reported too, with a number of their own.
    const QString text = Trap(ctx.errors, "ModTest -> Other", [] {
        throw std::out_of_range("x");
        return QStringLiteral("never");
    });
    QVERIFY(text.isEmpty());
    QVERIFY(readFile(ctx.errors.logPath()).contains("ModTest -> Other @ Line:0, Error: 9 -> "));
}

void TestErrors::logAppendsAndNeverFailsLoudly() {
    QTemporaryDir dir;
    test::writeFile(dir.filePath(QStringLiteral("Error.log")), "older entries\n");
    ErrorReporter r(dir.path());
    r.LogError(QStringLiteral("X -> Y"), -7, QStringLiteral("neg"));
    const QByteArray log = readFile(r.logPath());
    QVERIFY(log.startsWith("older entries\n\n-- Error Occured: "));
    QVERIFY(log.endsWith("X -> Y, Error: -7 -> neg\n"));
    // A folder that cannot hold the log: the dialog still comes, nothing else happens.
    test::writeFile(dir.filePath(QStringLiteral("file")), "f");
    ScriptedPrompts prompts(Answer::No);
    ErrorReporter blocked(dir.filePath(QStringLiteral("file/sub")), &prompts);
    blocked.ReportError(QStringLiteral("X -> Z"), 1, 75, QStringLiteral("Path/File access error"));
    QCOMPARE(prompts.messages().size(), 1);
    QCOMPARE(readFile(dir.filePath(QStringLiteral("file"))), QByteArray("f"));
}

QTEST_GUILESS_MAIN(TestErrors)
#include "tst_errors.moc"
