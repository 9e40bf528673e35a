// SPDX-License-Identifier: GPL-3.0-or-later
// The INI reader and writer, and the error report with its log.
#include "core/appcontext.h"
#include "core/class_ini.h"
#include "testsupport.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestIni : public QObject {
    Q_OBJECT
    QTemporaryDir m_dir;
private Q_SLOTS:
    void read_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("value"); // of key "k" in section "S"
        QTest::newRow("any case") << QByteArray("[s]\nK=1\n") << "1";
        QTest::newRow("first match wins") << QByteArray("[S]\nk=1\nK=2\n") << "1";
        QTest::newRow("first block only") << QByteArray("[S]\na=1\n[T]\n[s]\nk=3\n") << "";
        QTest::newRow("other section") << QByteArray("[T]\nk=1\n[S]\n") << "";
        QTest::newRow("trimmed") << QByteArray("[S]\n \t k \t=  v w \t\n") << "v w";
        QTest::newRow("comment") << QByteArray("[S]\n;k=1\nk=2\n") << "2";
        QTest::newRow("CRLF") << QByteArray("[S]\r\nk=v\r\nl=w\r\n") << "v";
        QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF[S]\nk=v") << "v";
        QTest::newRow("UTF-8") << QByteArray("[S]\nk=\xC3\xA9\xE2\x82\xAC\n") << u"é€"_s;
        QTest::newRow("Windows-1252") << QByteArray("[S]\nk=\xE9\x80\n") << u"é€"_s;
        QTest::newRow("NUL elsewhere") << bytesOf("[S]\nj=a\0b\nk=v\n") << "v";
        QTest::newRow("cut at 254") << "[S]\nk=" + QByteArray(300, 'x') << QString(254, u'x');
        QTest::newRow("junk") << bytesOf("\xFF\xFE\x00\x01[\x80\n=\n[\n]]]=\n") << "";
    }
    void read() {
        QFETCH(QByteArray, bytes);
        Class_INI ini;
        ini.FileName = m_dir.filePath(u"read.ini"_s);
        writeFile(ini.FileName, bytes);
        QTEST(ini.ReadKey(u"S"_s, u"k"_s), "value");
    }
    void write_data() {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("creates file") << QByteArray() << "k" << QByteArray("[S]\nk=v\n");
        QTest::newRow("replace keeps order") << QByteArray("[S]\nA=1\nKey = o\nB=2\n") << "KEY"
                                             << QByteArray("[S]\nA=1\nKey=v\nB=2\n");
        QTest::newRow("after last key") << QByteArray("[s]\na=1\n\n;n\n[T]\n") << "k"
                                        << QByteArray("[s]\na=1\nk=v\n\n;n\n[T]\n");
        QTest::newRow("creates section")
            << QByteArray(";h\n[T]\nb=2\n") << "k" << QByteArray(";h\n[T]\nb=2\n[S]\nk=v\n");
        QTest::newRow("junk kept")
            << QByteArray("junk\xFF\n[S]\nk=1\n") << "k" << QByteArray("junk\xC3\xBF\n[S]\nk=v\n");
        QTest::newRow("CRLF stays")
            << QByteArray("[S]\r\nk=1\r\n") << "n" << QByteArray("[S]\r\nk=1\r\nn=v\r\n");
        QTest::newRow("BOM dropped")
            << QByteArray("\xEF\xBB\xBF[S]\nk=1\n") << "k" << QByteArray("[S]\nk=v\n");
        QTest::newRow("NUL kept") << bytesOf("[S]\nj=\0\n") << "k" << bytesOf("[S]\nj=\0\nk=v\n");
    }
    void write() {
        QFETCH(QByteArray, before);
        QFETCH(QString, key);
        QFETCH(QByteArray, after);
        Class_INI ini;
        ini.FileName = m_dir.filePath(u"write.ini"_s);
        QFile::remove(ini.FileName);
        if (!before.isNull())
            writeFile(ini.FileName, before);
        ini.WriteKey(u"S"_s, key, u"v"_s);
        QCOMPARE(readFile(ini.FileName), after);
        QCOMPARE(ini.lastWrite(), 1);
    }
    void writeFailures() {
        // A missing folder is not created, and a folder in the file's place is not replaced.
        const QString dir = m_dir.filePath(u"dir.ini"_s);
        QVERIFY(QDir().mkpath(dir + u"/inside"_s));
        for (const QString& path : {m_dir.filePath(u"no/such/x.ini"_s), dir}) {
            Class_INI ini;
            ini.FileName = path;
            ini.WriteKey(u"S"_s, u"k"_s, u"v"_s);
            QCOMPARE(ini.lastWrite(), 0);
        }
        QVERIFY(!QFile::exists(m_dir.filePath(u"no"_s)));
        QVERIFY(QFileInfo(dir + u"/inside"_s).isDir());
    }
    void reportError() {
        ScriptedPrompts prompts(Answer::No);
        ErrorReporter r(m_dir.path(), &prompts);
        r.ReportError(u"ModMain -> Load_Settings"_s, 12, 13, u"Type mismatch"_s);
        QCOMPARE(prompts.messages().size(), 1);
        const auto& m = prompts.messages()[0];
        QCOMPARE(m.text,
                 u"An Error Occurred In ModMain -> Load_Settings @ Line:12\n\n"
                 "Error Number: 13  Type mismatch\n\nSuppress Further Errors If Possible?"_s);
        QCOMPARE(m.title, u"Kestrel Manager Error"_s);
        QVERIFY(m.icon == Icon::Critical && m.buttons == Buttons::YesNo);
        QCOMPARE(r.logPath(), m_dir.filePath(u"Error.log"_s));
        // Date and time in the user's short forms.
        const QString today =
            QLocale::system().toString(QDate::currentDate(), QLocale::ShortFormat);
        const QRegularExpression entry(
            u"^\\n-- Error Occured: "_s + QRegularExpression::escape(today) +
            u" - [^\\n]*\\d --\\n"
            "ModMain -> Load_Settings @ Line:12, Error: 13 -> Type mismatch\\n$"_s);
        QVERIFY(entry.match(QString::fromUtf8(readFile(r.logPath()))).hasMatch());
        // A folder that cannot hold the log: the dialog still comes, nothing else happens.
        writeFile(m_dir.filePath(u"file"_s), "f");
        ErrorReporter blocked(m_dir.filePath(u"file/sub"_s), &prompts);
        blocked.ReportError(u"X -> Z"_s, 1, 75, u"Path/File access error"_s);
        QCOMPARE(prompts.messages().size(), 2);
        QCOMPARE(readFile(m_dir.filePath(u"file"_s)), QByteArray("f"));
    }
    void suppress() {
        for (const bool yes : {true, false}) {
            QTemporaryDir dir;
            writeFile(dir.filePath(u"Error.log"_s), "older\n");
            ScriptedPrompts prompts(Answer::No);
            prompts.queueAnswer(yes ? Answer::Yes : Answer::No);
            ErrorReporter r(dir.path(), &prompts);
            r.ReportError(u"A -> One"_s, 1, 5, u"first"_s);
            r.ReportError(u"A -> Two"_s, 2, 5, u"second"_s);
            QCOMPARE(prompts.messages().size(), yes ? 1 : 2);
            const QByteArray log = readFile(r.logPath());
            QVERIFY(log.startsWith("older\n\n-- Error Occured: ")); // appended
            QCOMPARE(log.count("-- Error Occured: "), 2);           // logged either way
            QVERIFY(log.endsWith("A -> Two @ Line:2, Error: 5 -> second\n"));
        }
    }
    void trap() {
        QTemporaryDir dir;
        ScriptedPrompts prompts;
        AppContext ctx(dir.path(), &prompts);
        int done = 0;
        const int result = Trap(ctx.errors, "ModTest -> Proc", [&](Stmt& s) {
            for (done = 1; done <= 3; ++done)
                s.at(done);
            throw KestrelError(err::FileNotFound, u"File not found"_s);
            return 42;
        });
        QCOMPARE(result, 0);
        QVERIFY(readFile(ctx.errors.logPath())
                    .contains("Proc @ Line:3, Error: 53 -> File not found\n"));
        const QString text = Trap(ctx.errors, "ModTest -> Other", [] {
            throw std::out_of_range("x");
            return u"never"_s;
        });
        QVERIFY(text.isEmpty());
        QVERIFY(readFile(ctx.errors.logPath()).contains("ModTest -> Other @ Line:0, Error: 9 -> "));
    }
    // A failure the user can act on: one plain message per action, shown when the action ends,
    // never logged; an action run from an event loop inside another is told on its own.
    void expectedFailures() {
        QTemporaryDir dir;
        ScriptedPrompts prompts;
        ErrorReporter r(dir.path(), &prompts);
        Trap(r, "Outer", [&] {
            Trap(r, "Query", [] { throw ExpectedFailure(u"Service gone; try again."_s); });
            QVERIFY(r.failedInAction() && prompts.messages().isEmpty());
            r.Tell(u"Second"_s);
            QEventLoop loop;
            QTimer::singleShot(0, &loop, [&] {
                Trap(r, "Click", [&] { r.Tell(u"Inner"_s); });
                loop.quit();
            });
            loop.exec();
            QCOMPARE(prompts.messages().size(), 1); // the inner action's, at its end
        });
        QCOMPARE(prompts.messages().size(), 2);
        QCOMPARE(prompts.messages().last().text, u"Service gone; try again."_s);
        QVERIFY(!r.failedInAction() && !QFile::exists(r.logPath()));
    }
};

QTEST_GUILESS_MAIN(TestIni)
#include "tst_ini.moc"
