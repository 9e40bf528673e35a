// SPDX-License-Identifier: GPL-3.0-or-later
// Record-to-channel conversion: descriptions, modes, code lookups and the full-bank refusal.
#include "import/importtree.h"
#include "import/rrconvert.h"

#include <QTest>

using namespace kestrel;

class TstRRConvert : public QObject {
    Q_OBJECT
private Q_SLOTS:

    void descriptions_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QStringList>("fields");
        QTest::addColumn<QString>("desc");
        QTest::newRow("conventional") << "conv" << QStringList{"Fire", "County Fire", "Dispatch"}
                                      << "Fire-County Fire-Dispatch";
        QTest::newRow("trim, comma to hyphen")
            << "conv" << QStringList{"Law", " Sheriff ", "Dispatch, North"}
            << "Law-Sheriff-Dispatch- North";
        QTest::newRow("search") << "search" << QStringList{" PD Disp ", "City, Police"}
                                << "PD Disp-City- Police";
        QTest::newRow("lcn control") << "site" << QStringList{"3", "d"} << "LCN-3 Control";
        QTest::newRow("lcn alternate") << "site" << QStringList{"4", "a"} << "LCN-4 Alternate";
        QTest::newRow("lcn no use") << "site" << QStringList{"12", ""} << "LCN-12";
        QTest::newRow("lcn upper-case use") << "site" << QStringList{"7", "D"} << "LCN-7";
    }

    // Each description goes through the channel routine, so the comma rule is tested on the slot.
    void descriptions() {
        QFETCH(QString, kind);
        QFETCH(QStringList, fields);
        QFETCH(QString, desc);
        ErrorReporter errors;
        BankRec bank;
        const QList<TypMode> modes{{1, "FM"}};
        if (kind == "conv") {
            TypFreq f;
            f.descr = fields[2];
            f.out = 154815000;
            f.mode = "1";
            AddConvFreq(errors, bank, modes, fields[0], fields[1], f);
        } else if (kind == "search") {
            TypSearchFreq f;
            f.alpha = fields[0];
            f.descr = fields[1];
            f.out = 154.815;
            f.mode = "1";
            AddSearchFreq(errors, bank, modes, f);
        } else {
            AddSiteFreq(errors, bank, TypSiteFreq{fields[0].toInt(), "851.0125", fields[1]});
        }
        QCOMPARE(bank.ImportCount, 1);
        QCOMPARE(bank.Chans[1].Desc, desc);
        QVERIFY(bank.Chans[1].Imported);
        QCOMPARE(bank.Chans[1].Freq, kind == "site" ? 851012500.0 : 154815000.0);
        QCOMPARE(errors.reportCount(), 0);
    }

    void modes_data() {
        QTest::addColumn<QString>("recordMode"); // the record's mode text, looked up in the store
        QTest::addColumn<QString>("modeName");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("modeAux");
        for (const auto& [tag, record, name, mode, aux] :
             {std::tuple{"FM", "1", "FM", 5, 2},
              {"AM", "2", "AM", 2, 1},
              {"P25", "4", "P25", 0, 2},
              {"nfm lower case", "5", "nfm", 5, 2},
              {"half to even 2.5 -> AM", "2.5", "AM", 2, 1},
              {"just out of range -> first", "6", "FM", 5, 2},
              {"not a number -> first", "x", "FM", 5, 2}})
            QTest::newRow(tag) << record << name << mode << aux;
    }

    void modes() {
        QFETCH(QString, recordMode);
        QFETCH(QString, modeName);
        QFETCH(int, mode);
        QFETCH(int, modeAux);
        const QList<TypMode> store{{1, "FM"}, {2, "AM"}, {3, "NFM"}, {4, "P25"}, {5, "nfm"}};
        QCOMPARE(ConvModeName(store, recordMode), modeName);
        ErrorReporter errors;
        BankRec bank;
        RR_AddChannel(errors, bank, "x", 0, 460.5, ConvModeName(store, recordMode), "CSQ");
        QCOMPARE(int(bank.Chans[1].Mode), mode);
        QCOMPARE(int(bank.Chans[1].ModeAux), modeAux);
        QCOMPARE(bank.Chans[1].Freq, 460500000.0);
    }

    void lookups_data() {
        QTest::addColumn<QString>("what");
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("text");
        QTest::newRow("type") << "type" << 2 << 0 << "Motorola Type II";
        QTest::newRow("type missing") << "type" << 9 << 0 << "Unknown";
        QTest::newRow("flavor") << "flavor" << 2 << 1 << "Type II";
        QTest::newRow("flavor wildcard") << "flavor" << 0 << 1 << "Type I";
        QTest::newRow("flavor missing") << "flavor" << 3 << 1 << "Unknown";
        QTest::newRow("voice wildcard") << "voice" << 0 << 4 << "Mixed";
        QTest::newRow("voice typed") << "voice" << 2 << 4 << "Analog and Digital";
        QTest::newRow("tag") << "tag" << 0 << 3 << "Fire Dispatch";
        QTest::newRow("tag missing") << "tag" << 0 << 8 << "Unknown Tag:8";
        QTest::newRow("code") << "code" << 0 << 0 << "Public Safety Pool";
        QTest::newRow("code missing") << "code" << 0 << 1 << "Unknown Code:PX";
    }

    void lookups() {
        QFETCH(QString, what);
        QFETCH(int, type);
        QFETCH(int, id);
        QFETCH(QString, text);
        ErrorReporter errors;
        const QList<TypTrsType> types{{1, "Motorola Type I"}, {2, "Motorola Type II"}};
        const QList<TypTrsFlavor> flavors{{1, 1, "Type I"}, {2, 1, "Type II"}};
        const QList<TypTrsVoice> voices{{1, 4, "Mixed"}, {2, 4, "Analog and Digital"}};
        const QList<TypTag> tags{{3, "Fire Dispatch"}};
        const QList<TypRadioService> codes{{"PW", "Public Safety Pool"}};
        QString got;
        if (what == "type")
            got = CvrtSiteType(errors, types, type);
        else if (what == "flavor")
            got = CvrtSiteFlavor(errors, flavors, type, id);
        else if (what == "voice")
            got = CvrtSiteVoice(errors, voices, type, id);
        else if (what == "tag")
            got = CvrtTag(errors, tags, id);
        else
            got = CvrtRadSvcCode(errors, codes, id ? "PX" : "PW");
        QCOMPARE(got, text);
    }

    // 25 records into a bank emptied by the import: the first 20 stay, the further ones are left
    // out without a fault report (the caller names them), the count stays at 20. Slots keep
    // their switches.
    void fullBank() {
        ScriptedPrompts prompts;
        QTemporaryDir dir;
        AppContext ctx(dir.path(), &prompts);
        BankRec& bank = ctx.Profiles[0].Banks[4];
        bank.Chans[7].Lockout = true;
        bank.ImportCount = 0;
        for (int i = 1; i <= 25; ++i)
            RR_AddChannel(ctx, 0, 4, QString("Ch %1").arg(i), 0, 150.0 + i / 100.0, "FM", "");
        QCOMPARE(bank.ImportCount, 20);
        QCOMPARE(bank.Chans[20].Desc, QString("Ch 20"));
        QVERIFY(bank.Chans[7].Lockout);
        RR_AddSiteChannel(ctx, 0, 4, 1, 851e6, "d");
        QCOMPARE(bank.ImportCount, 20);
        QCOMPARE(ctx.errors.reportCount(), 0);
        QCOMPARE(bank.Chans[1].Desc, QString("Ch 1"));
        RR_AddChannel(ctx, 0, 11, "no bank", 0, 150, "FM",
                      ""); // no bank 11: reported, nothing kept
        QCOMPARE(ctx.errors.reportCount(), 1);
    }

    void searchModeErrors() {
        const QList<TypMode> modes{{1, "FM"}, {2, "AM"}};
        QCOMPARE(SearchModeName(modes, "2"), QString("AM"));
        QVERIFY_THROWS_EXCEPTION(KestrelError, SearchModeName(modes, "FM"));
        QVERIFY_THROWS_EXCEPTION(KestrelError, SearchModeName(modes, "3"));
        QVERIFY_THROWS_EXCEPTION(KestrelError, SearchModeName(modes, "0"));
    }

    void groupIds() {
        ErrorReporter errors;
        GroupIdList list;
        RR_AddGroupID(errors, list, 1001, TalkgroupDesc(" Fire ", "Main, North "), "FD,Main",
                      "Fire, Dispatch", "D", 77);
        RR_AddGroupID(errors, list, 1002, TalkgroupDesc("Law", "Ops"), "", "", "A", 78);
        QCOMPARE(list.GroupIdCnt(), 2);
        const TypGroupId& g = list.GroupIds[1];
        QCOMPARE(g.Desc, QString("Fire-Main- North"));
        QCOMPARE(g.Alpha, QString("FD-Main"));
        QCOMPARE(g.Tag, QString("Fire- Dispatch"));
        list.Clear();
        QCOMPARE(list.GroupIdCnt(), 0);
    }

    // The tree's padding routines and node keys.
    void treeTexts_data() {
        QTest::addColumn<QString>("got");
        QTest::addColumn<QString>("want");
        using namespace importtree;
        QTest::newRow("SpcStr") << SpcStr("FM", 4) << "FM  ";
        QTest::newRow("SpcStr longer") << SpcStr("NFMW", 3) << "NFMW";
        QTest::newRow("RSpcStr") << RSpcStr("1.5", 5) << "  1.5";
        QTest::newRow("SpcCT CSQ") << SpcCT("CSQ", 5) << "CSQ  ";
        QTest::newRow("SpcCT NA") << SpcCT("NA", 4) << "NA  ";
        QTest::newRow("SpcCT tone") << SpcCT("94.8 PL", 8) << " 94.8 PL";
        // (12 - length) / 2 with halves to even: 3.5 -> 4 gives 13 characters, 2.5 -> 2 then one
        // more.
        QTest::newRow("CenterTag 5") << CenterTag("ABCDE") << "    ABCDE    ";
        QTest::newRow("CenterTag 7") << CenterTag("ABCDEFG") << "  ABCDEFG   ";
        QTest::newRow("CenterTag 11") << CenterTag("ABCDEFGHIJK") << "ABCDEFGHIJK ";
        QTest::newRow("CenterTag 13") << CenterTag("ABCDEFGHIJKLM") << "ABCDEFGHIJKLM";
        QTest::newRow("key") << NodeKey(3, 2, 5) << "c3s2d5";
        const auto split = [](const char* key) {
            const KeyParts k = SplitKey(key);
            return QString("%1/%2/%3").arg(k.c).arg(k.s).arg(k.d);
        };
        QTest::newRow("split full") << split("c3s12d4") << "3/12/4";
        QTest::newRow("split top") << split("c2") << "2/0/0";
        QTest::newRow("split two") << split("c1s7") << "1/7/0";
    }

    void treeTexts() {
        QFETCH(QString, got);
        QFETCH(QString, want);
        QCOMPARE(got, want);
    }
};

QTEST_GUILESS_MAIN(TstRRConvert)
#include "tst_rrconvert.moc"
