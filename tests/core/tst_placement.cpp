// SPDX-License-Identifier: GPL-3.0-or-later
// Where windows go: onto the screens, cut to a small screen; and the program-wide settings read
// back as they were written. A dialog centred over its owner is checked in tst_windowplace.
#include "core/class_ini.h"
#include "core/placement.h"

#include <QTest>

using namespace kestrel;

namespace {
const QRect kLeft(0, 0, 1920, 1080);
const QRect kRight(1920, 0, 1280, 1024);
const QRect kTopPanel(0, 40, 1920, 1040); // a panel along the top edge
} // namespace

class TestPlacement : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void bringOnScreen_data() {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<QList<QRect>>("screens");
        QTest::addColumn<QRect>("placed");
        const QList<QRect> two{kLeft, kRight};
        QTest::newRow("on screen stays")
            << QRect(100, 100, 400, 300) << two << QRect(100, 100, 400, 300);
        QTest::newRow("past the right screen: nearest")
            << QRect(5000, 200, 400, 300) << two << QRect(3200 - 400, 200, 400, 300);
        QTest::newRow("above and left of all")
            << QRect(-3000, -500, 400, 300) << two << QRect(0, 0, 400, 300);
        QTest::newRow("below the taller screen")
            << QRect(2500, 1900, 400, 300) << two << QRect(2500, 1024 - 300, 400, 300);
        QTest::newRow("straddling: onto the screen holding most")
            << QRect(1800, 100, 400, 300) << two << QRect(1920, 100, 400, 300);
        QTest::newRow("title bar above the free area")
            << QRect(100, 10, 400, 300) << QList<QRect>{kTopPanel} << QRect(100, 40, 400, 300);
        QTest::newRow("larger than the screen is cut")
            << QRect(-50, -50, 2500, 1200) << QList<QRect>{kLeft} << kLeft;
        QTest::newRow("no screens: unchanged")
            << QRect(5000, 5000, 10, 10) << QList<QRect>{} << QRect(5000, 5000, 10, 10);
    }
    void bringOnScreen() {
        QFETCH(QRect, frame);
        QFETCH(QList<QRect>, screens);
        QFETCH(QRect, placed);
        QCOMPARE(BringOnScreen(frame, screens), placed);
    }

    void fitToScreen_data() {
        QTest::addColumn<QSize>("wanted");
        QTest::addColumn<QSize>("minimum");
        QTest::addColumn<QRect>("area");
        QTest::addColumn<QSize>("size");
        QTest::newRow("room enough: as wanted")
            << QSize(920, 680) << QSize(500, 380) << kLeft << QSize(920, 680);
        QTest::newRow("below the minimum: grown")
            << QSize(200, 100) << QSize(500, 380) << kLeft << QSize(500, 380);
        QTest::newRow("screen below the minimum: the screen wins")
            << QSize(920, 680) << QSize(900, 600) << QRect(0, 0, 640, 480) << QSize(624, 440);
    }
    void fitToScreen() {
        QFETCH(QSize, wanted);
        QFETCH(QSize, minimum);
        QFETCH(QRect, area);
        QFETCH(QSize, size);
        QCOMPARE(FitToScreen(wanted, minimum, QMargins(8, 32, 8, 8), area), size);
    }

    // Every key of the table reads back what was written, the new size key among them (the
    // port, a window place and the service address also go through the files in tst_profiles).
    void settingsRoundTrip() {
        ProgramSettings out;
        out.pos(WindowId::Main) = {1500, 3000};
        out.mainSize = {9000, 12000};
        out.KestrelCable = 3;
        out.DBaseVersion = 9;
        out.DBaseIndex = 1;
        out.DBaseEndUsr = QStringLiteral("https://example.invalid/soap2/");
        out.DBaseLocUsr = QStringLiteral("http://127.0.0.1:9100/soap2/");
        out.DBaseProxyUse = true;
        out.DBaseProxyAdr = QStringLiteral("10.0.0.2");
        out.DBaseProxyPrt = 3128;
        out.AppKey = QStringLiteral("12345678");
        out.PortOverrides.insert(3, QStringLiteral("/dev/ttyUSB0"));
        IniDocument doc;
        WriteProgramSettings(out, doc);
        // The size sits beside the main window's position, before the other windows' places.
        const QByteArray text = doc.serialize();
        QVERIFY(text.indexOf("MainWindowPos=1500,3000") <
                text.indexOf("MainWindowSize=9000,12000"));
        QVERIFY(text.indexOf("MainWindowSize=") < text.indexOf("COMSetWindowPos="));
        // Read back and written again, every key gives the same text.
        ProgramSettings in;
        ReadProgramSettings(in, IniDocument::parse(text), QSize(1920 * 15, 1080 * 15));
        IniDocument again;
        WriteProgramSettings(in, again);
        QCOMPARE(again.serialize(), text);
        QCOMPARE(in.mainSize, out.mainSize);
        // A size that is not two numbers is no size.
        ReadProgramSettings(in, IniDocument::parse("[Settings]\nMainWindowSize=600\n"), {});
        QVERIFY(in.mainSize.isEmpty());
    }
};

QTEST_GUILESS_MAIN(TestPlacement)
#include "tst_placement.moc"
