// SPDX-License-Identifier: GPL-3.0-or-later
// The envelope writer and reader, and the record tables, without a network.
#include "webservice/rrrecords.h"
#include "webservice/soapenvelope.h"

#include <QTest>

using namespace kestrel;
using namespace kestrel::soap;
using namespace Qt::StringLiterals;

class TstSoapEnvelope : public QObject {
    Q_OBJECT
private Q_SLOTS:

    // Records written into a reply, the reply written out, read back and mapped give the records:
    // markup and non-ASCII text, nested lists, number lists, flags. Plain numbers and texts go
    // through the local service's walk.
    void recordsSurviveAReplyRoundTrip() {
        QList<TypFreq> freqs(2);
        freqs[0].class_ = QStringLiteral("B<&>");
        freqs[0].tags = {TypTag{3, {}}, TypTag{14, {}}};
        freqs[1].descr = QStringLiteral("Fire Dispatch \u00e9");
        TypTrsDetails details;
        details.sCounty = {1, 2};
        details.fleetmap = true;
        TypSite site;
        site.siteLicenses = {QStringLiteral("WQX123")};
        site.siteFreqs = {TypSiteFreq{1, QStringLiteral("851.0125"), QStringLiteral("c")}};

        SoapMessage reply;
        reply.method = QStringLiteral("getSubcatFreqsResponse");
        reply.methodNS = QStringLiteral("urn:x");
        reply.params = {WriteRecordList(freqs, QStringLiteral("return")),
                        WriteRecord(details, QStringLiteral("d")),
                        WriteRecord(site, QStringLiteral("s"))};
        SoapMessage back;
        QString error;
        QVERIFY2(ReadEnvelope(WriteEnvelope(reply), back, &error), qPrintable(error));
        QCOMPARE(back.method, reply.method);
        QCOMPARE(back.methodNS, reply.methodNS);

        QList<TypFreq> freqsBack;
        QCOMPARE(ReadRecordList(back.params.at(0), freqsBack), 2);
        QCOMPARE(freqsBack[0].class_, QStringLiteral("B<&>"));
        QCOMPARE(freqsBack[0].tags[1].tagId, 14);
        QCOMPARE(freqsBack[1].descr, freqs[1].descr);
        TypTrsDetails detailsBack;
        ReadRecord(back.params.at(1), detailsBack);
        QCOMPARE(detailsBack.sCounty, details.sCounty);
        QVERIFY(detailsBack.fleetmap);
        TypSite siteBack;
        ReadRecord(back.params.at(2), siteBack);
        QCOMPARE(siteBack.siteLicenses, site.siteLicenses);
        QCOMPARE(siteBack.siteFreqs.at(0).freq, QStringLiteral("851.0125"));
        QCOMPARE(siteBack.bandplan.size(), 0);
    }

    // Replies as other servers write them: other prefixes, Latin-1, nil, absent fields, faults.
    void readsForeignShapes_data() {
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QString>("expect"); // a digest of what was read
        const QByteArray head = "<e:Envelope xmlns:e=\"http://schemas.xmlsoap.org/soap/envelope/\" "
                                "xmlns:i=\"http://www.w3.org/2001/XMLSchema-instance\" "
                                "xmlns:enc=\"http://schemas.xmlsoap.org/soap/encoding/\"><e:Body>";
        const QByteArray tail = "</e:Body></e:Envelope>";
        QTest::newRow("prefixes, struct, absent field keeps value")
            << head +
                   "<ns9:getTagResponse xmlns:ns9=\"urn:q\"><return i:type=\"ns9:Tag\">"
                   "<tagId i:type=\"xsd:int\">5</tagId></return></ns9:getTagResponse>" +
                   tail
            << "getTagResponse urn:q 5 keep";
        QTest::newRow("nil result")
            << head + "<r:x xmlns:r=\"urn:q\"><return i:nil=\"true\"/></r:x>" + tail
            << "x urn:q nil";
        QTest::newRow("empty array")
            << head + "<x><return i:type=\"enc:Array\" enc:arrayType=\"tns:Tag[0]\"/></x>" + tail
            << "x  array0";
        QTest::newRow("latin-1 fault")
            << "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + head +
                   "<e:Fault><faultcode>AUTH</faultcode><faultactor/><faultstring>Mot de passe "
                   "erron\xe9</faultstring><detail><x>d</x></detail></e:Fault>" +
                   tail
            << QStringLiteral("fault AUTH||Mot de passe erron\u00e9|d");
    }

    void readsForeignShapes() {
        QFETCH(QByteArray, xml);
        QFETCH(QString, expect);
        SoapMessage m;
        QString error;
        QVERIFY2(ReadEnvelope(xml, m, &error), qPrintable(error));
        QString got;
        if (m.isFault) {
            got = QStringLiteral("fault ") + m.fault.faultcode + u'|' + m.fault.faultactor + u'|' +
                  m.fault.faultstring + u'|' + m.fault.detail;
        } else {
            const SoapValue& r = m.params.at(0);
            got = m.method + u' ' + m.methodNS + u' ';
            if (r.isNil())
                got += QStringLiteral("nil");
            else if (r.isArray())
                got += QStringLiteral("array") + QString::number(r.children.size());
            else {
                TypTag tag{0, QStringLiteral("keep")};
                ReadRecord(r, tag);
                got += QString::number(tag.tagId) + u' ' + tag.tagDescr;
            }
        }
        QCOMPARE(got, expect);
    }

    void refusesBadInput_data() {
        QTest::addColumn<QByteArray>("xml");
        QByteArray bomb =
            "<?xml version=\"1.0\"?><!DOCTYPE e [<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaa\">";
        for (int i = 1; i < 12; ++i)
            bomb += QStringLiteral("<!ENTITY %1 \"&%2;&%2;&%2;&%2;&%2;&%2;&%2;&%2;&%2;&%2;\">")
                        .arg(QChar(u'a' + i))
                        .arg(QChar(u'a' + i - 1))
                        .toLatin1();
        bomb += "]><Envelope><Body><x><r>&l;</r></x></Body></Envelope>";
        QTest::newRow("entity bomb") << bomb;
        QTest::newRow("cut in the middle")
            << QByteArray("<Envelope><Body><x><return><tagId>5</tag");
        QTest::newRow("html page")
            << QByteArray("<html><body><h1>502 Bad Gateway</h1></body></html>");
        QTest::newRow("deep nesting") << QByteArray("<Envelope><Body><x>") +
                                             QByteArray(5000, 'q').replace("q", "<a>") +
                                             "</x></Body></Envelope>";
        QTest::newRow("too large, one byte over")
            << QByteArray("<Envelope><Body><x/></Body></Envelope>")
                   .leftJustified(kMaxEnvelopeBytes + 1, ' ');
    }

    void refusesBadInput() {
        QFETCH(QByteArray, xml);
        SoapMessage m;
        QString error;
        QVERIFY(!ReadEnvelope(xml, m, &error));
        QVERIFY(!error.isEmpty());
    }

    // A description or reply is read in the encoding its declaration names, else as UTF-8.
    void decodesTheDeclaredEncoding_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("Latin-1 declared")
            << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?><a>Qu\xE9"
                          "bec</a>")
            << u"<?xml version='1.0' encoding='ISO-8859-1'?><a>Qu\u00E9bec</a>"_s;
        QTest::newRow("none declared") << QByteArray("<a>Qu\xC3\xA9"
                                                     "bec</a>")
                                       << u"<a>Qu\u00E9bec</a>"_s;
        QTest::newRow("unknown name: UTF-8")
            << QByteArray("<?xml encoding=\"x-none\"?><a>\xC3\xA9</a>")
            << u"<?xml encoding=\"x-none\"?><a>\u00E9</a>"_s;
    }
    void decodesTheDeclaredEncoding() {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        QCOMPARE(DecodeXmlText(bytes), text);
    }

    void freqToHertz_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("hertz");
        QTest::newRow("MHz") << "154.815" << 154815000.0;
        QTest::newRow("Hz") << "154815000" << 154815000.0;
        QTest::newRow("MHz just below the limit") << "99999.5" << 99999500000.0;
        QTest::newRow("junk") << "abc" << 0.0;
    }

    void freqToHertz() {
        QFETCH(QString, text);
        QFETCH(double, hertz);
        QCOMPARE(FreqToHertz(text), hertz);
    }
};

QTEST_GUILESS_MAIN(TstSoapEnvelope)
#include "tst_soapenvelope.moc"
