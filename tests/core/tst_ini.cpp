// SPDX-License-Identifier: GPL-3.0-or-later
// The INI reader and writer: what a read finds, and what a write keeps.
#include "core/class_ini.h"
#include "testsupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace kestrel;
using kestrel::test::bytesOf;
using kestrel::test::readFile;
using kestrel::test::writeFile;

class TestIni : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void read_data();
    void read();
    void valueCutAt254();
    void write_data();
    void write();
    void writeIntoMissingFolderFailsQuietly();
    void writeKeepsLineEndsAndTurnsValueLinesFlat();
    void unreadableFileIsNeverOverwritten();

private:
    QTemporaryDir m_dir;
};

void TestIni::read_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    const QByteArray bank =
        "[BankInfo]\nRevision=1\n[ChnlInfo]\nChannel01=146.52,A,False,False,False\n";
    QTest::newRow("plain") << bank << "ChnlInfo"
                           << "Channel01"
                           << "146.52,A,False,False,False";
    QTest::newRow("section and key any case") << bank << "CHNLINFO"
                                              << "channel01"
                                              << "146.52,A,False,False,False";
    QTest::newRow("key of another section") << bank << "BankInfo"
                                            << "Channel01"
                                            << "";
    QTest::newRow("first match wins") << QByteArray("[S]\nk=1\nK=2\n") << "S"
                                      << "k"
                                      << "1";
    QTest::newRow("only the first block of a section")
        << QByteArray("[S]\na=1\n[T]\nb=2\n[s]\nc=3\n") << "S"
        << "c"
        << "";
    QTest::newRow("blanks trimmed") << QByteArray("[S]\n \t k \t=  v w \t\n") << "S"
                                    << "k"
                                    << "v w";
    QTest::newRow("comment line ignored") << QByteArray("[S]\n;k=1\nk=2\n") << "S"
                                          << "k"
                                          << "2";
    QTest::newRow("comment is not a key") << QByteArray("[S]\n;k=1\n") << "S"
                                          << ";k"
                                          << "";
    QTest::newRow("CRLF") << QByteArray("[S]\r\nk=v\r\nl=w\r\n") << "S"
                          << "k"
                          << "v";
    QTest::newRow("no final line end") << QByteArray("[S]\nk=v") << "S"
                                       << "k"
                                       << "v";
    QTest::newRow("byte-order mark") << QByteArray("\xEF\xBB\xBF[S]\nk=v\n") << "S"
                                     << "k"
                                     << "v";
    QTest::newRow("UTF-8") << QByteArray("[S]\nk=Caf\xC3\xA9 \xE2\x82\xAC\n") << "S"
                           << "k" << QString::fromUtf8("Caf\xC3\xA9 \xE2\x82\xAC");
    QTest::newRow("Windows-1252") << QByteArray("[S]\nk=Caf\xE9 \x80\n") << "S"
                                  << "k" << QString::fromUtf8("Caf\xC3\xA9 \xE2\x82\xAC");
    QTest::newRow("empty value is absent") << QByteArray("[S]\nk=\n") << "S"
                                           << "k"
                                           << "";
    QTest::newRow("key before any section") << QByteArray("k=v\n[S]\n") << "S"
                                            << "k"
                                            << "";
    QTest::newRow("line without equals") << QByteArray("[S]\nk\nk=v\n") << "S"
                                         << "k"
                                         << "v";
    QTest::newRow("NUL byte in another line") << bytesOf("[S]\nj=a\0b\nk=v\n") << "S"
                                              << "k"
                                              << "v";
    QTest::newRow("binary junk") << bytesOf("\xFF\xFE\x00\x01[\x80\n=\n[\n]]]=\n") << "S"
                                 << "k"
                                 << "";
}

void TestIni::read() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QCOMPARE(IniDocument::parse(bytes).ReadKey(section, key), value);
    // The accessor reads the same from a file.
    Class_INI ini;
    ini.FileName = m_dir.filePath(QStringLiteral("read.ini"));
    writeFile(ini.FileName, bytes);
    QCOMPARE(ini.ReadKey(section, key), value);
}

void TestIni::valueCutAt254() {
    const QString longValue(300, QLatin1Char('x'));
    IniDocument doc;
    doc.WriteKey(QStringLiteral("S"), QStringLiteral("k"), longValue);
    QVERIFY(doc.serialize().contains(longValue.toLatin1())); // written whole
    QCOMPARE(doc.ReadKey(u"S", u"k"), QString(254, QLatin1Char('x')));
    const QString exact(254, QLatin1Char('y'));
    doc.WriteKey(QStringLiteral("S"), QStringLiteral("k"), exact);
    QCOMPARE(doc.ReadKey(u"S", u"k"), exact);
}

void TestIni::write_data() {
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("new file") << QByteArray() << "S"
                              << "k" << QByteArray("[S]\nk=v\n");
    QTest::newRow("replace in place keeps order and spelling")
        << QByteArray("[S]\nA=1\nKey = old\nB=2\n") << "S"
        << "KEY" << QByteArray("[S]\nA=1\nKey=v\nB=2\n");
    QTest::newRow("new key after the section's last key")
        << QByteArray("[S]\na=1\n\n;note\n[T]\nb=2\n") << "s"
        << "k" << QByteArray("[S]\na=1\nk=v\n\n;note\n[T]\nb=2\n");
    QTest::newRow("new section at the end") << QByteArray(";head\n[T]\nb=2\n") << "S"
                                            << "k" << QByteArray(";head\n[T]\nb=2\n[S]\nk=v\n");
    QTest::newRow("empty section gets its key") << QByteArray("[S]\n[T]\nb=2\n") << "S"
                                                << "k" << QByteArray("[S]\nk=v\n[T]\nb=2\n");
    QTest::newRow("unknown lines and junk kept")
        << QByteArray("garbage\xFF line\n[S]\nk=1\n") << "S"
        << "k" << QByteArray("garbage\xC3\xBF line\n[S]\nk=v\n");
    QTest::newRow("CRLF file stays CRLF") << QByteArray("[S]\r\nk=1\r\n") << "S"
                                          << "n" << QByteArray("[S]\r\nk=1\r\nn=v\r\n");
    QTest::newRow("no final line end") << QByteArray("[S]\nk=1") << "S"
                                       << "n" << QByteArray("[S]\nk=1\nn=v\n");
    QTest::newRow("byte-order mark dropped") << QByteArray("\xEF\xBB\xBF[S]\nk=1\n") << "S"
                                             << "k" << QByteArray("[S]\nk=v\n");
    QTest::newRow("NUL byte kept") << bytesOf("[S]\nj=a\0b\nk=1\n") << "S"
                                   << "k" << bytesOf("[S]\nj=a\0b\nk=v\n");
}

void TestIni::write() {
    QFETCH(QByteArray, before);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QByteArray, after);
    const QString path = m_dir.filePath(QStringLiteral("write.ini"));
    QFile::remove(path);
    if (!before.isNull())
        writeFile(path, before);
    Class_INI ini;
    ini.FileName = path;
    ini.WriteKey(section, key, QStringLiteral("v"));
    QCOMPARE(readFile(path), after);
    QCOMPARE(ini.lastWrite(), 1);
}

void TestIni::writeIntoMissingFolderFailsQuietly() {
    // A missing folder is not created: the write fails, silently for the user.
    Class_INI ini;
    ini.FileName = m_dir.filePath(QStringLiteral("no/such/folder/x.ini"));
    ini.WriteKey(QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("v"));
    QCOMPARE(ini.lastWrite(), 0);
    QVERIFY(!QFile::exists(ini.FileName));
}

void TestIni::writeKeepsLineEndsAndTurnsValueLinesFlat() {
    IniDocument doc = IniDocument::parse("[S]\r\nk=1\n");
    doc.WriteKey(QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("two\r\nlines"));
    doc.WriteKey(QStringLiteral("T"), QStringLiteral("n"), QStringLiteral("x"));
    QCOMPARE(doc.serialize(), QByteArray("[S]\r\nk=two  lines\n[T]\r\nn=x\r\n"));
}

void TestIni::unreadableFileIsNeverOverwritten() {
    // A folder where the file should be cannot be read; the write must not replace it.
    const QString path = m_dir.filePath(QStringLiteral("folder.ini"));
    QVERIFY(QDir().mkpath(path + QStringLiteral("/inside")));
    Class_INI ini;
    ini.FileName = path;
    QCOMPARE(ini.ReadKey(QStringLiteral("S"), QStringLiteral("k")), QString());
    ini.WriteKey(QStringLiteral("S"), QStringLiteral("k"), QStringLiteral("v"));
    QCOMPARE(ini.lastWrite(), 0);
    QVERIFY(QFileInfo(path + QStringLiteral("/inside")).isDir());
}

QTEST_GUILESS_MAIN(TestIni)
#include "tst_ini.moc"
