// SPDX-License-Identifier: GPL-3.0-or-later
// Bank and search-limit files, the file utilities, and bad input on disk.
#include "core/class_ini.h"
#include "core/files.h"
#include "core/freq.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using kestrel::test::readFile;
using kestrel::test::writeFile;

class TestFiles : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init();
    void missingBankIsFactory_data();
    void missingBankIsFactory();
    void bankFileFallbacks();
    void bankRoundTripIsByteIdentical();
    void bankSaveKeepsForeignKeys();
    void searchFileRoundTrip();
    void longDescriptionCutOnRead();
    void badFiles_data();
    void badFiles();
    void failedWriteKeepsOldFile();
    void fileExists_data();
    void fileExists();
    void fileSize();
    void renameFile();
    void makeBanksDir();
    void fileNames_data();
    void fileNames();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<AppContext> m_ctx;
    QString bank(const QString& name) const { return m_ctx->bankPath(name); }
};

void TestFiles::init() {
    m_dir = std::make_unique<QTemporaryDir>();
    m_ctx = std::make_unique<AppContext>(m_dir->path());
    MakeBanksDir(*m_ctx);
}

void TestFiles::missingBankIsFactory_data() {
    QTest::addColumn<int>("bank");
    QTest::addColumn<int>("slot");
    QTest::addColumn<QString>("line");
    QTest::newRow("bank 1") << 1 << 1 << "40.500000,Chan #001,False,False,False";
    QTest::newRow("bank 8 real") << 8 << 10 << "469.550000,Chan #150,False,False,False";
    QTest::newRow("bank 8 empty") << 8 << 11 << "000.000000,Chan #151,False,False,True";
    QTest::newRow("bank 9 first") << 9 << 1 << "000.000000,Chan #161,False,False,True";
    QTest::newRow("bank 9 last") << 9 << 20 << "000.000000,Chan #180,False,False,True";
}

void TestFiles::missingBankIsFactory() {
    QFETCH(int, bank);
    QFETCH(int, slot);
    QFETCH(QString, line);
    Load_BankInfo(*m_ctx, 2, bank, this->bank(QStringLiteral("nowhere")));
    QCOMPARE(ChannelLine(m_ctx->Profiles[2].Banks[bank].Chans[slot]), line);
    QCOMPARE(m_ctx->Profiles[2].Banks[bank].Revision, quint8(0));
    QVERIFY(!QFile::exists(this->bank(QStringLiteral("nowhere"))));
}

void TestFiles::bankFileFallbacks() {
    writeFile(bank(QStringLiteral("B")), "[bankinfo]\r\nrevision = 300\r\n[CHNLINFO]\r\n"
                                         "Channel01=146.52,Fire, East,False,False,False\r\n"
                                         "channel02 = 155.16,EMS,False,True,False\r\n"
                                         "Channel03=\r\n"
                                         "Channel04=2000,Too high,True,True,True\r\n");
    Load_BankInfo(*m_ctx, 0, 1, bank(QStringLiteral("B")));
    const BankRec& b = m_ctx->Profiles[0].Banks[1];
    QCOMPARE(b.Revision, quint8(255));
    QCOMPARE(ChannelLine(b.Chans[1]), QStringLiteral("40.500000,Chan #001,False,False,False"));
    QCOMPARE(ChannelLine(b.Chans[2]), QStringLiteral("155.160000,EMS,False,True,False"));
    QCOMPARE(ChannelLine(b.Chans[3]), QStringLiteral("121.500000,Chan #003,False,False,False"));
    QCOMPARE(ChannelLine(b.Chans[4]), QStringLiteral("000.000000,Too high,True,True,True"));
    QCOMPARE(ChannelLine(b.Chans[20]), QStringLiteral("148.150000,Chan #020,False,False,False"));
    QCOMPARE(m_ctx->errors.reportCount(), 0);
}

void TestFiles::bankRoundTripIsByteIdentical() {
    // The golden bank: written from records, read back, written again.
    const QByteArray golden = readFile(test::dataPath(QStringLiteral("bank-roundtrip.BKE")));
    QVERIFY(!golden.isEmpty());
    writeFile(bank(QStringLiteral("In")), golden);
    Load_BankInfo(*m_ctx, 0, 3, bank(QStringLiteral("In")));
    QCOMPARE(m_ctx->Profiles[0].Banks[3].Revision, quint8(1));
    m_ctx->Profiles[0].Banks[3].Changed = true;
    Save_BankInfo(*m_ctx, 0, 3, bank(QStringLiteral("Out")));
    QCOMPARE(readFile(bank(QStringLiteral("Out"))), golden);
    QVERIFY(!m_ctx->Profiles[0].Banks[3].Changed);
    QCOMPARE(BankFileBytes(m_ctx->Profiles[0].Banks[3]), golden);
}

void TestFiles::bankSaveKeepsForeignKeys() {
    writeFile(bank(QStringLiteral("K")), "; my radio\n[BankInfo]\nRevision=7\nOwner=me\n"
                                         "[Extra]\nx=1\n[ChnlInfo]\nChannel05=junk\n");
    Load_BankInfo(*m_ctx, 0, 1, bank(QStringLiteral("K")));
    Save_BankInfo(*m_ctx, 0, 1, bank(QStringLiteral("K")));
    const QByteArray after = readFile(bank(QStringLiteral("K")));
    QVERIFY(after.startsWith("; my radio\n[BankInfo]\nRevision=1\nOwner=me\n[Extra]\nx=1\n"
                             "[ChnlInfo]\nChannel05=122.200000,Chan #005,False,False,False\n"
                             "Channel01=40.500000,"));
    QVERIFY(after.endsWith("Channel20=148.150000,Chan #020,False,False,False\n"));
}

void TestFiles::searchFileRoundTrip() {
    const QString path = m_ctx->searchPath(QStringLiteral("S"));
    writeFile(path, "[SrchInfo]\nSearch01=420,450,UHF\nSearch02=420,450\nsearch10=0,0,Off\n");
    Load_SearchInfo(*m_ctx, 4, path);
    const ProfileRec& p = m_ctx->Profiles[4];
    QCOMPARE(SearchLine(p.Searches[1]), QStringLiteral("420.000000,450.000000,UHF"));
    QCOMPARE(SearchLine(p.Searches[2]), QStringLiteral("28.000000,29.695000,Search #2"));
    QCOMPARE(SearchLine(p.Searches[7]), QStringLiteral("406.000000,419.993750,Search #7"));
    QCOMPARE(SearchLine(p.Searches[10]), QStringLiteral("000.000000,000.000000,Off"));
    Save_SearchInfo(*m_ctx, 4, path);
    QByteArray expected = "[SrchInfo]\nSearch01=420.000000,450.000000,UHF\n"
                          "Search02=28.000000,29.695000,Search #2\n"
                          "search10=000.000000,000.000000,Off\n";
    const QByteArray written = readFile(path);
    QVERIFY(written.startsWith(expected));
    QVERIFY(written.endsWith("Search09=450.000000,469.993750,Search #9\n"));
}

void TestFiles::longDescriptionCutOnRead() {
    ChannelRec& ch = m_ctx->Profiles[0].Banks[1].Chans[1];
    ch.Freq = 146.52e6;
    ch.Desc = QString(300, QLatin1Char('d'));
    Save_BankInfo(*m_ctx, 0, 1, bank(QStringLiteral("L")));
    QVERIFY(readFile(bank(QStringLiteral("L"))).contains(ch.Desc.toLatin1() + ",False"));
    Load_BankInfo(*m_ctx, 0, 1, bank(QStringLiteral("L")));
    // 254 characters of the value leave too few fields: the slot takes its factory line.
    QCOMPARE(ChannelLine(ch), QStringLiteral("40.500000,Chan #001,False,False,False"));
}

void TestFiles::badFiles_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("keptWhole"); // no section of ours inside: the old text leads the new
    QByteArray junk(64 * 1024, Qt::Uninitialized);
    QRandomGenerator rng(42);
    for (char& c : junk)
        c = char(rng.generate());
    QTest::newRow("binary junk") << junk << true;
    QTest::newRow("NUL byte") << test::bytesOf(
                                     "[ChnlInfo]\nChannel01=146.52,A\0B,True,False,False\n")
                              << false;
    QByteArray big;
    while (big.size() < 10 * 1024 * 1024)
        big += "[ChnlInfo]\nChannel01=146.52,Big,True,False,False\n\n\n;\r\n" + junk.left(200);
    QTest::newRow("10 MB") << big << false;
    QTest::newRow("10 MB of line ends") << QByteArray(10 * 1024 * 1024, '\n') << true;
}

void TestFiles::badFiles() {
    QFETCH(QByteArray, bytes);
    QFETCH(bool, keptWhole);
    const QString path = bank(QStringLiteral("Bad"));
    writeFile(path, bytes);
    Load_BankInfo(*m_ctx, 0, 2, path);
    QCOMPARE(m_ctx->errors.reportCount(), 0);
    for (int c = 1; c <= ChansPerBank; ++c) {
        const double f = m_ctx->Profiles[0].Banks[2].Chans[c].Freq;
        QVERIFY(f == 0 || (f >= kBandLowHz && f <= kBandHighHz));
    }
    // Saving keeps what was there: our keys come in, the rest of the text stays.
    Save_BankInfo(*m_ctx, 0, 2, path);
    const QByteArray after = readFile(path);
    QVERIFY(after.contains("Channel20="));
    if (keptWhole)
        QVERIFY(QString::fromUtf8(after).startsWith(DecodeText(bytes)));
    else
        QVERIFY(after.size() >= bytes.size());
    Load_BankInfo(*m_ctx, 0, 2, path);
    QCOMPARE(m_ctx->Profiles[0].Banks[2].Revision, quint8(1));
}

void TestFiles::failedWriteKeepsOldFile() {
    // A folder whose parent is a regular file cannot take a file, even for root.
    writeFile(m_dir->filePath(QStringLiteral("plain")), "x");
    const QString path = m_dir->filePath(QStringLiteral("plain/Banks/A.BKE"));
    Save_BankInfo(*m_ctx, 0, 1, path);
    Save_SearchInfo(*m_ctx, 0, m_dir->filePath(QStringLiteral("plain/S.SKE")));
    QCOMPARE(m_ctx->failedWrites.size(), 2);
    QCOMPARE(readFile(m_dir->filePath(QStringLiteral("plain"))), QByteArray("x"));
    QCOMPARE(m_ctx->errors.reportCount(), 0); // silent for the user, as the platform's writer
}

void TestFiles::fileExists_data() {
    QTest::addColumn<QString>("relative");
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<bool>("exists");
    QTest::newRow("file") << "Banks/F.BKE" << false << true;
    QTest::newRow("file with folder flag") << "Banks/F.BKE" << true << true;
    QTest::newRow("folder without flag") << "Banks" << false << false;
    QTest::newRow("folder with flag") << "Banks" << true << true;
    QTest::newRow("missing") << "Banks/G.BKE" << false << false;
    QTest::newRow("dot backslash") << "Banks/.\\F.BKE" << false << false;
    QTest::newRow("dot slash to an existing file") << "Banks/./F.BKE" << false << false;
    QTest::newRow("empty") << "" << true << false;
}

void TestFiles::fileExists() {
    QFETCH(QString, relative);
    QFETCH(bool, isFolder);
    QFETCH(bool, exists);
    writeFile(bank(QStringLiteral("F")), "x");
    const QString path = relative.isEmpty() ? QString() : m_dir->filePath(relative);
    QCOMPARE(File_Exists(path, isFolder), exists);
}

void TestFiles::fileSize() {
    writeFile(bank(QStringLiteral("F")), QByteArray(1234, 'x'));
    QCOMPARE(File_Size(bank(QStringLiteral("F"))), 1234);
    QCOMPARE(File_Size(bank(QStringLiteral("none"))), 0);
}

void TestFiles::renameFile() {
    ScriptedPrompts prompts;
    m_ctx->setPrompts(&prompts);
    writeFile(bank(QStringLiteral("Old")), "old");
    writeFile(bank(QStringLiteral("Taken")), "taken");
    QVERIFY(!RenameFile(*m_ctx, bank(QStringLiteral("X")), bank(QStringLiteral("Missing"))));
    QVERIFY(prompts.messages().isEmpty());
    QVERIFY(!RenameFile(*m_ctx, bank(QStringLiteral("Taken")), bank(QStringLiteral("Old"))));
    QCOMPARE(prompts.messages().size(), 1);
    QCOMPARE(prompts.messages()[0].text,
             QStringLiteral("Can NOT Rename File, Destination May Exist Already!!!"));
    QCOMPARE(readFile(bank(QStringLiteral("Old"))), QByteArray("old"));
    QCOMPARE(readFile(bank(QStringLiteral("Taken"))), QByteArray("taken"));
    QVERIFY(RenameFile(*m_ctx, bank(QStringLiteral("New")), bank(QStringLiteral("Old"))));
    QCOMPARE(readFile(bank(QStringLiteral("New"))), QByteArray("old"));
    QVERIFY(!QFile::exists(bank(QStringLiteral("Old"))));
    m_ctx->setPrompts(nullptr);
}

void TestFiles::makeBanksDir() {
    QTemporaryDir dir;
    AppContext ctx(dir.path());
    MakeBanksDir(ctx);
    QVERIFY(QFileInfo(ctx.banksDir()).isDir());
    writeFile(ctx.bankPath(QStringLiteral("A")), "a");
    MakeBanksDir(ctx); // an existing folder is left as it is
    QCOMPARE(readFile(ctx.bankPath(QStringLiteral("A"))), QByteArray("a"));
    // A folder that cannot be made is ignored.
    writeFile(dir.filePath(QStringLiteral("file")), "f");
    AppContext blocked(dir.filePath(QStringLiteral("file")));
    MakeBanksDir(blocked);
    QCOMPARE(blocked.errors.reportCount(), 0);
}

void TestFiles::fileNames_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("trimmed"); // TrimFileName
    QTest::addColumn<QString>("base");    // FileBaseName
    QTest::newRow("bank path") << "/data/Banks/Air.BKE"
                               << "Air"
                               << "Air";
    QTest::newRow("backslashes") << "C:\\Kestrel\\Banks\\Air.BKE"
                                 << "Air"
                                 << "Air";
    QTest::newRow("dot in file name") << "/data/Air.Band.BKE"
                                      << "Air"
                                      << "Air";
    QTest::newRow("dot in folder name") << "/home/u/.local/Banks/Air.BKE"
                                        << ""
                                        << "Air";
    QTest::newRow("dotted folder, plain name") << "/a.b/c/Air"
                                               << "a"
                                               << "Air";
    QTest::newRow("no folder, no dot") << "Air"
                                       << "Air"
                                       << "Air";
}

void TestFiles::fileNames() {
    QFETCH(QString, path);
    QFETCH(QString, trimmed);
    QFETCH(QString, base);
    QCOMPARE(TrimFileName(path), trimmed);
    QCOMPARE(FileBaseName(path), base);
}

QTEST_GUILESS_MAIN(TestFiles)
#include "tst_files.moc"
