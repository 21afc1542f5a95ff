// Every model against the virtual unit over a real pty: identification puts
// the model's own page in the window, and its controls follow the unit.
#include "AppPaths.h"
#include "ChannelListenInterface.h"
#include "MainWindow.h"
#include "Messages.h"
#include "ModelInterface.h"
#include "Rocker.h"
#include "SbusChannel.h"
#include "VunitProcess.h"

#include <QTemporaryDir>
#include <QtTest>

class TestModelsEndToEnd : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void modelPageFollowsTheUnit_data();
    void modelPageFollowsTheUnit();
};

void TestModelsEndToEnd::initTestCase()
{
    // The model files are the delivered ones; nothing may ask the user.
    Messages::setResponder([](const Messages::Shown &shown) {
        qWarning("unexpected message: %s / %s", qPrintable(shown.title), qPrintable(shown.text));
        return false;
    });
}

void TestModelsEndToEnd::modelPageFollowsTheUnit_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QByteArray>("pageClass");
    QTest::addColumn<int>("module");
    QTest::newRow("ALDER") << "ALDER" << QByteArray("AlderInterface") << 0;
    QTest::newRow("BIRCH") << "BIRCH" << QByteArray("BirchInterface") << 1;
    QTest::newRow("CEDAR") << "CEDAR" << QByteArray("CedarInterface") << 2;
    QTest::newRow("LARCH") << "LARCH" << QByteArray("LarchInterface") << 0;
    QTest::newRow("MAPLE") << "MAPLE" << QByteArray("MapleInterface") << 1;
    QTest::newRow("ROWAN") << "ROWAN" << QByteArray("RowanInterface") << 2;
    QTest::newRow("WILLO") << "WILLO" << QByteArray("WillowInterface") << 0;
}

void TestModelsEndToEnd::modelPageFollowsTheUnit()
{
    QFETCH(QString, model);
    QFETCH(QByteArray, pageClass);
    QFETCH(int, module);

    QTemporaryDir dir;
    VunitProcess unit(dir.path());
    QVERIFY(unit.startWithApp(
        { QStringLiteral("--model"), model, QStringLiteral("--module"), QString::number(module) }));

    MainWindow window;
    window.show();
    QTRY_COMPARE_WITH_TIMEOUT(QByteArray(window.currentPage()->metaObject()->className()), pageClass, 10000);
    QCOMPARE(window.m_data.m_module, module);
    QTRY_VERIFY_WITH_TIMEOUT(window.hub(), 5000);
    QVERIFY(!window.m_data.channelMapNames.isEmpty()); // the model's default file was loaded

    // The sticks and the channel bars move with the unit's reports.
    ModelInterface *page = window.modelPage(window.modelIndex());
    auto *stick = page->findChild<Rocker *>(QStringLiteral("T1"));
    if (!stick)
        stick = page->findChild<Rocker *>(QStringLiteral("T1(T5)"));
    QVERIFY(stick);
    auto *bar = page->findChild<SbusChannel *>(QStringLiteral("sbus1_ch1"));
    const QPoint firstPosition = stick->position();
    const int firstValue = bar->val();
    QTRY_VERIFY_WITH_TIMEOUT(stick->position() != firstPosition, 5000);
    QTRY_VERIFY_WITH_TIMEOUT(bar->val() != firstValue, 5000);

    unit.terminate();
}

QTEST_MAIN(TestModelsEndToEnd)
#include "tst_models_e2e.moc"
