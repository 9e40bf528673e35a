// SPDX-License-Identifier: GPL-3.0-or-later
// Nothing lost: failed writes keep the old file, damaged files are reported and kept aside,
// one writer at a time, typed entries the scanner cannot take are refused.
#include "core/datalock.h"
#include "core/entry.h"
#include "core/filereport.h"
#include "core/files.h"
#include "core/profiles.h"
#include "testsupport.h"

#include <QDir>
#include <QFileDevice>
#include <QProcess>
#include <QStorageInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

namespace {

// A disk that fills up after `room` bytes of a file.
class FullDiskWriter : public FileWriter {
public:
    explicit FullDiskWriter(qint64 room) : m_room(room) {}

protected:
    qint64 writeBlock(QFileDevice& file, QByteArrayView bytes) override {
        if (m_room <= 0)
            return -1;
        const qint64 n = qMin<qint64>(m_room, bytes.size());
        m_room -= n;
        return FileWriter::writeBlock(file, bytes.first(n));
    }

private:
    qint64 m_room;
};

// A bank file with the first n channels only.
QByteArray numberedBank(int n) {
    QByteArray b = "[BankInfo]\nRevision=1\n[ChnlInfo]\n";
    for (int c = 1; c <= n; ++c)
        b += "Channel" + QByteArray::number(c).rightJustified(2, '0') +
             "=146.52,C,False,False,False\n";
    return b;
}

} // namespace

class TestSafety : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void failedWriteKeepsOldFile_data() {
        QTest::addColumn<bool>("realDisk"); // a tiny file system filled up, or a failure injected
        QTest::newRow("injected") << false;
        QTest::newRow("full file system") << true;
    }

    void failedWriteKeepsOldFile() {
        QFETCH(bool, realDisk);
        QTemporaryDir dir;
        const QString data = dir.filePath(u"data"_s);
        QDir().mkpath(data);
        if (realDisk && QProcess::execute(u"mount"_s, {u"-t"_s, u"tmpfs"_s, u"-o"_s, u"size=1m"_s,
                                                       u"tmpfs"_s, data}) != 0)
            QSKIP("a small file system cannot be mounted here");
        const auto unmount = qScopeGuard([&] {
            if (realDisk)
                QProcess::execute(u"umount"_s, {data});
        });
        ScriptedPrompts prompts;
        AppContext ctx(data, &prompts);
        MakeBanksDir(ctx);
        Load_Profiles(ctx);
        ctx.Profiles[0].Changed = true;
        Save_Profiles(ctx); // every file in place
        QVERIFY(ctx.failedWrites.isEmpty());
        const auto before = snapshotTree(data);
        FullDiskWriter full(0);
        if (realDisk)
            writeFile(data + u"/filler"_s, QByteArray(QStorageInfo(data).bytesFree(), 'x'));
        else
            ctx.setWriter(&full);
        ctx.Profiles[0].Banks[2].Chans[4].Desc = u"Edited"_s;
        ctx.Profiles[0].Banks[2].Changed = ctx.Profiles[0].Changed = true;
        Save_Profiles(ctx);
        QFile::remove(data + u"/filler"_s);
        QCOMPARE(snapshotTree(data), before);
        QVERIFY(ctx.Profiles[0].Banks[2].Changed); // tried again at the next save
        const QString failures = WriteFailureLines(ctx).join(u'\n');
        QVERIFY(failures.contains(u"Bank02.BKE: No space left on device"_s));
        QVERIFY(failures.contains(u"SrchBank00.SKE: "_s));
        QVERIFY(!ReportWriteFailures(ctx));
        QVERIFY(prompts.messages().value(0).text.contains(u"Bank02.BKE"_s));
        ctx.setWriter(nullptr);
        Save_Profiles(ctx);
        QVERIFY2(ctx.failedWrites.isEmpty(), qPrintable(WriteFailureLines(ctx).join(u'\n')));
        QVERIFY(readFile(ctx.bankPath(u"Bank02"_s)).contains("Edited"));
    }

    void staleTempsRemoved() {
        QTemporaryDir dir;
        AppContext ctx(dir.path());
        MakeBanksDir(ctx);
        const QStringList killed = {u"Banks/Bank01.BKE~a1B2c3.kestrel-save"_s,
                                    u"Main.ini~Zz9Yy8.kestrel-save"_s};
        const QStringList mine = {u"Banks/Bank01.BKE.backup"_s, u"notes.kestrel-save"_s};
        for (const QString& f : killed + mine)
            writeFile(dir.filePath(f), "x");
        RemoveStaleSaves(ctx);
        for (const QString& f : killed)
            QVERIFY2(!QFile::exists(dir.filePath(f)), qPrintable(f));
        for (const QString& f : mine)
            QVERIFY2(QFile::exists(dir.filePath(f)), qPrintable(f));
    }

    void damagedFileReportedAndKept_data() {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("detail");
        QTest::newRow("bank: a line of six fields")
            << "Banks/Bank01.BKE"
            << QByteArray("[BankInfo]\nRevision=1\n[ChnlInfo]\nChannel01=146.52,Tower, north,True,"
                          "True,True\n")
            << "Channel01";
        QTest::newRow("bank: cut short")
            << "Banks/Bank02.BKE" << numberedBank(18) + "Channel19=146.5"
            << "Channel19";
        QTest::newRow("search: junk line")
            << "Banks/SrchBank00.SKE" << QByteArray("[SrchInfo]\nSearch01=25,30,A\n#?!garbage\n")
            << "line 3";
        QTest::newRow("settings: binary")
            << "Main.ini" << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10) << "line 1";
        QTest::newRow("profile list: entry lost")
            << "Profiles.ini" << QByteArray("[Profiles]\nProfile01=Scouts\nProf")
            << "Profile02 missing";
    }

    void damagedFileReportedAndKept() {
        QFETCH(QString, file);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, detail);
        QTemporaryDir dir;
        ScriptedPrompts prompts;
        AppContext ctx(dir.path(), &prompts);
        MakeBanksDir(ctx);
        writeFile(dir.filePath(file), bytes);
        Load_Profiles(ctx);
        ReportLoadProblems(ctx);
        ReportLoadProblems(ctx); // once per load
        QCOMPARE(prompts.messages().size(), 1);
        const QString text = prompts.messages()[0].text;
        QVERIFY2(text.contains(file.section(u'/', -1) + u": "_s) && text.contains(detail),
                 qPrintable(text));
        QVERIFY(readFile(ctx.errors.logPath()).contains(file.section(u'/', -1).toUtf8()));
        // The next save writes over it, after keeping the damaged file beside it.
        for (int p = 0; p < ProfileCount; ++p) {
            ctx.Profiles[p].Changed = true;
            for (int b = 1; b <= BankCount; ++b)
                ctx.Profiles[p].Banks[b].Changed = true;
        }
        Save_Profiles(ctx);
        QVERIFY(ctx.failedWrites.isEmpty());
        const QFileInfo info(dir.filePath(file));
        const QStringList copies =
            info.dir().entryList({info.fileName() + u".damaged-*"_s}, QDir::Files);
        QCOMPARE(copies.size(), 1);
        QCOMPARE(readFile(info.dir().filePath(copies[0])), bytes);
        QVERIFY(readFile(info.filePath()) != bytes);
        Save_Profiles(ctx); // a copy is kept once
        QCOMPARE(info.dir().entryList({info.fileName() + u".damaged-*"_s}, QDir::Files).size(), 1);
    }

    void staleLockTakenOver() {
        // The lock of a process that has ended, in the form a live holder leaves it.
        QTemporaryDir dir;
        DataLock first(dir.path());
        QVERIFY(first.acquire(0));
        const QByteArray held = readFile(dir.filePath(QLatin1String(kLockFileName)));
        first.release();
        QProcess gone;
        gone.start(u"true"_s);
        QVERIFY(gone.waitForStarted());
        const QByteArray pid = QByteArray::number(gone.processId());
        QVERIFY(gone.waitForFinished());
        writeFile(dir.filePath(QLatin1String(kLockFileName)), pid + held.mid(held.indexOf('\n')));
        QVERIFY(DataLock(dir.path()).acquire(0));
    }

    void typedEntries_data() {
        QTest::addColumn<QString>("line"); // a channel line, or "S:" and a search line
        QTest::addColumn<QString>("refusal");
        const QString band = "25 to 956 MHz";
        QTest::newRow("good") << "146.52,Fire,True,False,False" << QString();
        QTest::newRow("empty frequency and 0") << "0,Spare,,,F" << QString();
        QTest::newRow("above the band") << "2000,X,False,False,False" << band;
        QTest::newRow("not a number") << "146.52MHz,X,False,False,False" << band;
        QTest::newRow("long description") << "146.52," + QString(201, u'x') + ",False,False,False"
                                          << "200 characters";
        QTest::newRow("lower-case flag") << "146.52,X,true,False,False"
                                         << "Priority";
        QTest::newRow("search upper too high") << "S:420,1000,High" << band;
    }
    void typedEntries() {
        QFETCH(QString, line);
        QFETCH(QString, refusal);
        QString reason;
        const bool ok = line.startsWith(u"S:"_s) ? CheckSearchLine(line.mid(2), &reason)
                                                 : CheckChannelLine(line, &reason);
        QCOMPARE(ok, refusal.isEmpty());
        QVERIFY2(reason.contains(refusal), qPrintable(reason));
    }
};

QTEST_MAIN(TestSafety)
#include "tst_safety.moc"
