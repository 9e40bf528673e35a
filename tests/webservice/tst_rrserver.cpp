// SPDX-License-Identifier: GPL-3.0-or-later
// The local frequency-database service over real HTTP on 127.0.0.1: the answers of the demo data,
// the login check, the description, the client walking the demo data, and kestrelctl rr-serve as
// a process.
#include "testsupport.h"
#include "webservice/rrclient.h"
#include "webservice/server/rrdescriptionwriter.h"
#include "webservice/server/rrlocalserver.h"

#include <QDomDocument>
#include <QEventLoop>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <QTimer>

using namespace kestrel;
using namespace kestrel::soap;

namespace {

struct Http {
    int status = 0;
    QByteArray contentType;
    QByteArray body;
};

Http exchange(QNetworkAccessManager& net, const QUrl& url, const QByteArray* post,
              const QByteArray& action = {}) {
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, "text/xml; charset=UTF-8");
    request.setRawHeader("SOAPAction", action);
    QNetworkReply* reply = post ? net.post(request, *post) : net.get(request);
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    QTimer::singleShot(10000, &loop, &QEventLoop::quit);
    loop.exec();
    Http h{reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(),
           reply->header(QNetworkRequest::ContentTypeHeader).toByteArray(), reply->readAll()};
    reply->deleteLater();
    return h;
}

// A request for `op` with "name=value;..." typed by the operation's parameter list.
QByteArray request(const QString& op, const QString& params, const QString& user = "demo",
                   const QString& password = "demo", const QString& appKey = "10000001") {
    const RROperation* operation = FindRROperation(op);
    SoapMessage m;
    m.method = op + QStringLiteral("Request");
    m.methodNS = QString::fromLatin1(kRRServiceNamespace);
    // Every part of the message is sent, in order; a part not given is "0" ("" for text), and
    // "-name" leaves it out.
    for (const RRParam& p : operation->params) {
        const QString name = QString::fromLatin1(p.name), type = QString::fromLatin1(p.xsdType);
        if (params.split(u';').contains(u'-' + name))
            continue;
        QString value = type == kXsdString ? QString() : QStringLiteral("0");
        for (const QString& pair : params.split(u';', Qt::SkipEmptyParts))
            if (pair.section(u'=', 0, 0) == name)
                value = pair.section(u'=', 1);
        m.params.append(SoapValue::scalar(name, type, value));
    }
    if (!user.isNull()) {
        SoapValue& auth = m.params.emplaceBack(SoapValue::structure("authInfo", "tns:authInfo"));
        for (const auto& [name, value] : {std::pair{"username", user},
                                          {"password", password},
                                          {"appKey", appKey},
                                          {"version", QString("latest")},
                                          {"style", QString("rpc")}})
            auth.add(SoapValue::string(QString::fromLatin1(name), value));
    }
    return WriteEnvelope(m);
}

} // namespace

class TstRRServer : public QObject {
    Q_OBJECT
    RRLocalServer m_server;
    QUrl m_base;
    QNetworkAccessManager m_net;

private Q_SLOTS:
    void initTestCase() {
        QVERIFY(m_server.listen() != 0);
        m_base = QUrl(m_server.baseUrl());
    }

    // The service's query rules (filters, units, nothing found); what the demo data plainly holds
    // is read through the client below and the rr command transcript. count: items of a list
    // reply, 1 for a record reply, -1 for nil; field/value: of the first item.
    void answersFromTheDemoData_data() {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("params");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("value");
        const auto row = [](const char* tag, const char* op, const char* params, int count,
                            const char* field = "", const char* value = "") {
            QTest::newRow(tag) << op << params << count << field << value;
        };
        row("talkgroups of a category", "getTrsTalkgroups", "sid=7001;tgCid=9002", 2, "tgId",
            "10005");
        row("talkgroup by tag", "getTrsTalkgroups", "sid=7001;tgTag=7", 1, "tgDec", "4000");
        row("one tag", "getTag", "id=3", 1, "tagDescr", "Fire Dispatch");
        row("county, none", "getCountyInfo", "ctid=5", -1);
        row("county search in Hz", "searchCountyFreq", "ctid=1001;freq=154815000", 1, "ctid",
            "1001");
        row("county search by tone", "searchCountyFreq", "ctid=1001;freq=0;tone=107.2", 2, "out",
            "453.25");
        row("state search", "searchStateFreq", "stid=101;freq=154.665;tone=", 1, "aid", "501");
        row("state search, agency in a county", "searchStateFreq", "stid=101;freq=153.89", 1, "aid",
            "502");
        row("county by tag", "getCountyFreqsByTag", "ctid=1001;tag=1", 2, "fid", "40001");
        row("nearby in km", "fccGetProxCallsigns", "lat=44.71;lon=-70.42;range=1;unit=km", 1,
            "distance", "0");
        row("nearby, a decimal range", "fccGetProxCallsigns",
            "lat=44.52;lon=-70.11;range=2.5;unit=mi", 2, "distance", "0.85");
    }

    void answersFromTheDemoData() {
        QFETCH(QString, op);
        QFETCH(QString, params);
        QFETCH(int, count);
        QFETCH(QString, field);
        QFETCH(QString, value);
        const QByteArray body = request(op, params);
        const Http h = exchange(m_net, m_base.resolved(QUrl("index.php")), &body);
        QCOMPARE(h.status, 200);
        QVERIFY(!h.body.trimmed().contains('\n')); // one line
        SoapMessage reply;
        QVERIFY(ReadEnvelope(h.body, reply));
        QCOMPARE(reply.method, op + QStringLiteral("Response"));
        QCOMPARE(reply.params.size(), 1);
        const SoapValue& result = reply.params.first();
        QCOMPARE(result.isNil(), count < 0);
        if (count < 0)
            return;
        const RROperation* operation = FindRROperation(op);
        QCOMPARE(result.isArray(), operation->list);
        QCOMPARE(operation->list ? int(result.children.size()) : 1, count);
        if (field.isEmpty())
            return;
        const SoapValue& first = operation->list ? result.children.first() : result;
        const SoapValue* v = first.child(QStringView(field));
        QVERIFY(v);
        QCOMPARE(v->text, value);
    }

    // All the operations the description names are answered, each with its own reply element.
    void everyOperationAnswers() {
        QCOMPARE(RROperations().size(), 28u);
        for (const RROperation& op : RROperations()) {
            const QString name = QString::fromLatin1(op.name);
            const QByteArray body = request(name, {}, op.needsLogin ? "demo" : QString());
            const Http h =
                exchange(m_net, m_base, &body, QByteArray(kRRServiceNamespace) + '#' + op.name);
            SoapMessage reply;
            QVERIFY2(h.status == 200 && ReadEnvelope(h.body, reply), op.name);
            QCOMPARE(reply.method, name + QStringLiteral("Response"));
        }
    }

    void wrongLoginGetsTheAuthFault_data() {
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("password");
        QTest::newRow("wrong password") << "demo"
                                        << "Demo";
        QTest::newRow("unknown user") << "nobody"
                                      << "demo";
    }

    void wrongLoginGetsTheAuthFault() {
        QFETCH(QString, user);
        QFETCH(QString, password);
        const QByteArray body = request("getTag", "id=0", user, password);
        const Http h = exchange(m_net, m_base.resolved(QUrl("index.php")), &body);
        QCOMPARE(h.status, 500);
        QVERIFY(h.contentType.contains("ISO-8859-1"));
        QVERIFY(h.body.startsWith("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"));
        SoapMessage reply;
        QVERIFY(ReadEnvelope(h.body, reply));
        QVERIFY(reply.isFault);
        QCOMPARE(reply.fault.faultcode, QStringLiteral("AUTH"));
        QVERIFY(reply.fault.faultstring.startsWith("Invalid Username or Password.  Make sure"));
    }

    void refusesAnIncompleteRequest_data() {
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("params");
        QTest::addColumn<QString>("user");
        QTest::addColumn<QString>("appKey");
        QTest::newRow("a filter left out") << "getTrsTalkgroups"
                                           << "sid=7001;-tgTag"
                                           << "demo"
                                           << "10000001";
        QTest::newRow("the id left out") << "getTrsType"
                                         << "-id"
                                         << "demo"
                                         << "10000001";
        QTest::newRow("no login block") << "getTag"
                                        << "id=0" << QString() << QString();
        QTest::newRow("empty application key") << "getTag"
                                               << "id=0"
                                               << "demo"
                                               << " ";
    }

    // Like the public service: HTTP 500 without a body, not a fault.
    void refusesAnIncompleteRequest() {
        QFETCH(QString, op);
        QFETCH(QString, params);
        QFETCH(QString, user);
        QFETCH(QString, appKey);
        const QByteArray body = request(op, params, user, "demo", appKey);
        const Http h = exchange(m_net, m_base.resolved(QUrl("index.php")), &body);
        QCOMPARE(h.status, 500);
        QVERIFY(h.body.isEmpty());
    }

    void servesTheDescription_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("location");
        QTest::addColumn<bool>("classic");
        QTest::newRow("first generation") << "/soap/?wsdl"
                                          << "/soap/" << true;
        QTest::newRow("numbered") << "/soap2/index.php?wsdl&v=5"
                                  << "/soap2/" << false;
        QTest::newRow("no number, current endpoint") << "/soap2/?wsdl"
                                                     << "/soap2/" << false;
    }

    // The description parses, is large enough to be cached, names the service's address and
    // defines every type it refers to; the client's walk below reads each operation from it.
    void servesTheDescription() {
        QFETCH(QString, path);
        QFETCH(QString, location);
        QFETCH(bool, classic);
        const QString root = QStringLiteral("http://127.0.0.1:%1").arg(m_server.port());
        const Http h = exchange(m_net, QUrl(root + path), nullptr);
        QCOMPARE(h.status, 200);
        QVERIFY2(h.body.size() > 48000, QByteArray::number(h.body.size()));
        QCOMPARE(h.body.contains("name=\"siteFeqs\""), classic);
        QDomDocument doc;
        QVERIFY(doc.setContent(h.body));
        const QDomElement defs = doc.documentElement();
        QCOMPARE(defs.attribute("targetNamespace"), QString::fromLatin1(kRRServiceNamespace));

        QSet<QString> types, referenced;
        QDomNodeList all = defs.elementsByTagName("xsd:complexType");
        for (int i = 0; i < all.size(); ++i)
            types << all.at(i).toElement().attribute("name");
        for (const char* tag : {"xsd:element", "part"}) {
            all = defs.elementsByTagName(tag);
            for (int i = 0; i < all.size(); ++i)
                referenced << all.at(i).toElement().attribute("type");
        }
        all = defs.elementsByTagName("xsd:attribute");
        for (int i = 0; i < all.size(); ++i)
            referenced << all.at(i).toElement().attribute("wsdl:arrayType").chopped(2);
        for (const QString& type : referenced)
            QVERIFY2(!type.startsWith("tns:") || types.contains(type.mid(4)), qPrintable(type));
        QCOMPARE(defs.firstChildElement("service")
                     .firstChildElement("port")
                     .firstChildElement("soap:address")
                     .attribute("location"),
                 root + location);
    }

    // The client fetches, caches and parses the service's description, then walks from country
    // to frequencies and talk groups.
    void clientWalksTheDemoData_data() {
        QTest::addColumn<int>("version");
        QTest::addColumn<QString>("cacheFile");
        QTest::newRow("latest") << 999 << "Local999.wsdl";
        QTest::newRow("classic") << 1 << "Local1.wsdl";
    }

    void clientWalksTheDemoData() {
        QFETCH(int, version);
        QFETCH(QString, cacheFile);
        QTemporaryDir dir;
        ScriptedPrompts prompts(Answer::Yes);
        AppContext ctx(dir.path(), &prompts);
        ctx.settings.DBaseIndex = 1;
        ctx.settings.DBaseVersion = qint16(version);
        RRClient& client = ctx.component<RRClient>();
        client.setBaseUrlOverride(m_server.baseUrl(version == 1));
        client.setCredentials(QStringLiteral("demo"), QStringLiteral("demo"));

        QVERIFY(client.InitSoap());
        QVERIFY(QFileInfo(dir.filePath(cacheFile)).size() > 48000);
        // Every operation of the service as the client finds it: message parts and action.
        for (const RROperation& op : RROperations()) {
            int cmd = 0;
            while (cmd <= 30 && RRCommandName(cmd) != QLatin1StringView(op.name))
                ++cmd;
            QVERIFY2(client.Get_CommandInfo(cmd), op.name);
            QCOMPARE(client.CurrCmnd.InPartCnt(), int(op.params.size()) + (op.needsLogin ? 1 : 0));
            QCOMPARE(client.CurrCmnd.OutPartCnt(), 1);
            QCOMPARE(client.CurrCmnd.BindingOp.soapAction,
                     QString::fromLatin1(kRRServiceNamespace) + u'#' + QLatin1StringView(op.name));
        }
        QVERIFY(client.getTag(0));
        QVERIFY(client.getCountryList());
        QCOMPARE(client.Countries.first().coid, 1);
        QVERIFY(client.getCountryInfo(1));
        QCOMPARE(client.Get_StateName(102), QStringLiteral("South Province"));
        QVERIFY(client.getStateInfo(101));
        QCOMPARE(client.Get_CountyName(1002), QStringLiteral("Birchwood"));
        QVERIFY(client.getCountyInfo(1001));
        QCOMPARE(client.CountyInfo.cats.first().subcats.size(), 3);
        QVERIFY(client.getSubcatFreqs(3001));
        QCOMPARE(client.SubcatFreqs.size(), 10);
        QCOMPARE(FreqToHertz(client.SubcatFreqs.first().out), 154815000.0);
        QCOMPARE(client.SubcatFreqs.first().tags.first().tagDescr, QStringLiteral("Law Dispatch"));
        QVERIFY(client.fccGetProxCallsigns(44.52, -70.11, 5, QStringLiteral("mi")));
        QVERIFY(m_server.lastRequest().contains(">mi</unit>"));
        QVERIFY(m_server.lastSoapAction().contains("#fccGetProxCallsigns"));
        QVERIFY(!client.searchCountyFreq(1001, 999.5, QString())); // an empty array
        QVERIFY(client.getTrsSites(7001)); // "siteFeqs" in the first generation
        QCOMPARE(client.TrsSites.last().siteFreqs.size(), 3);
        QVERIFY(client.getTrsTalkgroupCats(7001));
        QCOMPARE(client.TgCats.last().tgCname, QStringLiteral("All"));
        QVERIFY(client.getTrsTalkgroups(1, 7001, 9002, 0, 0));
        QCOMPARE(client.TgCats[1].Talkgroups.last().tgSubfleet, QStringLiteral("100-14"));
        QVERIFY(client.getUserData());
        QCOMPARE(client.UserData.subExpireDate, QStringLiteral("12-31-2030"));
        QCOMPARE(ctx.errors.reportCount(), 0);
    }

    // A folder of JSON files is one data set; a file that is not JSON is refused with its name.
    void readsADataFolder() {
        QTemporaryDir dir;
        test::writeFile(
            dir.filePath("a.json"),
            R"({"tags": [{"tagId": 4, "tagDescr": "Fire-Tac"}], "users": [{"username": "u", "password": "p"}]})");
        test::writeFile(
            dir.filePath("b.json"),
            R"({"tags": [{"tagId": 9, "tagDescr": "Ham"}], "frequencies": [{"fid": 1, "scid": 2, "out": "146.52", "tags": [9]}]})");
        RRDataSet set;
        QString why;
        QVERIFY2(set.load(dir.path(), &why), qPrintable(why));
        QCOMPARE(set.tags.size(), 2);
        QCOMPARE(set.freqs.first().freq.out, 146.52);
        QCOMPARE(set.freqs.first().freq.tags.first().tagDescr, QStringLiteral("Ham"));
        QVERIFY(set.user("u"));
        test::writeFile(dir.filePath("c.json"), "{\"tags\": [");
        QVERIFY(!RRDataSet().load(dir.path(), &why));
        QVERIFY2(why.contains("c.json"), qPrintable(why));
    }

    void commandListensAndAnswers() {
        QProcess proc;
        proc.start(qEnvironmentVariable("KESTRELCTL"), {"rr-serve", "--listen", "127.0.0.1:0"});
        QVERIFY(proc.waitForStarted());
        QByteArray line;
        for (int i = 0; i < 50 && !line.contains('\n'); ++i)
            if (proc.waitForReadyRead(200))
                line += proc.readAllStandardOutput();
        const QRegularExpressionMatch m =
            QRegularExpression("^Listening on (http://127\\.0\\.0\\.1:\\d+/soap2/)\n")
                .match(QString::fromUtf8(line));
        QVERIFY2(m.hasMatch(), line.constData());
        const QByteArray body = request("getUserData", {});
        const Http h = exchange(m_net, QUrl(m.captured(1) + "index.php"), &body);
        QVERIFY(h.body.contains(">demo<"));
        proc.terminate();
        QVERIFY(proc.waitForFinished());
    }
};

QTEST_MAIN(TstRRServer)
#include "tst_rrserver.moc"
