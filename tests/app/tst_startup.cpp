#include "Messages.h"
#include "RunGuard.h"
#include "SerialLink.h"
#include "StartupRules.h"

#include <QRegularExpression>
#include <QSerialPort>
#include <QTranslator>
#include <QXmlStreamReader>
#include <QTemporaryDir>
#include <QtTest>

class TestStartup : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void translationFollowsExactLocale_data();
    void translationFollowsExactLocale();
    void englishTranslationCoversEveryText();
    void windowPlacement_data();
    void windowPlacement();
    void secondGuardOnOneKeyMayNotRun();
    void portFile_data();
    void portFile();
};

void TestStartup::translationFollowsExactLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("file");
    QTest::newRow("zh_CN") << "zh_CN" << "/translations/chinese.qm";
    QTest::newRow("zh_TW") << "zh_TW" << "/translations/english.qm";
    QTest::newRow("zh") << "zh" << "/translations/english.qm";
    QTest::newRow("en_US") << "en_US" << "/translations/english.qm";
    QTest::newRow("C") << "C" << "/translations/english.qm";
    QTest::newRow("zh_CN with encoding") << "zh_CN.UTF-8" << "/translations/english.qm";
}

void TestStartup::translationFollowsExactLocale()
{
    QFETCH(QString, locale);
    QFETCH(QString, file);
    QCOMPARE(StartupRules::translationFile(locale), file);
}

// Every interface text of the sources needs its English form: a text added
// without one would show Chinese to every user outside zh_CN.
void TestStartup::englishTranslationCoversEveryText()
{
    QFile ts(QStringLiteral(QM_SOURCE_DIR "/translations/english.ts"));
    QVERIFY(ts.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&ts);
    QString context;
    QString source;
    int messages = 0;
    const QRegularExpression chinese(QStringLiteral("[\\x{4e00}-\\x{9fff}]"));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("name")) {
            context = xml.readElementText();
        } else if (xml.name() == QLatin1String("source")) {
            source = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            ++messages;
            const bool unfinished = xml.attributes().value(QLatin1String("type")) == QLatin1String("unfinished");
            const QString translation = xml.readElementText();
            QVERIFY2(!unfinished && !translation.isEmpty() && !translation.contains(chinese),
                     qPrintable(context + QLatin1String(": ") + source));
        }
    }
    QVERIFY(!xml.hasError());
    QVERIFY(messages > 30);

    QTranslator translator;
    QVERIFY(translator.load(QStringLiteral(QM_APP_DIR) + StartupRules::translationFile(QStringLiteral("en_US"))));
    QCOMPARE(translator.translate("ChannelListenInterface", "写入数据"), QStringLiteral("Write Data"));
    QCOMPARE(translator.translate("HelpWidget", "帮助说明"), QStringLiteral("Help"));
    QVERIFY(translator.load(QStringLiteral(QM_APP_DIR) + StartupRules::translationFile(QStringLiteral("zh_CN"))));
}

void TestStartup::windowPlacement_data()
{
    QTest::addColumn<QRect>("available");
    QTest::addColumn<bool>("maximise");
    QTest::addColumn<QRect>("geometry");
    QTest::newRow("full HD") << QRect(0, 0, 1920, 1040) << false << QRect(320, 120, 1280, 800);
    QTest::newRow("one pixel larger") << QRect(0, 0, 1281, 801) << false << QRect(0, 0, 1280, 800);
    QTest::newRow("odd margins truncate") << QRect(0, 0, 1283, 803) << false << QRect(1, 1, 1280, 800);
    // The test is strictly greater: exactly 1280 x 800 maximises.
    QTest::newRow("exactly 1280x800") << QRect(0, 0, 1280, 800) << true << QRect();
    QTest::newRow("wide but low") << QRect(0, 0, 2560, 800) << true << QRect();
    QTest::newRow("high but narrow") << QRect(0, 0, 1280, 1440) << true << QRect();
    QTest::newRow("second screen") << QRect(1920, 30, 1920, 1050) << false << QRect(2240, 155, 1280, 800);
}

void TestStartup::windowPlacement()
{
    QFETCH(QRect, available);
    QFETCH(bool, maximise);
    QFETCH(QRect, geometry);
    const StartupRules::Placement p = StartupRules::placeWindow(available);
    QCOMPARE(p.maximise, maximise);
    if (!maximise)
        QCOMPARE(p.geometry, geometry);
}

void TestStartup::secondGuardOnOneKeyMayNotRun()
{
    const QString key = QStringLiteral("QuillmarkTest%1").arg(QCoreApplication::applicationPid());
    RunGuard first(key);
    RunGuard second(key);
    QVERIFY(first.tryToRun());
    QVERIFY(second.isAnotherRunning());
    QVERIFY(!second.tryToRun());
    // The first keeps running after the second was turned away.
    QVERIFY(!first.isAnotherRunning());
    first.release();
    QVERIFY(second.tryToRun());
}

void TestStartup::portFile_data()
{
    QTest::addColumn<QString>("content"); // empty: no file
    QTest::addColumn<QString>("title");   // of the one warning, empty: none
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("portName");

    QTest::newRow("missing file") << QString() << "port.xml" << "open file failed!" << QString();
    QTest::newRow("port that cannot be opened")
        << "<config><port>/nonexistent/ttyQM0</port></config>" << "Open serial"
        << "/nonexistent/ttyQM0 open failed!" << "/nonexistent/ttyQM0";
    QTest::newRow("no port element") << "<config><other>x</other></config>" << QString() << QString() << QString();
    QTest::newRow("malformed document") << "<config><port" << QString() << QString() << QString();
}

void TestStartup::portFile()
{
    QFETCH(QString, content);
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(QString, portName);

    QTemporaryDir dir;
    const QString path = dir.path() + QStringLiteral("/port.xml");
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content.toUtf8());
    }
    QList<Messages::Shown> shown;
    Messages::setResponder([&shown](const Messages::Shown &s) {
        shown.append(s);
        return true;
    });
    SerialLink link;
    link.openFromFile(path, nullptr);
    Messages::setResponder({});

    if (title.isEmpty()) {
        QVERIFY(shown.isEmpty());
    } else {
        QCOMPARE(shown.size(), 1);
        QCOMPARE(shown[0].kind, Messages::Kind::Warning);
        QCOMPARE(shown[0].title, title);
        QCOMPARE(shown[0].text, text);
    }
    QCOMPARE(link.port() ? link.port()->portName() : QString(), portName);
    QVERIFY(!link.isOpen());
    link.send(QByteArray("ignored")); // a closed or missing port swallows requests
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
