// SPDX-License-Identifier: GPL-3.0-or-later
// Bank and search-limit files, the file utilities, and bad input on disk.
#include "core/files.h"
#include "core/freq.h"
#include "testsupport.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using namespace kestrel::test;
using namespace Qt::StringLiterals;

class TestFiles : public QObject {
    Q_OBJECT
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<AppContext> m_ctx;
    QString bank(const QString& name) const { return m_ctx->bankPath(name); }
    QString chan(int p, int b, int c) const {
        return ChannelLine(m_ctx->Profiles[p].Banks[b].Chans[c]);
    }
private Q_SLOTS:
    void init() {
        m_dir = std::make_unique<QTemporaryDir>();
        m_ctx = std::make_unique<AppContext>(m_dir->path());
        MakeBanksDir(*m_ctx);
    }
    void bankFallbacks() {
        writeFile(bank(u"B"_s), "[bankinfo]\r\nrevision = 300\r\n[CHNLINFO]\r\n"
                                "Channel01=146.52,Fire, East,False,False,False\r\n"
                                "channel02 = 155.16,EMS,False,True,False\r\nChannel03=\r\n"
                                "Channel04=2000,Too high,True,True,True\r\n");
        Load_BankInfo(*m_ctx, 0, 1, bank(u"B"_s));
        QCOMPARE(m_ctx->Profiles[0].Banks[1].Revision, quint8(255));
        QCOMPARE(chan(0, 1, 1), u"40.500000,Chan #001,False,False,False"_s);
        QCOMPARE(chan(0, 1, 2), u"155.160000,EMS,False,True,False"_s);
        QCOMPARE(chan(0, 1, 3), u"121.500000,Chan #003,False,False,False"_s);
        QCOMPARE(chan(0, 1, 4), u"000.000000,Too high,True,True,True"_s);
        // A missing file gives the factory bank and creates nothing.
        Load_BankInfo(*m_ctx, 2, 8, bank(u"nowhere"_s));
        QCOMPARE(chan(2, 8, 10), u"469.550000,Chan #150,False,False,False"_s);
        QCOMPARE(chan(2, 8, 11), u"000.000000,Chan #151,False,False,True"_s);
        QVERIFY(!QFile::exists(bank(u"nowhere"_s)));
        QCOMPARE(m_ctx->errors.reportCount(), 0);
    }
    void bankRoundTripIsByteIdentical() {
        const QByteArray golden = readFile(dataPath(u"bank-roundtrip.BKE"_s));
        QVERIFY(!golden.isEmpty());
        writeFile(bank(u"In"_s), golden);
        Load_BankInfo(*m_ctx, 0, 3, bank(u"In"_s));
        m_ctx->Profiles[0].Banks[3].Changed = true;
        Save_BankInfo(*m_ctx, 0, 3, bank(u"Out"_s));
        QCOMPARE(readFile(bank(u"Out"_s)), golden);
        QVERIFY(!m_ctx->Profiles[0].Banks[3].Changed);
    }
    void saveKeepsForeignKeys() {
        writeFile(bank(u"K"_s),
                  "; mine\n[BankInfo]\nRevision=7\nOwner=me\n[ChnlInfo]\nChannel05=j\n");
        Load_BankInfo(*m_ctx, 0, 1, bank(u"K"_s));
        Save_BankInfo(*m_ctx, 0, 1, bank(u"K"_s));
        const QByteArray after = readFile(bank(u"K"_s));
        QVERIFY(after.startsWith("; mine\n[BankInfo]\nRevision=1\nOwner=me\n[ChnlInfo]\n"
                                 "Channel05=122.200000,Chan #005,False,False,False\nChannel01="));
        QVERIFY(after.endsWith("Channel20=148.150000,Chan #020,False,False,False\n"));
    }
    void searchFileRoundTrip() {
        const QString path = m_ctx->searchPath(u"S"_s);
        writeFile(path, "[SrchInfo]\nSearch01=420,450,UHF\nSearch02=420,450\nsearch10=0,0,Off\n");
        Load_SearchInfo(*m_ctx, 4, path);
        Save_SearchInfo(*m_ctx, 4, path);
        const QByteArray written = readFile(path);
        QVERIFY(written.startsWith("[SrchInfo]\nSearch01=420.000000,450.000000,UHF\n"
                                   "Search02=28.000000,29.695000,Search #2\n"
                                   "search10=000.000000,000.000000,Off\n"));
        QVERIFY(written.endsWith("Search09=450.000000,469.993750,Search #9\n"));
    }
    void badFiles_data() {
        QTest::addColumn<QByteArray>("bytes");
        QByteArray junk(64 * 1024, Qt::Uninitialized);
        QRandomGenerator rng(42);
        for (char& c : junk)
            c = char(rng.generate());
        QTest::newRow("binary junk") << junk;
        QTest::newRow("NUL") << bytesOf("[ChnlInfo]\nChannel01=146.52,A\0B,True,False,False\n");
    }
    void badFiles() {
        QFETCH(QByteArray, bytes);
        const QString path = bank(u"Bad"_s);
        writeFile(path, bytes);
        Load_BankInfo(*m_ctx, 0, 2, path);
        for (int c = 1; c <= ChansPerBank; ++c) {
            const double f = m_ctx->Profiles[0].Banks[2].Chans[c].Freq;
            QVERIFY(f == 0 || (f >= kBandLowHz && f <= kBandHighHz));
        }
        Save_BankInfo(*m_ctx, 0, 2, path); // our keys come in, the rest stays
        const QByteArray after = readFile(path);
        QVERIFY(after.contains("Channel20=") && after.size() >= bytes.size());
        Load_BankInfo(*m_ctx, 0, 2, path);
        QCOMPARE(m_ctx->Profiles[0].Banks[2].Revision, quint8(1));
        QCOMPARE(m_ctx->errors.reportCount(), 0);
    }
    void utilities() {
        writeFile(bank(u"F"_s), QByteArray(1234, 'x'));
        QVERIFY(File_Exists(bank(u"F"_s), false) && File_Exists(m_ctx->banksDir(), true));
        QVERIFY(!File_Exists(m_ctx->banksDir(), false) && !File_Exists(QString(), true));
        QVERIFY(!File_Exists(m_dir->filePath(u"Banks/./F.BKE"_s), false));
        QVERIFY(File_Size(bank(u"F"_s)) == 1234 && File_Size(bank(u"none"_s)) == 0);
        // Renaming onto an existing file is refused (the window tests see the message).
        ScriptedPrompts prompts;
        m_ctx->setPrompts(&prompts);
        writeFile(bank(u"Taken"_s), "taken");
        QVERIFY(!RenameFile(*m_ctx, bank(u"X"_s), bank(u"Missing"_s)));
        QVERIFY(!RenameFile(*m_ctx, bank(u"Taken"_s), bank(u"F"_s)));
        QCOMPARE(readFile(bank(u"Taken"_s)), QByteArray("taken"));
        QVERIFY(RenameFile(*m_ctx, bank(u"New"_s), bank(u"F"_s)));
        QVERIFY(File_Size(bank(u"New"_s)) == 1234 && !QFile::exists(bank(u"F"_s)));
        QCOMPARE(prompts.messages().size(), 1);
        m_ctx->setPrompts(nullptr);
    }
    void fileNames_data() {
        QTest::addColumn<QString>("row"); // path|TrimFileName|FileBaseName
        QTest::newRow("backslashes") << "C:\\K\\Banks\\Air.BKE|Air|Air";
        QTest::newRow("dot in file name") << "/d/Air.Band.BKE|Air|Air";
        QTest::newRow("dot in folder") << "/u/.local/Banks/Air.BKE||Air";
        QTest::newRow("dotted folder, plain name") << "/a.b/c/Air|a|Air";
    }
    void fileNames() {
        QFETCH(QString, row);
        const QStringList f = row.split(u'|');
        QCOMPARE(TrimFileName(f[0]), f[1]);
        QCOMPARE(FileBaseName(f[0]), f[2]);
    }
};

QTEST_GUILESS_MAIN(TestFiles)
#include "tst_files.moc"
